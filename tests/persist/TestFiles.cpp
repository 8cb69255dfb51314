#include "persist/TestFiles.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Wirefall::Testing {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "wirefall-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("No temporary folder could be made");
    }
    Folder = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

Bytes BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

std::string TextOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

Bytes ReadFileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFileBytes(const std::filesystem::path& path, const Bytes& bytes) {
    WriteFileText(path, TextOf(bytes));
}

void WriteFileText(const std::filesystem::path& path, std::string_view text) {
    std::ofstream file(path, std::ios::binary);
    file << text << std::flush;
    if (!file) {
        throw std::runtime_error("Could not write " + path.string());
    }
}

std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

Bytes FromHex(std::string_view hex) {
    Bytes bytes;
    std::string digits;
    for (const char c : hex) {
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) {
            digits += c;
        }
        if (digits.size() == 2) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits, nullptr, 16)));
            digits.clear();
        }
    }
    return bytes;
}

} // namespace Wirefall::Testing
