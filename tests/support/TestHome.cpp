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
    for (const auto& [name, value] : std::initializer_list<std::pair<const char*, std::string>>{
             {"XDG_DATA_HOME", Path.string()},
             {"SDL_VIDEO_DRIVER", "dummy"},
             {"SDL_AUDIO_DRIVER", "dummy"},
             {"SDL_RENDER_DRIVER", "software"},
         }) {
        Variables.push_back(std::make_unique<ScopedVariable>(name, value));
    }
}

TestHome::~TestHome() {
    std::error_code ignored;
    std::filesystem::remove_all(Path, ignored);
}

ScopedVariable::ScopedVariable(const char* name, const std::string& value) : Name(name) {
    if (const char* const before = std::getenv(name)) {
        Before = before;
    }
    // SDL keeps a copy of the environment of its own.
    setenv(name, value.c_str(), 1);
    SDL_SetEnvironmentVariable(SDL_GetEnvironment(), name, value.c_str(), true);
}

ScopedVariable::~ScopedVariable() {
    if (Before) {
        setenv(Name.c_str(), Before->c_str(), 1);
        SDL_SetEnvironmentVariable(SDL_GetEnvironment(), Name.c_str(), Before->c_str(), true);
    } else {
        unsetenv(Name.c_str());
        SDL_UnsetEnvironmentVariable(SDL_GetEnvironment(), Name.c_str());
    }
}

} // namespace Wirefall::Testing
