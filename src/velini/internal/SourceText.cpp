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

// What a byte at the start of a file must be, apart from one certain value.
constexpr int Any = -1;
constexpr int NonZero = -2;

// How the text of a file is stored. The name is what the user is told; plain bytes have none.
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

// The first of the formats that fits; the last fits everything.
const Format& Classify(std::string_view bytes) {
    return *std::find_if(Formats.begin(), Formats.end(), [&](const Format& format) {
        return std::equal(
            format.FirstBytes.begin(), format.FirstBytes.end(), bytes.begin(),
            [](int wanted, char byte) { return Fits(wanted, static_cast<std::uint8_t>(byte)); });
    });
}

// The whole units among the bytes.
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

// The size of the file; nothing when it cannot be read.
std::optional<std::size_t> SizeOf(std::FILE* file) {
    // Some systems let a directory be opened, and only reading from it fails. Its size means
    // nothing, so reading is tried first.
    if (std::fgetc(file) == EOF && std::ferror(file) != 0) {
        return std::nullopt;
    }
    if (std::fseek(file, 0, SEEK_END) != 0) {
        return std::nullopt;
    }
    const long size = std::ftell(file);
    if (size < 0 || std::fseek(file, 0, SEEK_SET) != 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(size);
}

// Behind the last line feed that certainly ends a line; 0 when there is none. With a backslash in
// front of it, it can be a part of the line.
std::size_t LastLineEnd(std::string_view text) {
    std::size_t end = text.rfind('\n');
    while (end != std::string_view::npos && end != 0 && text[end - 1] == '\\') {
        end = text.rfind('\n', end - 1);
    }
    return end == std::string_view::npos ? 0 : end + 1;
}

// The file in parts that end where a line ends. False when it cannot be read.
bool ReadParts(std::FILE* file, std::size_t size, std::vector<std::string>& parts) {
    constexpr std::size_t PartSize = std::size_t{1} << 20;
    std::string carried; // from the last part, the beginning of a line
    while (true) {
        std::string part = std::move(carried);
        const std::size_t begin = part.size();
        // A line of more than one part makes longer ones, so that its beginning is not carried on
        // for ever.
        const std::size_t room = std::min(PartSize + begin, size);
        part.resize(begin + room);
        const std::size_t count = std::fread(part.data() + begin, 1, room, file);
        part.resize(begin + count);
        if (count < room || count == size) {
            parts.push_back(std::move(part));
            return std::ferror(file) == 0;
        }
        const std::size_t end = LastLineEnd(part);
        if (end < SmallestFile) { // too short to tell an encoding by
            carried = std::move(part);
            continue;
        }
        carried = part.substr(end);
        part.resize(end);
        parts.push_back(std::move(part));
    }
}

} // namespace

std::optional<std::vector<std::string>> LoadSourceText(const std::string& path,
                                                       std::vector<Diagnostic>& diagnostics) {
    const auto refuse = [&](const std::string& message) {
        std::cout << message << '\n';
        diagnostics.push_back({Severity::Error, 0, 0, message});
        return std::nullopt;
    };
    const FileHandle file = OpenForReading(path);
    const std::optional<std::size_t> size = file == nullptr ? std::nullopt : SizeOf(file.get());
    std::vector<std::string> parts;
    if (!size || !ReadParts(file.get(), *size, parts)) {
        return refuse("Unable to open INI file: " + path);
    }
    if (parts.front().empty()) {
        return refuse("INI file is empty!");
    }
    if (parts.size() == 1 && parts.front().size() < SmallestFile) {
        return refuse("INI file cannot be smaller than " + std::to_string(SmallestFile) +
                      " bytes! (Size in bytes: " + std::to_string(parts.front().size()) + ")");
    }

    const Format& format = Classify(parts.front());
    if (!format.Name.empty()) {
        std::cout << "INI file starts with " << format.Name
                  << " BOM! Please note that by default the BOM will be skipped, and removed in "
                     "case the INI file gets saved and the BOM was not specified!\n";
    }
    if (format.UnitSize == 1) {
        parts.front().erase(0, format.MarkSize);
        return parts;
    }
    std::string bytes;
    for (std::string& part : parts) {
        bytes += part;
        std::string().swap(part);
    }
    return std::vector<std::string>{ToUtf8(std::move(bytes), format)};
}

} // namespace velINI::Internal
