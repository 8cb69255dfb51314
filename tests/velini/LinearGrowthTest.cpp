// The work of reading and writing grows with the length of the text and with nothing else. Work is
// counted here, in comparisons of names and in memory; bench/velini measures the time.

#include "velini/internal/LineParser.h"
#include "velini/internal/LineReader.h"
#include "velini/support/AllocationMeter.h"
#include "velini/support/SampleFiles.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <ostream>

namespace velINI {
namespace {

using Testing::CurrentAllocations;

struct Work {
    std::size_t Comparisons = 0;
    std::size_t Allocations = 0;
    std::size_t AllocatedBytes = 0;
};

Work WorkOfReading(const std::string& text) {
    const Testing::AllocationCounts before = CurrentAllocations();
    velINIStream document;
    std::vector<Diagnostic> diagnostics;
    Internal::LineReader lines(text);
    Internal::LineParser parser(document, diagnostics, false);
    parser.Parse(lines, {});
    parser.Finish();
    const Testing::AllocationCounts after = CurrentAllocations();
    return {parser.Comparisons(), after.Allocations - before.Allocations,
            after.AllocatedBytes - before.AllocatedBytes};
}

struct Shape {
    const char* Name;
    std::string (*Make)(std::size_t count);
};

std::ostream& operator<<(std::ostream& out, const Shape& shape) { return out << shape.Name; }

class LinearGrowth : public ::testing::TestWithParam<Shape> {};

constexpr std::size_t Few = 10'000;
constexpr std::size_t Many = 100'000;

// A list that doubles its room can need up to twice as much more than the ten times expected.
constexpr std::size_t MostGrowth = 20;

TEST_P(LinearGrowth, OfComparisonsWhileReading) {
    EXPECT_LE(WorkOfReading(GetParam().Make(Few)).Comparisons, 3 * Few);
    EXPECT_LE(WorkOfReading(GetParam().Make(Many)).Comparisons, 3 * Many);
}

TEST_P(LinearGrowth, OfMemoryWhileReading) {
    const Work few = WorkOfReading(GetParam().Make(Few));
    const Work many = WorkOfReading(GetParam().Make(Many));
    EXPECT_LE(many.Allocations, MostGrowth * few.Allocations);
    EXPECT_LE(many.AllocatedBytes, MostGrowth * few.AllocatedBytes);
}

std::size_t BytesForWriting(const std::string& text) {
    const Testing::TemporaryFolder folder;
    velINIStream document;
    EXPECT_TRUE(document.ReadFile(folder.Store("input.ini", text)));
    const std::string path = folder.PathOf("output.ini");
    const std::size_t before = CurrentAllocations().AllocatedBytes;
    EXPECT_TRUE(document.WriteFile(path, false, TextEncoding::None));
    return CurrentAllocations().AllocatedBytes - before;
}

TEST_P(LinearGrowth, NotOfMemoryWhileWriting) {
    constexpr std::size_t RoomForOneEntry = 1'000;
    EXPECT_LE(BytesForWriting(GetParam().Make(Many)), RoomForOneEntry);
}

INSTANTIATE_TEST_SUITE_P(Shapes, LinearGrowth,
                         ::testing::Values(Shape{"Keys", Testing::MakeKeys},
                                           Shape{"Sections", Testing::MakeSections},
                                           Shape{"Comments", Testing::MakeComments},
                                           Shape{"BlankLines", Testing::MakeBlankLines},
                                           Shape{"Elements", Testing::MakeElements}),
                         [](const auto& shape) { return shape.param.Name; });

TEST(LinearGrowthOfSections, WhenTheyTakeTurns) {
    const auto make = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += i % 2 == 0 ? "[A]\n" : "[B]\n";
            text += "key" + std::to_string(i) + " = 1\nlist[] = 1\n";
        }
        return text;
    };
    EXPECT_LE(WorkOfReading(make(Few)).Comparisons, 10 * Few);
    const Work few = WorkOfReading(make(Few));
    const Work many = WorkOfReading(make(Many));
    EXPECT_LE(many.Comparisons, MostGrowth * few.Comparisons);
    EXPECT_LE(many.AllocatedBytes, MostGrowth * few.AllocatedBytes);
}

TEST(MemoryOfADocument, IsAtMostSixTimesTheFile) {
    constexpr std::size_t FileSize = 1'000'000;
    const Testing::TemporaryFolder folder;
    const std::string path = folder.Store("input.ini", Testing::MakeRealisticFile(FileSize));
    const std::size_t before = CurrentAllocations().LiveBytes;
    velINIStream document;
    ASSERT_TRUE(document.ReadFile(path));
    EXPECT_LE(CurrentAllocations().LiveBytes - before, 6 * FileSize);
}

} // namespace
} // namespace velINI
