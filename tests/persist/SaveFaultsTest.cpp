// What can go wrong with a disk, for the save and for the options alike. After each fault the old
// file is as it was or the new one complete, nothing else is left behind, and the next write that
// succeeds heals everything.

#include "game/GameApp.h"
#include "persist/Options.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"
#include "support/CapturedOutput.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <sched.h>
#include <sys/mount.h>

namespace Wirefall {
namespace {

namespace fs = std::filesystem;
using Testing::Bytes;
using Testing::CapturedErrors;
using Testing::CapturedOutput;
using Testing::NamesIn;
using Testing::ReadFileBytes;
using Testing::WriteFileBytes;

using Names = std::vector<std::string>;

// One of the two files: how it is written, and loaded at a start.
struct KeptFile {
    const char* Name;
    const char* StagedName;
    bool (*Write)(const GameApp& app);
    bool (*Load)(GameApp& app);
};

constexpr std::array<KeptFile, 2> KeptFiles = {{
    {"SaveState.bin", ".SaveState.bin.tmp", [](const GameApp& app) { return WriteSaveState(app); },
     [](GameApp& app) { return LoadSaveState(app); }},
    {"Config.ini", ".Config.ini.tmp", [](const GameApp& app) { return SaveOptions(app); },
     [](GameApp& app) { return LoadOptions(app); }},
}};

std::string NameOf(const testing::TestParamInfo<KeptFile>& info) {
    return info.index == 0 ? "SaveState" : "Config";
}

class Fault : public testing::TestWithParam<KeptFile> {
protected:
    // Writes the file, keeps what is in it, and changes what would be written next.
    Fault() {
        Testing::StartSampleRun(2, 3, 100);
        App.HasSavedRun = true;
        EXPECT_TRUE(Write());
        Old = Content();
        Testing::StartSampleRun(3, 4, 100);
        App.MusicVolume = 9;
        EXPECT_TRUE(Write());
        New = Content();
        WriteFileBytes(File(), Old);
        EXPECT_NE(Old, New);
    }

    bool Write() const { return GetParam().Write(App); }
    bool Load() { return GetParam().Load(App); }
    fs::path File() const { return User.File(GetParam().Name); }
    fs::path StagedFile() const { return User.File(GetParam().StagedName); }
    Bytes Content() const { return ReadFileBytes(File()); }
    bool OldIsIntact() const {
        return Content() == Old && NamesIn(User.Path()) == Names{GetParam().Name};
    }
    void ExpectNextWriteHeals() const {
        EXPECT_TRUE(Write());
        EXPECT_EQ(Content(), New);
        EXPECT_EQ(NamesIn(User.Path()), Names{GetParam().Name});
    }
    // For processes of other users: the folders down to the file can be passed, and `mode` holds
    // for the last.
    void SetFolderMode(unsigned mode) const {
        fs::permissions(User.DataHome(), fs::perms(0755));
        fs::permissions(User.DataHome() / "Velkor", fs::perms(0755));
        fs::permissions(File(), fs::perms(0644));
        fs::permissions(User.Path(), fs::perms(mode));
    }

    Testing::UserFolder User;
    GameApp App;
    Bytes Old;
    Bytes New;
};

INSTANTIATE_TEST_SUITE_P(KeptFiles, Fault, testing::ValuesIn(KeptFiles), NameOf);

TEST_P(Fault, DiskFullAtEveryByteLeavesTheOldFile) {
    for (std::size_t limit = 0; limit < New.size(); ++limit) {
        const CapturedOutput quiet; // velINI reports the short file.
        const Testing::FullDisk disk(limit);
        ASSERT_FALSE(Write()) << limit;
        ASSERT_TRUE(OldIsIntact()) << limit;
    }
    const Testing::FullDisk disk(New.size());
    ExpectNextWriteHeals();
}

constexpr std::size_t PageSize = 4096;

// A file system in memory with room for `pages`, which only this process sees.
bool MountSmallDisk(const fs::path& folder, std::size_t pages) {
    const std::string size = "size=" + std::to_string(pages * PageSize);
    return unshare(CLONE_NEWNS) == 0 &&
           mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
}

// With some of these sizes the staged file fits, and then there is not enough room for the file
// itself, which the storage has emptied by then.
TEST_P(Fault, ADiskTooSmallAtAnyPointLeavesTheOldFile) {
    if (!Testing::HoldsInChild([this] { return MountSmallDisk(User.Path(), 1); })) {
        GTEST_SKIP() << "This process may not mount anything";
    }
    const Bytes small = {'o', 'l', 'd'};
    const CapturedOutput quiet; // velINI reports the short file.
    for (std::size_t pages = 1; pages <= 2 * New.size() / PageSize + 4; ++pages) {
        EXPECT_TRUE(Testing::HoldsInChild([this, &small, pages] {
            if (!MountSmallDisk(User.Path(), pages)) {
                return false;
            }
            WriteFileBytes(File(), small);
            const Bytes expected = Write() ? New : small;
            return Content() == expected && NamesIn(User.Path()) == Names{GetParam().Name};
        })) << pages;
    }
    EXPECT_TRUE(OldIsIntact());
}

TEST_P(Fault, AReadOnlyFolderStaysAsItIs) {
    SetFolderMode(0555);
    EXPECT_TRUE(Testing::HoldsUnprivileged([this] { return !Write() && OldIsIntact(); }));
    SetFolderMode(0755);
    EXPECT_TRUE(OldIsIntact());
    ExpectNextWriteHeals();
}

TEST_P(Fault, AnUnreadableFileStaysAsItIs) {
    SetFolderMode(0777);
    fs::permissions(File(), fs::perms(0));
    EXPECT_TRUE(Testing::HoldsUnprivileged([this] { return !Load() && !Write(); }));
    EXPECT_TRUE(OldIsIntact());
    ExpectNextWriteHeals();
}

TEST_P(Fault, AFileInPlaceOfThePrefPathStaysAsItIs) {
    fs::remove_all(User.Path());
    Testing::WriteFileText(User.Path(), "a file");
    const CapturedErrors quietErrors;
    const CapturedOutput quiet;
    EXPECT_FALSE(Load());
    App.HasSavedRun = true;
    EXPECT_FALSE(Write());
    EXPECT_EQ(ReadFileBytes(User.Path()), Testing::BytesOf("a file"));
    EXPECT_EQ(NamesIn(User.DataHome() / "Velkor"), Names{"Wirefall"});
    fs::remove(User.Path());
    ExpectNextWriteHeals();
}

TEST_P(Fault, AFolderThatWasRemovedComesBack) {
    fs::remove_all(User.DataHome() / "Velkor");
    ExpectNextWriteHeals();
}

TEST_P(Fault, AFolderInPlaceOfTheTemporaryFileStaysAsItIs) {
    fs::create_directory(StagedFile());
    const CapturedErrors quietErrors;
    const CapturedOutput quiet;
    EXPECT_FALSE(Write());
    EXPECT_EQ(Content(), Old);
    EXPECT_TRUE(fs::is_directory(StagedFile()));
    Load();
    EXPECT_TRUE(fs::is_directory(StagedFile()));
    App.HasSavedRun = true;
    App.MusicVolume = 9;
    Testing::StartSampleRun(3, 4, 100);
    fs::remove(StagedFile());
    ExpectNextWriteHeals();
}

TEST_P(Fault, ATemporaryFileThatCannotBeWrittenStaysAsItIs) {
    SetFolderMode(0755);
    Testing::WriteFileText(StagedFile(), "somebody else's");
    fs::permissions(StagedFile(), fs::perms(0444));
    EXPECT_TRUE(Testing::HoldsUnprivileged([this] { return !Write() && Content() == Old; }));
    EXPECT_EQ(ReadFileBytes(StagedFile()), Testing::BytesOf("somebody else's"));
    ExpectNextWriteHeals();
}

TEST_P(Fault, AFolderInPlaceOfTheFileStaysAsItIs) {
    fs::remove(File());
    fs::create_directory(File());
    EXPECT_FALSE(Load());
    App.HasSavedRun = true;
    EXPECT_FALSE(Write());
    EXPECT_EQ(NamesIn(User.Path()), Names{GetParam().Name});
    EXPECT_TRUE(fs::is_directory(File()));
    fs::remove(File());
    ExpectNextWriteHeals();
}

TEST_P(Fault, AnEmptyFileIsReplacedByTheNextWrite) {
    WriteFileBytes(File(), {});
    EXPECT_FALSE(Load());
    App.HasSavedRun = true;
    ExpectNextWriteHeals();
}

using SaveFault = Fault;
INSTANTIATE_TEST_SUITE_P(SaveState, SaveFault, testing::Values(KeptFiles[0]), NameOf);

// A start needs no room on the disk to find the run.
TEST_P(SaveFault, AFullOrReadOnlyDiskStillGivesTheRun) {
    {
        const Testing::FullDisk disk(0);
        EXPECT_TRUE(Load());
        EXPECT_TRUE(App.HasSavedRun);
    }
    SetFolderMode(0555);
    EXPECT_TRUE(Testing::HoldsUnprivileged([this] { return Load() && App.HasSavedRun; }));
    SetFolderMode(0755);
    EXPECT_TRUE(OldIsIntact());
}

} // namespace
} // namespace Wirefall
