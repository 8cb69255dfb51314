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
    AtomicWrite() { document_.SetValue("Section", "key", std::string(5000, 'v')); }

    std::ptrdiff_t FilesInFolder() const {
        const fs::path folder = fs::path(folder_.PathOf("x")).parent_path();
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    void ExpectFailure(const std::string& path) const {
        std::string reason;
        EXPECT_FALSE(document_.WriteFileAtomically(path, false, TextEncoding::None, &reason));
        EXPECT_NE(reason, "");
        EXPECT_FALSE(document_.WriteFileAtomically(path)) << "no one needs to ask for the reason";
    }

    Testing::TemporaryFolder folder_;
    velINIStream document_;
};

/// No file may grow beyond this for as long as the object lives: a device that is full.
class FullDevice {
public:
    explicit FullDevice(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDevice(const FullDevice&) = delete;
    FullDevice& operator=(const FullDevice&) = delete;
    ~FullDevice() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST_F(AtomicWrite, WritesWhatWriteFileWrites) {
    const std::string path = folder_.PathOf("new.ini");
    std::string reason = "before";
    EXPECT_TRUE(
        document_.WriteFileAtomically(path, true, TextEncoding::Utf16LittleEndian, &reason));
    EXPECT_EQ(reason, "");
    EXPECT_EQ(ContentOf(path),
              Testing::WrittenText(document_, true, TextEncoding::Utf16LittleEndian));
    EXPECT_TRUE(document_.WriteFileAtomically(fs::path(path)));
    EXPECT_EQ(ContentOf(path), Testing::WrittenText(document_));
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, KeepsTheOldContentOnAFullDevice) {
    const std::string path = folder_.Store("old.ini", "old = 1\n");
    {
        const FullDevice full(1000);
        ExpectFailure(path);
    }
    EXPECT_EQ(ContentOf(path), "old = 1\n");
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, KeepsTheOldContentWhenTheDocumentCannotBeWritten) {
    const std::string path = folder_.Store("old.ini", "old = 1\n");
    document_.SetValue("Section", "other", "\xFF");
    ExpectFailure(path);
    EXPECT_EQ(ContentOf(path), "old = 1\n");
}

TEST_F(AtomicWrite, FailsWhereNoFileCanBe) {
    ExpectFailure(folder_.PathOf("missing/new.ini"));
    fs::create_directory(folder_.PathOf("folder.ini"));
    ExpectFailure(folder_.PathOf("folder.ini"));
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, KeepsThePermissionsOfTheFile) {
    const std::string path = folder_.Store("old.ini", "old = 1\n");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(document_.WriteFileAtomically(path));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AtomicWrite, WritesTheFileThatALinkMeans) {
    const std::string path = folder_.Store("real.ini", "old = 1\n");
    fs::create_symlink(path, folder_.PathOf("link.ini"));
    EXPECT_TRUE(document_.WriteFileAtomically(folder_.PathOf("link.ini")));
    EXPECT_TRUE(fs::is_symlink(folder_.PathOf("link.ini")));
    EXPECT_EQ(ContentOf(path), Testing::WrittenText(document_));
}

TEST_F(AtomicWrite, LeavesFilesOfTheNameThatItWouldTakeAlone) {
    const std::string other = folder_.Store("new.ini.new0", "not mine\n");
    EXPECT_TRUE(document_.WriteFileAtomically(folder_.PathOf("new.ini")));
    EXPECT_EQ(ContentOf(other), "not mine\n");
    EXPECT_EQ(FilesInFolder(), 2);
}

TEST_F(AtomicWrite, WritesAnEmptyDocument) {
    velINIStream empty;
    empty.Sections.emplace_back().Name = "VI_Global";
    const std::string path = folder_.Store("old.ini", "old = 1\n");
    EXPECT_TRUE(empty.WriteFileAtomically(path));
    EXPECT_EQ(ContentOf(path), "");
}

} // namespace
} // namespace velINI
