#include "support/TestFiles.h"

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

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

std::string ReadFileText(const std::filesystem::path& path) { return TextOf(ReadFileBytes(path)); }

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

FullDisk::FullDisk(std::size_t limit) {
    // Without this the kernel ends a process that writes too much.
    std::signal(SIGXFSZ, SIG_IGN); // NOLINT(cert-err33-c)
    getrlimit(RLIMIT_FSIZE, &Before);
    const rlimit full = {limit, Before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
}

FullDisk::~FullDisk() { setrlimit(RLIMIT_FSIZE, &Before); }

bool HoldsInChild(const std::function<bool()>& check) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(check() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}

bool HoldsUnprivileged(const std::function<bool()>& check) {
    constexpr uid_t Nobody = 65534;
    return HoldsInChild([&check] {
        const bool dropped = geteuid() != 0 || (setresgid(Nobody, Nobody, Nobody) == 0 &&
                                                setresuid(Nobody, Nobody, Nobody) == 0);
        return dropped && check();
    });
}

} // namespace Wirefall::Testing
