#include "support/TestHome.h"

#include <SDL3/SDL_stdinc.h>

#include <cstdlib>
#include <initializer_list>
#include <stdexcept>
#include <utility>

namespace Wirefall::Testing {

TestHome::TestHome() {
    std::string pattern = (std::filesystem::temp_directory_path() / "wirefall-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("No temporary folder can be made");
    }
    Path = pattern;
    // As variables, not as hints: SDL forgets its hints when it quits.
    for (const auto& [name, value] :
         std::initializer_list<std::pair<const char*, std::optional<std::string>>>{
             {"XDG_DATA_HOME", Path.string()},
             {"SDL_VIDEO_DRIVER", "dummy"},
             {"SDL_AUDIO_DRIVER", "dummy"},
             {"SDL_RENDER_DRIVER", "software"},
             {"WIREFALL_VERBOSE_LOG", std::nullopt},
         }) {
        Variables.push_back(std::make_unique<ScopedVariable>(name, value));
    }
}

TestHome::~TestHome() {
    std::error_code ignored;
    std::filesystem::remove_all(Path, ignored);
}

namespace {

// SDL keeps a copy of the environment of its own.
void SetVariable(const char* name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name, value->c_str(), 1);
        SDL_SetEnvironmentVariable(SDL_GetEnvironment(), name, value->c_str(), true);
    } else {
        unsetenv(name);
        SDL_UnsetEnvironmentVariable(SDL_GetEnvironment(), name);
    }
}

} // namespace

ScopedVariable::ScopedVariable(const char* name, const std::optional<std::string>& value)
    : Name(name) {
    if (const char* const before = std::getenv(name)) {
        Before = before;
    }
    SetVariable(name, value);
}

ScopedVariable::~ScopedVariable() { SetVariable(Name.c_str(), Before); }

} // namespace Wirefall::Testing
