#pragma once

// What both fuzzers need: the input as a file, and silence. Each process has files of its own, so
// that fuzzers can run side by side.

#include "velini/VelINIStream.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <ios>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unistd.h>

namespace velINI::Fuzzing {

/// Must hold of every input; what does not is a find.
inline void Require(bool condition, const char* what) {
    if (!condition) {
        static_cast<void>(std::fprintf(stderr, "Broken promise: %s\n", what));
        std::abort();
    }
}

/// A file in the temporary folder, removed when the fuzzer ends.
class ScratchFile {
public:
    explicit ScratchFile(const char* name)
        : FilePath((std::filesystem::temp_directory_path() /
                    ("velini-fuzz-" + std::to_string(getpid()) + "-" + name))
                       .string()) {}
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(FilePath, ignored);
    }

    const std::string& Path() const { return FilePath; }

private:
    std::string FilePath;
};

/// Writes the input to a file and returns its path.
inline const std::string& StoreInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile scratch("input.ini");
    std::FILE* file = std::fopen(scratch.Path().c_str(), "wb");
    Require(file != nullptr, "the temporary folder can be written to");
    Require(std::fwrite(data, 1, size, file) == size, "the input fits on the disk");
    Require(std::fclose(file) == 0, "the input can be stored");
    return scratch.Path();
}

/// What ReadFile said. Failed stands for an exception, of a documented kind.
enum class Outcome { Refused, Read, Failed };

inline Outcome Read(velINIStream& document, const std::string& path) {
    // The library's messages are of no use here.
    std::cout.setstate(std::ios::failbit);
    try {
        return document.ReadFile(path) ? Outcome::Read : Outcome::Refused;
    } catch (const std::invalid_argument&) { // an automatic index among names that are no numbers
    } catch (const std::out_of_range&) {     // or too large ones
    } catch (const std::runtime_error&) {    // an escape; a broken wide encoding is a range_error
    }
    return Outcome::Failed;
}

} // namespace velINI::Fuzzing
