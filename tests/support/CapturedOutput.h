#pragma once

// What the program prints, kept from the screen and given to the test: everything that reaches the
// standard output or the standard error output, by whatever way, for as long as the object lives.
// When the test has failed by the end of that, it is printed after all.

#include <cstdio>
#include <string>

namespace Wirefall::Testing {

/// Of two that catch the same, the later one gets it until it ends.
class CapturedStream {
public:
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;

    /// What has been printed so far.
    std::string Text() const;

protected:
    /// Throws std::runtime_error when there is no place for it.
    explicit CapturedStream(std::FILE* stream);
    ~CapturedStream();

private:
    std::FILE* Stream;
    std::FILE* Caught;
    int Former; ///< Where the stream led to before.
};

class CapturedOutput : public CapturedStream {
public:
    CapturedOutput() : CapturedStream(stdout) {}
};

class CapturedErrors : public CapturedStream {
public:
    CapturedErrors() : CapturedStream(stderr) {}
};

} // namespace Wirefall::Testing
