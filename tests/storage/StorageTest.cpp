#include "storage/Storage.h"

#include "support/CapturedLog.h"
#include "support/CapturedOutput.h"
#include "support/UserFolder.h"
#include "velini/VelINIStream.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_timer.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace Wirefall {
namespace {

using Testing::BytesOf;
using Testing::NamesIn;
using Testing::ReadFileText;
using Testing::UserFolder;
using Testing::WriteFileText;

using Names = std::vector<std::string>;

TEST(PrefPath, LeadsIntoTheFolderOfTheGameWhichIsCreated) {
    const UserFolder user;
    EXPECT_EQ(GetPrefFilePath("a.bin"), user.File("a.bin"));
    EXPECT_TRUE(std::filesystem::is_directory(user.Path()));
    EXPECT_EQ(GetPrefFilePath("Sub/a.bin"), user.File("Sub/a.bin"));
}

TEST(PrefPath, IsEmptyForNoName) {
    const UserFolder user;
    EXPECT_EQ(GetPrefFilePath(""), "");
}

TEST(PrefPath, IsEmptyWhereNoFolderCanBe) {
    const UserFolder user;
    WriteFileText(user.DataHome() / "Velkor", "a file in the way");
    EXPECT_EQ(GetPrefFilePath("a.bin"), "");
    EXPECT_EQ(OpenUserStorage(), nullptr);
}

TEST(SaveToUserStorage, StoresTheContentOfALocalFile) {
    const UserFolder user;
    const std::string local = GetPrefFilePath(".a.tmp");
    WriteFileText(local, "first");
    EXPECT_TRUE(SaveToUserStorage("a.bin", local));
    EXPECT_EQ(ReadFileText(user.File("a.bin")), "first");
    WriteFileText(local, "second, longer");
    EXPECT_TRUE(SaveToUserStorage("a.bin", local));
    EXPECT_EQ(ReadFileText(user.File("a.bin")), "second, longer");
    WriteFileText(local, "3");
    EXPECT_TRUE(SaveToUserStorage("a.bin", local));
    EXPECT_EQ(ReadFileText(user.File("a.bin")), "3");
    EXPECT_EQ(ReadFileText(local), "3") << "The local file is the caller's";
}

TEST(SaveToUserStorage, NothingNeverReplacesSomething) {
    const UserFolder user;
    const std::string local = GetPrefFilePath(".a.tmp");
    WriteFileText(local, "first");
    ASSERT_TRUE(SaveToUserStorage("a.bin", local));
    WriteFileText(local, "");
    EXPECT_FALSE(SaveToUserStorage("a.bin", local));
    EXPECT_EQ(ReadFileText(user.File("a.bin")), "first");
}

TEST(SaveToUserStorage, RefusesWhatHasNoNameOrIsNotThere) {
    const UserFolder user;
    const std::string local = GetPrefFilePath(".a.tmp");
    EXPECT_FALSE(SaveToUserStorage("a.bin", local));
    WriteFileText(local, "first");
    EXPECT_FALSE(SaveToUserStorage("", local));
    EXPECT_EQ(NamesIn(user.Path()), Names{".a.tmp"});
}

TEST(SaveToUserStorage, AFolderInTheWayStaysAndIsReported) {
    const UserFolder user;
    const std::string local = GetPrefFilePath(".a.tmp");
    WriteFileText(local, "first");
    std::filesystem::create_directory(user.File("a.bin"));
    SDL_ClearError();
    EXPECT_FALSE(SaveToUserStorage("a.bin", local));
    EXPECT_STRNE(SDL_GetError(), "");
    EXPECT_TRUE(std::filesystem::is_directory(user.File("a.bin")));
}

TEST(ReadUserFile, GivesTheContent) {
    const UserFolder user;
    EXPECT_EQ(ReadUserFile("a.bin").Content, std::nullopt);
    WriteFileText(user.File("a.bin"), "content");
    EXPECT_EQ(ReadUserFile("a.bin").Content, BytesOf("content"));
    WriteFileText(user.File("a.bin"), "");
    EXPECT_EQ(ReadUserFile("a.bin").Content, BytesOf(""));
    std::filesystem::create_directory(user.File("folder"));
    EXPECT_EQ(ReadUserFile("folder").Content, std::nullopt);
}

TEST(ReadUserFile, RefusesWhatIsTooLargeToBeOneOfTheGames) {
    const UserFolder user;
    user.Create();
    WriteFileText(user.File("a.bin"), "content");
    std::filesystem::resize_file(user.File("a.bin"), MaxFileBytes);
    EXPECT_TRUE(ReadUserFile("a.bin").Content.has_value());
    EXPECT_FALSE(ReadUserFile("a.bin").TooLarge);
    std::filesystem::resize_file(user.File("a.bin"), MaxFileBytes + 1);
    EXPECT_EQ(ReadUserFile("a.bin").Content, std::nullopt);
    EXPECT_TRUE(ReadUserFile("a.bin").TooLarge);
    EXPECT_FALSE(CopyUserFileToLocal("a.bin", user.File("copy")));
}

TEST(CopyToLocal, CopiesAFileOutOfTheStorage) {
    const UserFolder user;
    const std::string local = GetPrefFilePath(".a.tmp");
    WriteFileText(user.File("a.bin"), "content");
    EXPECT_TRUE(CopyUserFileToLocal("a.bin", local));
    EXPECT_EQ(ReadFileText(local), "content");
    const StorageHandle storage = OpenUserStorage();
    WriteFileText(user.File("a.bin"), "other");
    EXPECT_TRUE(CopyStorageFileToLocal(storage.get(), "a.bin", local));
    EXPECT_EQ(ReadFileText(local), "other");
}

TEST(CopyToLocal, RefusesEmptyFilesFoldersAndMissingOnes) {
    const UserFolder user;
    const std::string local = GetPrefFilePath(".a.tmp");
    WriteFileText(user.File("empty"), "");
    std::filesystem::create_directory(user.File("folder"));
    for (const char* const name : {"", "missing", "empty", "folder"}) {
        EXPECT_FALSE(CopyUserFileToLocal(name, local)) << name;
        const StorageHandle storage = OpenUserStorage();
        EXPECT_FALSE(CopyStorageFileToLocal(storage.get(), name, local)) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(local));
}

TEST(CopyToLocal, FailsWhenThereIsNoPlaceForTheCopy) {
    const UserFolder user;
    user.Create();
    WriteFileText(user.File("a.bin"), "content");
    std::filesystem::create_directory(user.File("folder"));
    EXPECT_FALSE(CopyUserFileToLocal("a.bin", user.File("folder")));
    EXPECT_FALSE(CopyUserFileToLocal("a.bin", user.File("missing/copy")));
}

// A storage of the platform that needs `delayMs` before it can be used.
StorageHandle SlowStorage(std::uint64_t delayMs) {
    static std::uint64_t readyAt = 0;
    readyAt = SDL_GetTicks() + delayMs;
    SDL_StorageInterface interface;
    SDL_INIT_INTERFACE(&interface);
    interface.ready = [](void* userdata) {
        return SDL_GetTicks() >= *static_cast<std::uint64_t*>(userdata);
    };
    return StorageHandle(SDL_OpenStorage(&interface, &readyAt));
}

TEST(WaitForStorage, WaitsUntilItIsReady) {
    const std::uint64_t start = SDL_GetTicks();
    EXPECT_TRUE(WaitForStorage(SlowStorage(50).get()));
    EXPECT_GE(SDL_GetTicks() - start, 50U);
}

TEST(WaitForStorage, GivesUpAfterTwoSeconds) {
    const StorageHandle storage = SlowStorage(1000000);
    SDL_ClearError();
    const std::uint64_t start = SDL_GetTicks();
    EXPECT_FALSE(CopyStorageFileToLocal(storage.get(), "a.bin", "nowhere"));
    EXPECT_GE(SDL_GetTicks() - start, 2000U);
    EXPECT_STREQ(SDL_GetError(), "Timed out waiting for SDL user storage");
}

TEST(RemoveLocalFile, RemovesFilesAndLeavesFolders) {
    const Testing::TemporaryFolder folder;
    WriteFileText(folder.File("a"), "content");
    RemoveLocalFile(folder.File("a"));
    RemoveLocalFile(folder.File("missing"));
    RemoveLocalFile("");
    std::filesystem::create_directory(folder.File("empty folder"));
    RemoveLocalFile(folder.File("empty folder"));
    EXPECT_EQ(NamesIn(folder.Path()), Names{"empty folder"});
}

TEST(SafePath, StaysWithinTheDataFolder) {
    for (const char* const path : {"music/a.ini", "..a/b", "a//b", "a/", "a\\b", "...", "a..", ".a",
                                   "a/.b/c", "\xc3\xa4.ini"}) {
        EXPECT_TRUE(IsSafeRelativePath(path)) << path;
    }
}

TEST(SafePath, NothingLeadsOut) {
    for (const char* const path :
         {"", "/a", "\\a", "C:a.ini", "c:", "a:b", ":", "/", ".", "..", "./a.ini", "music/../a.ini",
          "music\\..", "music/..", "a/.", "a\\.\\b", "../a", "a//.."}) {
        EXPECT_FALSE(IsSafeRelativePath(path)) << path;
    }
}

// A data file beside this program, for as long as it lives.
class InstalledFile {
public:
    explicit InstalledFile(std::string_view content) {
        std::filesystem::create_directory(Folder());
        WriteFileText(Folder() / "data.ini", content);
    }
    InstalledFile(const InstalledFile&) = delete;
    InstalledFile& operator=(const InstalledFile&) = delete;
    ~InstalledFile() { std::filesystem::remove_all(Folder()); }

    static std::string Name() { return FolderName() + "/data.ini"; }
    static std::filesystem::path Path() { return Folder() / "data.ini"; }

private:
    // Tests may run side by side.
    static std::string FolderName() { return "storage-test-" + std::to_string(getpid()); }
    static std::filesystem::path Folder() {
        return std::filesystem::path(SDL_GetBasePath()) / FolderName();
    }
};

// Leaves only the way around the title storage.
class NoTitleStorage {
public:
    NoTitleStorage() { SDL_SetHint(SDL_HINT_STORAGE_TITLE_DRIVER, "none such"); }
    NoTitleStorage(const NoTitleStorage&) = delete;
    NoTitleStorage& operator=(const NoTitleStorage&) = delete;
    ~NoTitleStorage() { SDL_ResetHint(SDL_HINT_STORAGE_TITLE_DRIVER); }
};

TEST(InstalledIni, IsReadAndLeavesNoTemporaryFile) {
    const UserFolder user;
    const InstalledFile installed("[Texts]\nHello=\"Good day\"\n");
    velINI::velINIStream document;
    document.SetValue("Before", "Key", "kept", false);
    EXPECT_TRUE(LoadIniFromInstall(InstalledFile::Name(), document));
    EXPECT_EQ(document.GetValue("Texts", "Hello", ""), "Good day");
    EXPECT_EQ(document.GetValue("Before", "Key", ""), "kept");
    EXPECT_EQ(NamesIn(user.Path()), Names{});
}

TEST(InstalledIni, IsFoundBesideTheExecutableWithoutATitleStorage) {
    const UserFolder user;
    const InstalledFile installed("[Texts]\nHello=\"Good day\"\n");
    const NoTitleStorage none;
    velINI::velINIStream document;
    EXPECT_TRUE(LoadIniFromInstall(InstalledFile::Name(), document));
    EXPECT_EQ(document.GetValue("Texts", "Hello", ""), "Good day");
}

TEST(InstalledIni, IsFoundWithoutAPrefPath) {
    const UserFolder user;
    WriteFileText(user.DataHome() / "Velkor", "a file in the way");
    const InstalledFile installed("[Texts]\nHello=\"Good day\"\n");
    velINI::velINIStream document;
    EXPECT_TRUE(LoadIniFromInstall(InstalledFile::Name(), document));
}

TEST(InstalledIni, IsTriedTwiceWhenItIsBroken) {
    const UserFolder user;
    const InstalledFile installed("a=1");
    velINI::velINIStream document;
    const Testing::CapturedOutput output;
    EXPECT_FALSE(LoadIniFromInstall(InstalledFile::Name(), document));
    const std::string message = "INI file cannot be smaller than 6 bytes! (Size in bytes: 3)\n";
    EXPECT_EQ(output.Text(), message + message);
    EXPECT_EQ(NamesIn(user.Path()), Names{});
}

TEST(InstalledIni, IsNotLookedForOutsideTheDataFolder) {
    const UserFolder user;
    velINI::velINIStream document;
    EXPECT_FALSE(LoadIniFromInstall("../data.ini", document));
    EXPECT_FALSE(LoadIniFromInstall("", document));
    EXPECT_FALSE(std::filesystem::exists(user.Path())) << "Not even the pref path was asked for";
}

TEST(InstalledIni, IsNotThere) {
    const UserFolder user;
    velINI::velINIStream document;
    const Testing::CapturedOutput quiet;
    EXPECT_FALSE(LoadIniFromInstall("storage-test-missing.ini", document));
    EXPECT_EQ(NamesIn(user.Path()), Names{});
}

TEST(InstalledIni, WithABrokenEscapeIsRefusedAndLoggedOnce) {
    const UserFolder user;
    const InstalledFile installed("[Texts]\nBefore=1\nHello=\\xD800\\x0041\n");
    const Testing::CapturedLog log;
    velINI::velINIStream document;
    EXPECT_FALSE(LoadIniFromInstall(InstalledFile::Name(), document));
    EXPECT_EQ(log.Messages(), Names{"Failed to read " + InstalledFile::Name() +
                                    ": Invalid code point range for UTF-16 low surrogate pair!"});
    EXPECT_EQ(document.SectionCount(), 0U);
    EXPECT_EQ(NamesIn(user.Path()), Names{});
}

TEST(InstalledIni, OfManyMegabytesIsRead) {
    const UserFolder user;
    const InstalledFile installed("[Texts]\n" + std::string(1000000, '\n') + "Hello=1\n");
    velINI::velINIStream document;
    EXPECT_TRUE(LoadIniFromInstall(InstalledFile::Name(), document));
    EXPECT_EQ(document.GetValue("Texts", "Hello", {}), "1");
}

TEST(InstalledIni, LargerThanAnySettingsIsRefusedAndLogged) {
    const UserFolder user;
    const InstalledFile installed("[Texts]\n");
    std::filesystem::resize_file(InstalledFile::Path(), MaxFileBytes + 1);
    const Testing::CapturedLog log;
    velINI::velINIStream document;
    EXPECT_FALSE(LoadIniFromInstall(InstalledFile::Name(), document));
    EXPECT_EQ(log.Messages(),
              Names{"Failed to read " + InstalledFile::Name() + ": larger than any settings file"});
}

} // namespace
} // namespace Wirefall
