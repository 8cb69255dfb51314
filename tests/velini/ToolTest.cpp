// The program velini, by its commands.

#include "velini/Commands.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace velINI::Tool {
namespace {

using Testing::ContentOf;

class Program : public ::testing::Test {
protected:
    ExitStatus Run(const std::vector<std::string>& arguments) {
        OutStream.str("");
        ErrorStream.str("");
        const Testing::PrintedText printed;
        const ExitStatus status = velINI::Tool::Run(arguments, OutStream, ErrorStream);
        EXPECT_EQ(printed.Text(), "");
        return status;
    }

    std::string Out() const { return OutStream.str(); }
    std::string Errors() const { return ErrorStream.str(); }

    Testing::TemporaryFolder Folder;

private:
    std::ostringstream OutStream;
    std::ostringstream ErrorStream;
};

constexpr std::string_view Sample = "; Settings\n"
                                    "\n"
                                    "[Menu] ; shown first\n"
                                    "title = \"A title\"\n"
                                    "list[] = \"one item\"\n"
                                    "list[] = two\n"
                                    "; C:\\temp\n"
                                    "width = 10\n";

TEST_F(Program, ChecksFilesAndTellsThePlaceOfEachOddity) {
    const std::string good = Folder.Store("good.ini", Sample);
    EXPECT_EQ(Run({"check", good}), ExitStatus::Good);
    EXPECT_EQ(Out() + Errors(), "");
    const std::string bad = Folder.Store("bad.ini", "a = two words\na = 1\nb = [\n");
    EXPECT_EQ(Run({"check", good, bad, Folder.PathOf("missing.ini")}), ExitStatus::Negative);
    EXPECT_EQ(Out(), bad + ":1:4: odd: Spaces outside of quotes are dropped.\n" + bad +
                         ":2:1: odd: The section has this key before; what stands here counts.\n" +
                         bad + ":3:5: error: Start section tag within value tag!\n" +
                         Folder.PathOf("missing.ini") + ": error: Unable to open INI file: " +
                         Folder.PathOf("missing.ini") + "\n");
}

TEST_F(Program, GetsAValueOrTheDefault) {
    const std::string file = Folder.Store("file.ini", Sample);
    EXPECT_EQ(Run({"get", file, "Menu", "title"}), ExitStatus::Good);
    EXPECT_EQ(Out(), "A title\n");
    EXPECT_EQ(Run({"get", file, "Menu", "missing"}), ExitStatus::Negative);
    EXPECT_EQ(Out(), "");
    EXPECT_EQ(Run({"get", file, "Menu", "missing", "7"}), ExitStatus::Good);
    EXPECT_EQ(Out(), "7\n");
    EXPECT_EQ(Run({"get", Folder.PathOf("missing.ini"), "a", "b"}), ExitStatus::Failed);
}

TEST_F(Program, SetsAKeyAndKeepsTheRest) {
    const std::string file = Folder.Store("file.ini", Sample);
    EXPECT_EQ(Run({"set", file, "Menu", "width", "two words"}), ExitStatus::Good);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(ContentOf(file), "; Settings\n"
                               "\n"
                               "[Menu]; shown first\n"
                               "title=\"A title\"\n"
                               "list[]=\"one item\"\n"
                               "list[]=two\n"
                               "; C:\\temp\n"
                               "width=\"two words\"");
}

TEST_F(Program, SetMakesAFileThatIsMissing) {
    const std::string file = Folder.PathOf("new.ini");
    EXPECT_EQ(Run({"set", file, "S", "k", "v"}), ExitStatus::Good);
    EXPECT_EQ(ContentOf(file), "[S]\r\nk=v");
}

TEST_F(Program, SetLeavesAFileAloneThatItCouldNotKeep) {
    for (const std::string text : {"kept = 1\nbad = [\nlost = 1\n", "k = 1 ; say \"x\"\n"}) {
        const std::string file = Folder.Store("file.ini", text);
        EXPECT_EQ(Run({"set", file, "S", "k", "v"}), ExitStatus::Failed);
        EXPECT_NE(Errors(), "");
        EXPECT_EQ(ContentOf(file), text);
    }
}

TEST_F(Program, ListsKeysAndElements) {
    const std::string file = Folder.Store("file.ini", "a = 1\n" + std::string(Sample));
    EXPECT_EQ(Run({"list", file}), ExitStatus::Good);
    EXPECT_EQ(Out(), "VI_Global\ta\t1\n"
                     "Menu\ttitle\tA title\n"
                     "Menu\tlist[0]\tone item\n"
                     "Menu\tlist[1]\ttwo\n"
                     "Menu\twidth\t10\n");
    EXPECT_EQ(Run({"list", file, "VI_Global"}), ExitStatus::Good);
    EXPECT_EQ(Out(), "VI_Global\ta\t1\n");
    EXPECT_EQ(Run({"list", file, "Missing"}), ExitStatus::Negative);
}

TEST_F(Program, NormalisesToTheSameEachTime) {
    const std::string file =
        Folder.Store("file.ini", "a:1\n[ S ]\nlist[4] = 'x y'\nlist[9] = z\nk = \"\xC3\xA4\"\n");
    const std::string once = Folder.PathOf("once.ini");
    EXPECT_EQ(Run({"normalise", file, once}), ExitStatus::Good);
    EXPECT_EQ(ContentOf(once), "a=1\n[S]\nlist[4]=\"x y\"\nlist[9]=z\nk=\"\\x00e4\"");
    EXPECT_EQ(Run({"normalise", once}), ExitStatus::Good);
    EXPECT_EQ(Out(), ContentOf(once) + "\n");
}

TEST_F(Program, TellsHowItIsUsed) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{}, {"other"}, {"check"}, {"get", "a", "b"}}) {
        EXPECT_EQ(Run(arguments), ExitStatus::Failed);
        EXPECT_TRUE(Errors().starts_with("Usage: velini check"));
    }
}

} // namespace
} // namespace velINI::Tool
