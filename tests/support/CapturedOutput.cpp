#include "support/CapturedOutput.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <unistd.h>

namespace Wirefall::Testing {

CapturedStream::CapturedStream(std::FILE* stream)
    : Stream(stream), Caught(std::tmpfile()), Former(dup(fileno(stream))) {
    static_cast<void>(std::fflush(Stream));
    if (Caught == nullptr || Former < 0 || dup2(fileno(Caught), fileno(Stream)) < 0) {
        throw std::runtime_error("What is printed cannot be caught");
    }
}

CapturedStream::~CapturedStream() {
    const std::string text = testing::Test::HasFailure() ? Text() : std::string();
    static_cast<void>(std::fflush(Stream));
    dup2(Former, fileno(Stream));
    close(Former);
    static_cast<void>(std::fclose(Caught));
    static_cast<void>(std::fputs(text.c_str(), Stream));
}

std::string CapturedStream::Text() const {
    static_cast<void>(std::fflush(Stream));
    std::string text;
    std::array<char, 4096> part{};
    // The place in the file is the stream's; reading must leave it where it is.
    for (;;) {
        const ssize_t size =
            pread(fileno(Caught), part.data(), part.size(), static_cast<off_t>(text.size()));
        if (size <= 0) {
            return text;
        }
        text.append(part.data(), static_cast<std::size_t>(size));
    }
}

} // namespace Wirefall::Testing
