#include "player/KeptPlays.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace Wirefall::Testing {

namespace {

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

} // namespace

std::vector<PlayCommand> KeptPlay::Commands() const { return ParsePlay(ContentOf(File)); }

std::string KeptPlay::Trace() const {
    return ContentOf(std::filesystem::path(File).replace_extension("trace"));
}

std::vector<KeptPlay> KeptPlays() {
    std::vector<KeptPlay> plays;
    for (const auto& entry : std::filesystem::directory_iterator(WIREFALL_PLAYS_DIR)) {
        if (entry.path().extension() == ".play") {
            plays.push_back({entry.path().stem().string(), entry.path()});
        }
    }
    std::ranges::sort(plays, {}, &KeptPlay::Name);
    return plays;
}

std::string TestName(const KeptPlay& play) {
    std::string name = play.Name;
    std::ranges::replace(name, '-', '_');
    return name;
}

void PrintTo(const KeptPlay& play, std::ostream* stream) { *stream << play.Name; }

} // namespace Wirefall::Testing
