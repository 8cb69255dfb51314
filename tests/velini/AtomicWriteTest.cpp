// WriteFileAtomically: the new content or the old one, and nothing else left behind.

#include "velini/VelINIStream.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <iterator>
#include <sys/resource.h>

namespace velINI {
namespace {

namespace fs = std::filesystem;

using Testing::ContentOf;

class AtomicWrite : public ::testing::Test {
protected:
    AtomicWrite() { Document.SetValue("Section", "key", std::string(5000, 'v')); }

    std::ptrdiff_t FilesInFolder() const {
        const fs::path folder = fs::path(Folder.PathOf("x")).parent_path();
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    void ExpectFailure(const std::string& path) const {
        std::string reason;
        EXPECT_FALSE(Document.WriteFileAtomically(path, false, TextEncoding::None, &reason));
        EXPECT_NE(reason, "");
        EXPECT_FALSE(Document.WriteFileAtomically(path)) << "no one needs to ask for the reason";
    }

    Testing::TemporaryFolder Folder;
    velINIStream Document;
};

// No file may grow beyond this for as long as the object lives: a device that is full.
class FullDevice {
public:
    explicit FullDevice(rlim_t size) : Handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &Before);
        const rlimit limit = {size, Before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDevice(const FullDevice&) = delete;
    FullDevice& operator=(const FullDevice&) = delete;
    ~FullDevice() {
        setrlimit(RLIMIT_FSIZE, &Before);
        static_cast<void>(std::signal(SIGXFSZ, Handler));
    }

private:
    rlimit Before{};
    void (*Handler)(int);
};

TEST_F(AtomicWrite, WritesWhatWriteFileWrites) {
    const std::string path = Folder.PathOf("new.ini");
    std::string reason = "before";
    EXPECT_TRUE(Document.WriteFileAtomically(path, true, TextEncoding::Utf16LittleEndian, &reason));
    EXPECT_EQ(reason, "");
    EXPECT_EQ(ContentOf(path),
              Testing::WrittenText(Document, true, TextEncoding::Utf16LittleEndian));
    EXPECT_TRUE(Document.WriteFileAtomically(fs::path(path)));
    EXPECT_EQ(ContentOf(path), Testing::WrittenText(Document));
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, KeepsTheOldContentOnAFullDevice) {
    const std::string path = Folder.Store("old.ini", "old = 1\n");
    {
        const FullDevice full(1000);
        ExpectFailure(path);
    }
    EXPECT_EQ(ContentOf(path), "old = 1\n");
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, KeepsTheOldContentWhenTheDocumentCannotBeWritten) {
    const std::string path = Folder.Store("old.ini", "old = 1\n");
    Document.SetValue("Section", "other", "\xFF");
    ExpectFailure(path);
    EXPECT_EQ(ContentOf(path), "old = 1\n");
}

TEST_F(AtomicWrite, FailsWhereNoFileCanBe) {
    ExpectFailure(Folder.PathOf("missing/new.ini"));
    fs::create_directory(Folder.PathOf("folder.ini"));
    ExpectFailure(Folder.PathOf("folder.ini"));
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, KeepsThePermissionsOfTheFile) {
    const std::string path = Folder.Store("old.ini", "old = 1\n");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(Document.WriteFileAtomically(path));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AtomicWrite, WritesTheFileThatALinkMeans) {
    const std::string path = Folder.Store("real.ini", "old = 1\n");
    fs::create_symlink(path, Folder.PathOf("link.ini"));
    EXPECT_TRUE(Document.WriteFileAtomically(Folder.PathOf("link.ini")));
    EXPECT_TRUE(fs::is_symlink(Folder.PathOf("link.ini")));
    EXPECT_EQ(ContentOf(path), Testing::WrittenText(Document));
}

TEST_F(AtomicWrite, LeavesFilesOfTheNameThatItWouldTakeAlone) {
    const std::string other = Folder.Store("new.ini.new0", "not mine\n");
    EXPECT_TRUE(Document.WriteFileAtomically(Folder.PathOf("new.ini")));
    EXPECT_EQ(ContentOf(other), "not mine\n");
    EXPECT_EQ(FilesInFolder(), 2);
}

TEST_F(AtomicWrite, WritesAnEmptyDocument) {
    velINIStream empty;
    empty.Sections.emplace_back().Name = "VI_Global";
    const std::string path = Folder.Store("old.ini", "old = 1\n");
    EXPECT_TRUE(empty.WriteFileAtomically(path));
    EXPECT_EQ(ContentOf(path), "");
}

} // namespace
} // namespace velINI
