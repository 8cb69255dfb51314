#include "player/Workers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace Wirefall {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// A worker leaves its reports in a file without a name, as bytes that the same program reads again.

template <typename Value>
void Put(std::FILE* file, const Value* values, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<Value>);
    if (std::fwrite(values, sizeof(Value), count, file) != count) {
        throw std::runtime_error("The reports cannot be written");
    }
}

template <typename Value>
void Get(std::FILE* file, Value* values, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<Value>);
    if (std::fread(values, sizeof(Value), count, file) != count) {
        throw std::runtime_error("A worker has not come back with its reports");
    }
}

struct RunHeader {
    std::uint32_t Seed;
    RunEnd End;
    std::int32_t Score;
    std::size_t Levels;
};

void PutReport(std::FILE* file, const RunReport& report) {
    const RunHeader header = {report.Seed, report.End, report.Score, report.Levels.size()};
    Put(file, &header, 1);
    for (const LevelReport& level : report.Levels) {
        const LevelFigures& figures = level;
        Put(file, &figures, 1);
        const std::size_t seconds = level.InfectionBySecond.size();
        Put(file, &seconds, 1);
        Put(file, level.InfectionBySecond.data(), seconds);
    }
}

RunReport GetReport(std::FILE* file) {
    RunHeader header{};
    Get(file, &header, 1);
    RunReport report{header.Seed, header.End, header.Score, {}};
    report.Levels.resize(header.Levels);
    for (LevelReport& level : report.Levels) {
        LevelFigures figures;
        Get(file, &figures, 1);
        static_cast<LevelFigures&>(level) = figures;
        std::size_t seconds = 0;
        Get(file, &seconds, 1);
        level.InfectionBySecond.resize(seconds);
        Get(file, level.InfectionBySecond.data(), seconds);
    }
    return report;
}

// Never returns: the process ends with its work.
[[noreturn]] void Work(const std::vector<MatchSettings>& matches, std::size_t worker,
                       std::size_t jobs, std::FILE* file) {
    int code = EXIT_FAILURE;
    try {
        for (std::size_t match = worker; match < matches.size(); match += jobs) {
            PutReport(file, PlayMatch(matches[match]));
        }
        code = std::fflush(file) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "%s\n", error.what()));
    }
    _exit(code);
}

} // namespace

std::vector<RunReport> PlayMatches(const std::vector<MatchSettings>& matches, std::size_t jobs) {
    jobs = std::max<std::size_t>(jobs, 1);
    std::vector<File> files;
    std::vector<pid_t> workers;
    for (std::size_t worker = 0; worker < jobs; ++worker) {
        files.emplace_back(std::tmpfile());
        const pid_t child = files.back() == nullptr ? -1 : fork();
        if (child == 0) {
            Work(matches, worker, jobs, files.back().get());
        }
        workers.push_back(child);
    }
    bool allWell = true;
    for (const pid_t worker : workers) {
        int status = 0;
        allWell = worker > 0 && waitpid(worker, &status, 0) == worker && WIFEXITED(status) &&
                  WEXITSTATUS(status) == EXIT_SUCCESS && allWell;
    }
    if (!allWell) {
        throw std::runtime_error("A worker has failed");
    }
    for (const File& file : files) {
        std::rewind(file.get());
    }
    std::vector<RunReport> reports;
    for (std::size_t match = 0; match < matches.size(); ++match) {
        reports.push_back(GetReport(files[match % jobs].get()));
    }
    return reports;
}

} // namespace Wirefall
