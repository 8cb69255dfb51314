// What is written is read again as it was; and where the dialect does not allow that, what becomes
// of it.

#include "velini/VelINIStream.h"
#include "velini/support/SampleFiles.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <array>

namespace velINI {
namespace {

using Testing::Describe;
using Testing::ReadText;
using Testing::WrittenText;

constexpr std::array<TextEncoding, 6> Encodings = {
    TextEncoding::None,
    TextEncoding::Utf8,
    TextEncoding::Utf16LittleEndian,
    TextEncoding::Utf16BigEndian,
    TextEncoding::Utf32LittleEndian,
    TextEncoding::Utf32BigEndian,
};

velINIStream Rewritten(const velINIStream& document) {
    return ReadText(WrittenText(document)).Document;
}

TEST(RoundTrip, KeepsWhatTheAuthorWrote) {
    const velINIStream document = ReadText("; Settings\n"
                                           "\n"
                                           "format = 3\n"
                                           "\n"
                                           "[Text] ; translated by hand\n"
                                           "title = \"A \\\"game\\\"; or not\" # keep it short\n"
                                           "path = 'C:\\\\games'\n"
                                           "greeting = Grüße\\x2026\n"
                                           "empty =\n"
                                           "# a face: 😀\n"
                                           "\n"
                                           "\n"
                                           "[Lists]\n"
                                           "list[] = one\n"
                                           "list[] = \"two words\" ; noted\n"
                                           "[Last]\n")
                                      .Document;
    for (const TextEncoding encoding : Encodings) {
        const velINIStream again = ReadText(WrittenText(document, false, encoding)).Document;
        EXPECT_EQ(Describe(again), Describe(document));
    }
}

TEST(RoundTrip, WritingAgainGivesTheSameBytes) {
    const std::string text = Testing::MakeRealisticFile(100'000) + "last = 1\n";
    const std::string once = WrittenText(ReadText(text).Document);
    EXPECT_TRUE(WrittenText(ReadText(once).Document) == once);
}

TEST(RoundTrip, IsPlainAscii) {
    const std::string text = WrittenText(ReadText(Testing::MakeRealisticFile(100'000)).Document);
    for (const char c : text) {
        ASSERT_LT(static_cast<unsigned char>(c), 0x80);
    }
}

TEST(RoundTrip, ANamedEscapeComesBackAsTwoCharacters) {
    velINIStream document;
    document.SetValue("S", "k", "a\nb\tc", true);
    EXPECT_EQ(Describe(Rewritten(document)), "[S] k=\"a\\nb\\tc\"");
}

TEST(RoundTrip, ABackslashWithoutQuotesDoublesEachTime) {
    velINIStream document;
    document.SetValue("S", "k", "a\\b", false);
    document = Rewritten(document);
    EXPECT_EQ(document.GetValue("S", "k", ""), "a\\\\b");
    document = Rewritten(document);
    EXPECT_EQ(document.GetValue("S", "k", ""), "a\\\\\\\\b");
}

TEST(RoundTrip, AQuotedBackslashDoesNot) {
    velINIStream document;
    document.SetValue("S", "k", R"(a\b\\x0041")", true);
    EXPECT_EQ(Rewritten(document).GetValue("S", "k", ""), "a\\b\\\\x0041\"");
}

TEST(RoundTrip, ExplicitIndexesAreNumberedAnew) {
    const velINIStream document = ReadText("[S]\na[7] = x\na[] = y\n").Document;
    EXPECT_EQ(Describe(document), "[S] a[]{7=x, 8=y}");
    EXPECT_EQ(Describe(Rewritten(document)), "[S] a[]{0=x, 1=y}");
}

TEST(RoundTrip, ABlankLineAtTheEndOfTheFileIsLost) {
    const velINIStream document = ReadText("[S]\na = x\n\n").Document;
    EXPECT_EQ(Describe(document), "[S] a=x | (blank)");
    EXPECT_EQ(Describe(Rewritten(document)), "[S] a=x");
}

TEST(RoundTrip, AShortDocumentIsNotReadAgain) {
    velINIStream document;
    document.SetValue("VI_Global", "a", "1", false);
    EXPECT_FALSE(ReadText(WrittenText(document)).Succeeded);
    EXPECT_TRUE(ReadText(WrittenText(document, false, TextEncoding::Utf8)).Succeeded);
}

} // namespace
} // namespace velINI
