// Files that ask for too much: memory that runs out, and runs that would take for ever.

#include "game/GameApp.h"
#include "persist/Options.h"
#include "persist/RunConversion.h"
#include "persist/SaveState.h"
#include "persist/TaggedTree.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/Allocations.h"
#include "support/CapturedOutput.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace Wirefall {
namespace {

using Testing::Bytes;
using Testing::FailingAllocation;
using Testing::ReadFileBytes;
using Testing::TaggedTree;

// AddressSanitizer holds freed memory back for a while, up to 256 MB of it.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define WIREFALL_WITH_ASAN
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define WIREFALL_WITH_ASAN
#endif
#ifdef WIREFALL_WITH_ASAN
constexpr long MostKilobytes = (200L + 256) * 1024;
#else
constexpr long MostKilobytes = 200L * 1024;
#endif

class Exhaustion : public testing::Test {
protected:
    Exhaustion() {
        App.HasSavedRun = true;
        Testing::StartSampleRun(3, 5, 200);
        EXPECT_TRUE(WriteSaveState(App));
        Saved = ReadFileBytes(File());
    }
    std::filesystem::path File() const { return User.File("SaveState.bin"); }

    Testing::UserFolder User;
    GameApp App;
    Bytes Saved;
};

TEST_F(Exhaustion, WhicheverAllocationFailsTheSaveIsNotReplacedAndTheRunIsWhole) {
    Testing::StartSampleRun(1, 99, 10);
    const RunState before = LiveRun();
    bool loaded = false;
    for (std::size_t allocation = 1; !loaded; ++allocation) {
        ASSERT_LT(allocation, 10000U);
        bool result = false;
        {
            const FailingAllocation failure(allocation);
            result = LoadSaveState(App);
            loaded = !failure.HasFailed();
        }
        ASSERT_TRUE(result) << "False would have the file replaced: " << allocation;
        ASSERT_EQ(App.HasSavedRun, loaded) << allocation;
        if (!loaded) {
            ASSERT_EQ(LiveRun(), before) << allocation;
        }
        ASSERT_EQ(ReadFileBytes(File()), Saved) << allocation;
    }
    EXPECT_NE(LiveRun(), before);
}

TEST_F(Exhaustion, WhicheverAllocationFailsASaveSucceedsOrLeavesTheOldOne) {
    Testing::StartSampleRun(1, 99, 10);
    bool written = false;
    for (std::size_t allocation = 1; !written; ++allocation) {
        ASSERT_LT(allocation, 10000U);
        {
            const FailingAllocation failure(allocation);
            written = WriteSaveState(App);
        }
        ASSERT_EQ(ReadFileBytes(File()) == Saved, !written) << allocation;
        ASSERT_EQ(Testing::NamesIn(User.Path()), std::vector<std::string>{"SaveState.bin"});
    }
}

long PeakMemoryKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// How long that takes, and to draw it, is measured by bench/persist.
TEST_F(Exhaustion, TheHeaviestRunPlaysNoMoreThanAFramesTicksAtOnce) {
    GameApp app;
    ASSERT_TRUE(InstallSaveDocument(app, Testing::HeaviestDocument()));
    SetFastForward(true);
    const std::uint64_t before = GetRevision();
    AdvanceSimulation(MaxFrameMs);
    EXPECT_EQ(GetRevision() - before, std::uint64_t{MaxStepsPerCall} * FastForwardTicks);
    EXPECT_LE(LiveRun().Packets.size(), 2 * Testing::HeavyListElements);
}

// Sixteen megabytes of packets, of nested objects, and of one string.
TEST_F(Exhaustion, NoFileNeedsMuchMemory) {
    constexpr std::size_t Size = std::size_t{16} << 20;
    const auto expectModest = [this](const Bytes& content) {
        Testing::WriteFileBytes(File(), content);
        EXPECT_TRUE(LoadSaveState(App));
        EXPECT_FALSE(App.HasSavedRun);
    };
    const Bytes head = Testing::FromHex("0A 08 08000000 52756E5374617465 0A "
                                        "08 07000000 5061636B657473 09");
    const Bytes packet = Testing::StreamOf([] {
        TaggedTree tree = TaggedTree::Object();
        for (const char* const key : {"X", "Y", "Dir", "Corrupted", "DelayTicks"}) {
            tree.Add(key, TaggedTree::Int32(1));
        }
        return tree;
    }());
    Bytes packets = head;
    while (packets.size() + packet.size() <= Size) {
        packets.insert(packets.end(), packet.begin(), packet.end());
    }
    expectModest(packets);

    Bytes nested = head;
    nested.resize(Size, 0x09);
    expectModest(nested);

    Bytes text = Testing::FromHex("0A 08 F0FFFF00");
    text.resize(Size, 'x');
    expectModest(text);

    EXPECT_LT(PeakMemoryKilobytes(), MostKilobytes);
}

TEST_F(Exhaustion, NoOptionsFileNeedsMuchMemory) {
    constexpr std::size_t Size = std::size_t{256} << 10;
    for (const std::string& line : {std::string("\n"), std::string("a\n"), std::string("a[]=1\n"),
                                    std::string(";\n"), std::string("[a];\n")}) {
        std::string text = "[Options]\n";
        while (text.size() + line.size() <= Size) {
            text += line;
        }
        Testing::WriteFileText(User.File("Config.ini"), text);
        const Testing::CapturedOutput quiet;
        EXPECT_TRUE(LoadOptions(App));
    }
    EXPECT_LT(PeakMemoryKilobytes(), MostKilobytes);
}

} // namespace
} // namespace Wirefall
