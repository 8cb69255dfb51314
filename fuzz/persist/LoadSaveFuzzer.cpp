// Loads arbitrary bytes as SaveState.bin through the real storage. What comes of it as a run must
// come back unchanged when it is saved and loaded again, and can be played on.

#include "game/GameApp.h"
#include "persist/RunConversion.h"
#include "persist/SaveState.h"
#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"

#include <SDL3/SDL_stdinc.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace Wirefall;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// In memory where the system has such a place, because every run of the fuzzer writes.
class StorageFolder {
public:
    StorageFolder() {
        const fs::path shared = "/dev/shm";
        const fs::path parent = fs::is_directory(shared) ? shared : fs::temp_directory_path();
        Home = parent / ("wirefall-fuzz-" + std::to_string(getpid()));
        fs::create_directories(Home / "Velkor" / "Wirefall");
        SDL_SetEnvironmentVariable(SDL_GetEnvironment(), "XDG_DATA_HOME", Home.c_str(), true);
    }
    StorageFolder(const StorageFolder&) = delete;
    StorageFolder& operator=(const StorageFolder&) = delete;
    ~StorageFolder() { fs::remove_all(Home); }

    fs::path SaveFile() const { return Home / "Velkor" / "Wirefall" / "SaveState.bin"; }

private:
    fs::path Home;
};

void Play() {
    for (const std::uint32_t command : {44U, 82U, 8U, 44U, 20U}) {
        ApplyRunCommand(command);
        AdvanceSimulation(MaxFrameMs);
        BuildRunSnapshot();
    }
    if (IsLevelComplete()) {
        AdvanceLevel();
        AdvanceSimulation(StepMs);
    }
}

// The document of the live run, after a save and a load.
SaveDocument Reloaded() {
    GameApp app;
    app.HasSavedRun = true;
    Require(WriteSaveState(app));
    Require(LoadSaveState(app) && app.HasSavedRun);
    return MakeSaveDocument();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StorageFolder folder;
    std::ofstream(folder.SaveFile(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    LiveSimulation() = Simulation{};
    GameApp app;
    LoadSaveState(app);
    Require(app.HasSavedRun == LiveSimulation().RunInitialised);
    if (app.HasSavedRun) {
        // The first of these loads still takes the marks of spent tiles away.
        const SaveDocument once = Reloaded();
        Require(Reloaded() == once);
        Play();
    }
    return 0;
}
