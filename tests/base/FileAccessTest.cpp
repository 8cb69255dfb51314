#include "base/FileAccess.h"

#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace Wirefall {

namespace {

TEST(FileAccess, OpensPathsBeyondAscii) {
    const Testing::TemporaryFolder folder;
    const std::string path = folder.File("J\xc3\xb6rg \xd0\x94\xd0\xbe\xd0\xbc \xe6\x97\xa5.txt");
    {
        const FileHandle file = OpenFile(path, "wb");
        ASSERT_NE(file, nullptr);
        EXPECT_GE(std::fputs("word", file.get()), 0);
    }
    EXPECT_EQ(Testing::ReadFileBytes(path), Testing::BytesOf("word"));
}

TEST(FileAccess, GivesNothingForAFileThatIsNotThere) {
    EXPECT_EQ(OpenFile("/no such folder/no such file", "rb"), nullptr);
}

} // namespace

} // namespace Wirefall
