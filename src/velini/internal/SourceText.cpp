#include "velini/internal/SourceText.h"

#include "velini/internal/FileAccess.h"
#include "velini/internal/WideText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string_view>

namespace velINI::Internal {
namespace {

constexpr std::size_t SmallestFile = 6;

using Head = std::array<std::uint8_t, 4>;

/// What a byte at the start of a file must be, apart from one certain value.
constexpr int Any = -1;
constexpr int NonZero = -2;

/// How the text of a file is stored. The name is what the user is told; plain bytes have none.
struct Format {
    std::array<int, 4> FirstBytes;
    std::string_view Name;
    std::size_t UnitSize;
    bool BigEndian;
    std::size_t MarkSize;
};

constexpr std::array<Format, 10> Formats = {{
    {{0xFF, 0xFE, 0x00, 0x00}, "UTF-32 Little Endian", 4, false, 4},
    {{0xFF, 0xFE, Any, Any}, "UTF-16 Little Endian", 2, false, 2},
    {{0x00, 0x00, 0xFE, 0xFF}, "UTF-32 Big Endian", 4, true, 4},
    {{0x00, 0x00, 0x00, NonZero}, "UTF-32 Big Endian", 4, true, 0},
    {{0x00, NonZero, 0x00, NonZero}, "UTF-16 Big Endian", 2, true, 0},
    {{0xFE, 0xFF, Any, Any}, "UTF-16 Big Endian", 2, true, 2},
    {{0xEF, 0xBB, 0xBF, Any}, "UTF-8", 1, false, 3},
    {{NonZero, 0x00, 0x00, 0x00}, "UTF-32 Little Endian", 4, false, 0},
    {{NonZero, 0x00, NonZero, 0x00}, "UTF-16 Little Endian", 2, false, 0},
    {{Any, Any, Any, Any}, "", 1, false, 0},
}};

bool Fits(int wanted, std::uint8_t byte) {
    return wanted == Any || (wanted == NonZero ? byte != 0 : byte == wanted);
}

/// The first of the formats that fits; the last fits everything.
const Format& Classify(std::string_view bytes) {
    return *std::find_if(Formats.begin(), Formats.end(), [&](const Format& format) {
        return std::equal(
            format.FirstBytes.begin(), format.FirstBytes.end(), bytes.begin(),
            [](int wanted, char byte) { return Fits(wanted, static_cast<std::uint8_t>(byte)); });
    });
}

/// The whole units among the bytes.
template <class Unit>
std::basic_string<Unit> AssembleUnits(std::string_view bytes, bool bigEndian) {
    std::basic_string<Unit> units(bytes.size() / sizeof(Unit), Unit());
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t unit = 0;
        for (std::size_t byte = 0; byte < sizeof(Unit); ++byte) {
            const std::size_t place = bigEndian ? byte : sizeof(Unit) - 1 - byte;
            unit = unit << 8 | static_cast<std::uint8_t>(bytes[i * sizeof(Unit) + place]);
        }
        units[i] = static_cast<Unit>(unit);
    }
    return units;
}

std::string ToUtf8(std::string bytes, const Format& format) {
    bytes.erase(0, format.MarkSize);
    switch (format.UnitSize) {
    case 2:
        return Utf8FromUtf16(AssembleUnits<char16_t>(bytes, format.BigEndian));
    case 4:
        return Utf8FromUtf32(AssembleUnits<char32_t>(bytes, format.BigEndian));
    default:
        return bytes;
    }
}

/// Fills `bytes` with the file; false when it cannot be read.
bool ReadWhole(std::FILE* file, std::string& bytes) {
    // Some systems let a directory be opened, and only reading from it fails. Its size means
    // nothing, so reading is tried first.
    if (std::fgetc(file) == EOF && std::ferror(file) != 0) {
        return false;
    }
    if (std::fseek(file, 0, SEEK_END) != 0) {
        return false;
    }
    const long size = std::ftell(file);
    if (size < 0 || std::fseek(file, 0, SEEK_SET) != 0) {
        return false;
    }
    bytes.resize(static_cast<std::size_t>(size));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return std::ferror(file) == 0;
}

} // namespace

std::optional<std::string> LoadSourceText(const std::string& path,
                                          std::vector<Diagnostic>& diagnostics) {
    const auto refuse = [&](const std::string& message) {
        std::cout << message << '\n';
        diagnostics.push_back({Severity::Error, 0, 0, message});
        return std::nullopt;
    };
    const FileHandle file = OpenForReading(path);
    std::string bytes;
    if (file == nullptr || !ReadWhole(file.get(), bytes)) {
        return refuse("Unable to open INI file: " + path);
    }
    if (bytes.empty()) {
        return refuse("INI file is empty!");
    }
    if (bytes.size() < SmallestFile) {
        return refuse("INI file cannot be smaller than " + std::to_string(SmallestFile) +
                      " bytes! (Size in bytes: " + std::to_string(bytes.size()) + ")");
    }

    const Format& format = Classify(bytes);
    if (!format.Name.empty()) {
        std::cout << "INI file starts with " << format.Name
                  << " BOM! Please note that by default the BOM will be skipped, and removed in "
                     "case the INI file gets saved and the BOM was not specified!\n";
    }
    return ToUtf8(std::move(bytes), format);
}

} // namespace velINI::Internal
