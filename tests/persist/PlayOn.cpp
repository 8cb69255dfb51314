// A fresh process for ContinueTest: loads the save, plays on with the random player of the seed
// that is its first argument for as many ticks as the second says, and prints the checksum of each.

#include "game/GameApp.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"
#include "support/RunChecksum.h"
#include "support/SampleRuns.h"

#include <cstdio>
#include <string>

int main(int argc, char* argv[]) {
    if (argc != 3) {
        return 1;
    }
    Wirefall::GameApp app;
    if (!Wirefall::LoadSaveState(app) || !app.HasSavedRun) {
        return 1;
    }
    Wirefall::Testing::RandomPlayer player(static_cast<std::uint32_t>(std::stoul(argv[1])));
    const int ticks = std::stoi(argv[2]);
    for (int tick = 0; tick < ticks; ++tick) {
        player.PlayTick();
        std::printf(
            "%016llx %llu\n",
            static_cast<unsigned long long>(Wirefall::Testing::RunChecksum(Wirefall::LiveRun())),
            static_cast<unsigned long long>(Wirefall::GetRevision()));
    }
    return 0;
}
