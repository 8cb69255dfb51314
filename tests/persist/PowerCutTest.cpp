// What a loss of power leaves of a run. The disk is a model: it has of each file what was last
// forced to it. What has changed since may be there or not, and a file that was written over in
// place may have lost its old content without having got its new one, as journalling file systems
// that do not watch out for that leave it. The calls of fsync are watched by the linker's --wrap.

#include "base/Clock.h"
#include "game/GameApp.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::function<void(int descriptor)> OnSync;

} // namespace

// NOLINTBEGIN(readability-identifier-naming): the linker's names
extern "C" {
int __real_fsync(int descriptor);
int __wrap_fsync(int descriptor) {
    if (OnSync) {
        OnSync(descriptor);
    }
    return __real_fsync(descriptor);
}
}
// NOLINTEND(readability-identifier-naming)

namespace Wirefall {
namespace {

namespace fs = std::filesystem;
using Testing::Bytes;

/// What of the user's folder is on the disk for good.
class Disk {
public:
    explicit Disk(fs::path folder) : Folder(std::move(folder)) {
        OnSync = [this](int descriptor) { Sync(descriptor); };
    }
    Disk(const Disk&) = delete;
    Disk(Disk&&) = delete;
    Disk& operator=(const Disk&) = delete;
    Disk& operator=(Disk&&) = delete;
    ~Disk() { OnSync = nullptr; }

    int Syncs = 0;

    /// Lets the power fail in this process when it forces something to the disk for that time from
    /// now, just before it is done. The process ends there.
    void CutPowerAtSync(int count, MersenneTwister& random) {
        OnSync = [this, last = Syncs + count, &random](int descriptor) {
            if (Syncs == last) {
                CutPower(random);
                _exit(EXIT_SUCCESS);
            }
            Sync(descriptor);
        };
    }

    /// Puts the folder into a state that it can be in when the power comes back.
    void CutPower(MersenneTwister& random) {
        std::map<std::string, Bytes> found;
        for (const auto& [name, file] : Union(Names(), SyncedNames)) {
            const bool isSafe = Synced.contains(file.Inode) && Synced.at(file.Inode) == file.Now;
            if (isSafe || UniformDraw(random, 0, 2) == 0) {
                found[name] = file.Now;
            } else {
                found[name] = {}; // The old content is gone, and the new one has not come.
            }
        }
        fs::remove_all(Folder);
        fs::create_directories(Folder);
        for (const auto& [name, content] : found) {
            Testing::WriteFileBytes(Folder / name, content);
        }
        Settle();
    }

    /// All that there is now is on the disk for good.
    void Settle() {
        SyncedNames = Names();
        Synced.clear();
        for (const auto& [name, file] : SyncedNames) {
            Synced[file.Inode] = file.Now;
        }
    }

private:
    struct File {
        ino_t Inode = 0;
        Bytes Now;
    };
    using Listing = std::map<std::string, File>;

    Listing Names() const {
        Listing names;
        for (const auto& entry : fs::directory_iterator(Folder)) {
            struct stat info = {};
            EXPECT_EQ(stat(entry.path().c_str(), &info), 0);
            names[entry.path().filename().string()] = {info.st_ino,
                                                       Testing::ReadFileBytes(entry.path())};
        }
        return names;
    }

    // A name that was removed or changed since the folder was forced may still be the old one; to
    // have the old one back is no loss, so here the new ones count.
    static Listing Union(Listing now, const Listing& synced) {
        for (const auto& [name, file] : synced) {
            now.try_emplace(name, file);
        }
        return now;
    }

    void Sync(int descriptor) {
        ++Syncs;
        struct stat info = {};
        ASSERT_EQ(fstat(descriptor, &info), 0);
        if (S_ISDIR(info.st_mode)) {
            SyncedNames = Names();
            return;
        }
        for (const auto& [name, file] : Names()) {
            if (file.Inode == info.st_ino) {
                Synced[file.Inode] = file.Now;
            }
        }
    }

    fs::path Folder;
    Listing SyncedNames;
    std::map<ino_t, Bytes> Synced;
};

class PowerCut : public testing::Test {
protected:
    PowerCut() {
        FreezeClock(0);
        User.Create();
        Testing::StartSampleRun(3, 5, 50);
        EXPECT_FALSE(LoadSaveState(App)) << "a first start";
        App.HasSavedRun = true;
    }
    PowerCut(const PowerCut&) = delete;
    PowerCut(PowerCut&&) = delete;
    PowerCut& operator=(const PowerCut&) = delete;
    PowerCut& operator=(PowerCut&&) = delete;
    ~PowerCut() override { ResumeClock(); }

    // One second of play: eight ticks, and a save that is asked for as the frame loop does.
    void PlaySecond() {
        for (int tick = 0; tick < 8; ++tick) {
            Player.PlayTick();
        }
        RequestSave(App, 0.8F);
        Ms += 1000;
        FreezeClock(Ms);
        SaveTick(App, 1.0F);
        Played.push_back(GetRevision());
    }

    // How many seconds of play the next start has lost; all of them without a run.
    std::size_t SecondsLost() const {
        GameApp next;
        LoadSaveState(next);
        if (!next.HasSavedRun) {
            return Played.size();
        }
        const auto after = std::ranges::upper_bound(Played, GetRevision());
        return static_cast<std::size_t>(Played.end() - after);
    }

    Testing::UserFolder User;
    GameApp App;
    Testing::RandomPlayer Player{7};
    std::uint64_t Ms = 0;
    std::vector<std::uint64_t> Played; ///< The revision after each second.
};

TEST_F(PowerCut, CostsHalfAMinuteAtMostAndNeverTheRun) {
    MersenneTwister random;
    SeedEngine(random, 30);
    Disk disk(User.Path());
    const Simulation start = LiveSimulation();
    for (std::uint32_t cut = 0; cut < 25; ++cut) {
        const std::uint32_t seconds = UniformDraw(random, 1, 120);
        for (std::uint32_t second = 0; second < seconds; ++second) {
            PlaySecond();
        }
        const Simulation before = LiveSimulation();
        disk.CutPower(random);
        EXPECT_LE(SecondsLost(), 30U) << "cut " << cut << " after " << seconds << " seconds";
        LiveSimulation() = before;
        Played.clear();
        LoadSaveState(App);
        Played.push_back(GetRevision());
    }
    EXPECT_NE(start.Revision, LiveSimulation().Revision);
}

TEST_F(PowerCut, CostsNothingOfWhatWasSavedAtOnce) {
    MersenneTwister random;
    SeedEngine(random, 31);
    Disk disk(User.Path());
    for (int cut = 0; cut < 25; ++cut) {
        PlaySecond();
        PlaySecond();
        RequestSave(App, 0.0F); // As a level that is complete does.
        SaveTick(App, 0.0F);
        disk.CutPower(random);
        EXPECT_EQ(SecondsLost(), 0U) << cut;
    }
}

TEST_F(PowerCut, InTheMiddleOfASaveCostsNoRun) {
    constexpr int MoreThanASaveNeeds = 8;
    MersenneTwister random;
    SeedEngine(random, 33);
    Disk disk(User.Path());
    for (int round = 0; round < 10; ++round) {
        for (int sync = 0; sync < MoreThanASaveNeeds; ++sync) {
            PlaySecond();
            PlaySecond();
            const Simulation before = LiveSimulation();
            Testing::HoldsInChild([&] {
                disk.CutPowerAtSync(sync, random);
                RequestSave(App, 0.0F);
                SaveTick(App, 0.0F);
                return true;
            });
            disk.Settle();
            UniformDraw(random, 0, 1); // The child has drawn from a copy.
            GameApp next;
            EXPECT_TRUE(LoadSaveState(next));
            EXPECT_TRUE(next.HasSavedRun) << "round " << round << ", at sync " << sync;
            LiveSimulation() = before;
        }
    }
}

TEST_F(PowerCut, CostsNothingAfterTheEndOfTheProgram) {
    MersenneTwister random;
    SeedEngine(random, 32);
    Disk disk(User.Path());
    PlaySecond();
    PlaySecond();
    FinishSaving(App);
    disk.CutPower(random);
    EXPECT_EQ(SecondsLost(), 0U);
}

TEST_F(PowerCut, KeepsTheDiskQuietWhileNothingIsSaved) {
    const Disk disk(User.Path());
    PlaySecond();
    const int first = disk.Syncs;
    EXPECT_GT(first, 0) << "the first save of a session is forced";
    for (int second = 0; second < 20; ++second) {
        PlaySecond();
    }
    EXPECT_EQ(disk.Syncs, first) << "those in between are not";
    Ms += 600000;
    FreezeClock(Ms);
    SaveTick(App, 600.0F);
    EXPECT_EQ(disk.Syncs, first) << "nothing has been saved since";
    FinishSaving(App);
    EXPECT_GT(disk.Syncs, first) << "the last one is, at the end";
    const int last = disk.Syncs;
    FinishSaving(App);
    EXPECT_EQ(disk.Syncs, last);
}

TEST_F(PowerCut, OfARunThatWasGivenUpDoesNotBringItBack) {
    PlaySecond();
    App.HasSavedRun = false;
    RequestSave(App, 0.0F);
    SaveTick(App, 0.0F);
    Testing::WriteFileBytes(User.File("SaveState.bin"), {});
    EXPECT_EQ(SecondsLost(), Played.size()) << "the empty save was kept as well";
}

TEST_F(PowerCut, IsNoReasonToBringBackARunThatTheUserRemoved) {
    PlaySecond();
    fs::remove(User.File("SaveState.bin"));
    EXPECT_EQ(SecondsLost(), Played.size());
    EXPECT_TRUE(Testing::NamesIn(User.Path()).empty());
}

} // namespace
} // namespace Wirefall
