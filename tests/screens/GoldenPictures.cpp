#include "screens/GoldenPictures.h"

#include "support/Fnv1a.h"
#include "support/Png.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string_view>

namespace Wirefall::Testing {

namespace {

namespace fs = std::filesystem;

const fs::path GoldenFolder = WIREFALL_GOLDEN_DIR;
const fs::path FailureFolder = WIREFALL_GOLDEN_FAILURE_DIR;

bool IsUpdating() {
    const char* const value = std::getenv("WIREFALL_UPDATE_GOLDEN");
    return value != nullptr && std::string_view(value) == "1";
}

// Over the size and the pixels.
std::string ChecksumOf(const Picture& picture) {
    constexpr int SizeBytes = 4;
    Fnv1a sum;
    sum.Add(static_cast<std::uint32_t>(picture.Width), SizeBytes);
    sum.Add(static_cast<std::uint32_t>(picture.Height), SizeBytes);
    for (const Rgb& pixel : picture.Pixels) {
        sum.AddByte(pixel.R);
        sum.AddByte(pixel.G);
        sum.AddByte(pixel.B);
    }
    std::array<char, 17> digits{};
    static_cast<void>(
        std::snprintf(digits.data(), digits.size(), "%016llx",
                      static_cast<unsigned long long>(sum.Value()))); // NOLINT(google-runtime-int)
    return digits.data();
}

using ChecksumTable = std::map<std::string, std::string>;

fs::path ChecksumFile() { return GoldenFolder / "checksums.txt"; }

ChecksumTable ReadChecksums() {
    ChecksumTable table;
    std::ifstream file(ChecksumFile());
    std::string name;
    std::string sum;
    while (file >> name >> sum) {
        table[name] = sum;
    }
    return table;
}

void WriteChecksums(const ChecksumTable& table) {
    std::ofstream file(ChecksumFile());
    for (const auto& [name, sum] : table) {
        file << name << ' ' << sum << '\n';
    }
}

// Black where two pictures agree; elsewhere as bright as they differ, but never too dark to see.
Picture DifferenceOf(const Picture& a, const Picture& b) {
    Picture difference{.Width = a.Width, .Height = a.Height, .Pixels = {}};
    difference.Pixels.resize(a.Pixels.size());
    const auto distance = [](std::uint8_t x, std::uint8_t y) {
        return static_cast<std::uint8_t>(x < y ? y - x : x - y);
    };
    for (std::size_t i = 0; i < a.Pixels.size(); ++i) {
        const Rgb& p = a.Pixels[i];
        const Rgb& q = b.Pixels[i];
        if (p != q) {
            const std::uint8_t most =
                std::max({distance(p.R, q.R), distance(p.G, q.G), distance(p.B, q.B)});
            difference.Pixels[i] = {std::max<std::uint8_t>(most, 96), 32, 32};
        }
    }
    return difference;
}

std::size_t CountDifferences(const Picture& a, const Picture& b) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.Pixels.size(); ++i) {
        if (a.Pixels[i] != b.Pixels[i]) {
            ++count;
        }
    }
    return count;
}

// A run that writes must not be taken for one that has compared.
testing::AssertionResult Written(const std::string& name) {
    return testing::AssertionFailure()
           << name << " has been written; run again without WIREFALL_UPDATE_GOLDEN";
}

testing::AssertionResult ReportDifference(const std::string& name, const Picture& expected,
                                          const Picture& actual) {
    const fs::path stem = FailureFolder / name;
    WritePng(stem.string() + ".expected.png", expected);
    WritePng(stem.string() + ".actual.png", actual);
    if (expected.Width != actual.Width || expected.Height != actual.Height) {
        return testing::AssertionFailure()
               << name << " is " << actual.Width << " by " << actual.Height << ", expected "
               << expected.Width << " by " << expected.Height << "; see " << stem.string()
               << ".{expected,actual}.png";
    }
    WritePng(stem.string() + ".difference.png", DifferenceOf(expected, actual));
    return testing::AssertionFailure()
           << name << " differs in " << CountDifferences(expected, actual) << " pixels; see "
           << stem.string() << ".{expected,actual,difference}.png";
}

} // namespace

testing::AssertionResult MatchesGolden(const std::string& name, const Picture& picture) {
    const fs::path path = GoldenFolder / (name + ".png");
    if (IsUpdating()) {
        WritePng(path, picture);
        return Written(name);
    }
    const std::optional<Picture> expected = ReadPng(path);
    if (!expected) {
        return testing::AssertionFailure()
               << path << " is missing; WIREFALL_UPDATE_GOLDEN=1 writes it";
    }
    if (*expected == picture) {
        return testing::AssertionSuccess();
    }
    return ReportDifference(name, *expected, picture);
}

testing::AssertionResult MatchesChecksum(const std::string& name, const Picture& picture) {
    static ChecksumTable table = ReadChecksums();
    const std::string sum = ChecksumOf(picture);
    if (IsUpdating()) {
        table[name] = sum;
        WriteChecksums(table);
        return Written(name);
    }
    const auto kept = table.find(name);
    if (kept != table.end() && kept->second == sum) {
        return testing::AssertionSuccess();
    }
    const fs::path path = FailureFolder / (name + ".actual.png");
    WritePng(path, picture);
    return testing::AssertionFailure()
           << name << " has the checksum " << sum << ", kept is "
           << (kept == table.end() ? "none" : kept->second) << "; see " << path;
}

std::vector<std::string> KeptChecksums() {
    std::vector<std::string> names;
    std::ifstream file(ChecksumFile());
    std::string name;
    std::string sum;
    while (file >> name >> sum) {
        names.push_back(name);
    }
    return names;
}

std::vector<std::string> KeptGoldens() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(GoldenFolder)) {
        if (entry.path().extension() == ".png") {
            names.push_back(entry.path().stem().string());
        }
    }
    return names;
}

} // namespace Wirefall::Testing
