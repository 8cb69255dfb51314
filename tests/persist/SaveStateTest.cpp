#include "persist/SaveState.h"

#include "game/GameApp.h"
#include "persist/RunConversion.h"
#include "persist/TaggedTree.h"
#include "sim/Simulation.h"
#include "storage/Storage.h"
#include "support/CapturedLog.h"
#include "support/CapturedOutput.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"

#include <gtest/gtest.h>

namespace Wirefall {
namespace {

using Testing::Bytes;
using Testing::FromHex;
using Testing::NamesIn;
using Testing::ReadFileBytes;
using Testing::StreamOf;
using Testing::TaggedTree;
using Testing::TreeOf;
using Testing::WriteFileBytes;

using Names = std::vector<std::string>;

const Bytes EmptySave = FromHex("0A"
                                "08 0D000000 466F726D617456657273696F6E 03 01000000"
                                "08 0B000000 48617352756E5374617465 02 00"
                                "08 08000000 52756E5374617465 0A 01"
                                "01");

TEST(RequestSave, NeverPutsAWriteOff) {
    GameApp app;
    RequestSave(app, 0.8F);
    EXPECT_TRUE(app.SaveDirty);
    EXPECT_EQ(app.SaveDelaySeconds, 0.8F);
    RequestSave(app, 0.3F);
    EXPECT_EQ(app.SaveDelaySeconds, 0.3F);
    RequestSave(app, 0.8F);
    EXPECT_EQ(app.SaveDelaySeconds, 0.3F);
}

TEST(RequestSave, AtOnceMeansAtOnce) {
    for (const float delay : {0.0F, -1.0F}) {
        GameApp app;
        RequestSave(app, 0.8F);
        RequestSave(app, delay);
        EXPECT_EQ(app.SaveDelaySeconds, 0.0F);
        EXPECT_TRUE(app.SaveDirty);
    }
}

class Saving : public testing::Test {
protected:
    Saving() { LiveSimulation() = Simulation{}; }

    bool SaveExists() const { return std::filesystem::exists(User.File("SaveState.bin")); }
    Bytes Saved() const { return ReadFileBytes(User.File("SaveState.bin")); }
    void PutSave(const Bytes& content) const {
        User.Create();
        WriteFileBytes(User.File("SaveState.bin"), content);
    }

    Testing::UserFolder User;
    GameApp App;
};

TEST_F(Saving, HappensWhenTheDelayHasGoneBy) {
    RequestSave(App, 0.5F);
    SaveTick(App, 0.25F);
    EXPECT_FALSE(SaveExists());
    EXPECT_EQ(App.SaveDelaySeconds, 0.25F);
    SaveTick(App, -5.0F);
    EXPECT_EQ(App.SaveDelaySeconds, 0.25F) << "Time does not run backwards";
    SaveTick(App, 0.25F);
    EXPECT_TRUE(SaveExists());
    EXPECT_FALSE(App.SaveDirty);
    EXPECT_EQ(App.SaveDelaySeconds, 0.0F);
}

TEST_F(Saving, HappensAtOnceWhenItIsDue) {
    RequestSave(App, 0.0F);
    SaveTick(App, 0.0F);
    EXPECT_TRUE(SaveExists());
}

TEST_F(Saving, HappensOnlyWhenAskedFor) {
    SaveTick(App, 100.0F);
    EXPECT_FALSE(SaveExists());
}

TEST_F(Saving, IsTriedAgainASecondAfterEachFailureAndLoggedEachTime) {
    std::filesystem::create_directories(User.File("SaveState.bin"));
    const Testing::CapturedLog log;
    const std::string message = "Failed to write save state: SaveState.bin";
    RequestSave(App, 0.0F);
    SaveTick(App, 0.0F);
    EXPECT_EQ(log.Messages(), Names{message});
    EXPECT_TRUE(App.SaveDirty);
    EXPECT_EQ(App.SaveDelaySeconds, 1.0F);
    SaveTick(App, 0.5F);
    EXPECT_EQ(log.Messages().size(), 1U);
    SaveTick(App, 0.5F);
    EXPECT_EQ(log.Messages(), (Names{message, message}));
    EXPECT_EQ(App.SaveDelaySeconds, 1.0F);

    std::filesystem::remove(User.File("SaveState.bin"));
    SaveTick(App, 1.0F);
    EXPECT_FALSE(App.SaveDirty);
    EXPECT_EQ(Saved(), EmptySave);
    EXPECT_EQ(log.Messages().size(), 2U);
}

TEST_F(Saving, WithoutARunWritesTheEmptyDocument) {
    EXPECT_TRUE(WriteSaveState(App));
    EXPECT_EQ(Saved(), EmptySave);
    EXPECT_EQ(EmptySave.size(), 58U);
    EXPECT_EQ(NamesIn(User.Path()), Names{"SaveState.bin"});
    EXPECT_FALSE(LiveSimulation().RunInitialised);
}

TEST_F(Saving, StartsARunWhereThereIsNone) {
    App.HasSavedRun = true;
    EXPECT_TRUE(WriteSaveState(App));
    EXPECT_TRUE(LiveSimulation().RunInitialised);
    TaggedTree tree = TreeOf(Saved());
    EXPECT_EQ(std::get<std::int32_t>(tree["RunState"]["Level"].Value), 1);
}

TEST_F(Saving, LeavesNothingButTheSave) {
    App.HasSavedRun = true;
    Testing::StartSampleRun(3, 5, 200);
    EXPECT_TRUE(WriteSaveState(App));
    EXPECT_EQ(NamesIn(User.Path()), Names{"SaveState.bin"});
    EXPECT_EQ(TreeOf(Saved()).Members.size(), 3U);
}

TEST_F(Saving, WithoutAPlaceForFilesFailsAndTouchesNothing) {
    Testing::WriteFileText(User.DataHome() / "Velkor", "a file in the way");
    EXPECT_FALSE(WriteSaveState(App));
    EXPECT_EQ(NamesIn(User.DataHome()), Names{"Velkor"});
}

class Loading : public Saving {
protected:
    // Saves a run and puts another in its place, so that what is loaded can be told from what was
    // there.
    Loading() {
        App.HasSavedRun = true;
        Testing::StartSampleRun(3, 5, 200);
        Original = LiveRun();
        EXPECT_TRUE(WriteSaveState(App));
        WholeSave = Saved();
        Tree = TreeOf(WholeSave);
        PlaceOther();
    }

    void PlaceOther() {
        App = GameApp{};
        App.HasSavedRun = true;
        Testing::StartSampleRun(1, 99, 10);
        Other = LiveRun();
    }

    void ExpectRefused() {
        EXPECT_FALSE(App.HasSavedRun);
        EXPECT_EQ(LiveRun(), Other) << "The live run stays";
        EXPECT_EQ(App.LastSavedRevision, 0U);
    }

    bool LoadTree() {
        PutSave(StreamOf(Tree));
        return LoadSaveState(App);
    }

    Bytes WholeSave;
    TaggedTree Tree;
    RunState Original;
    RunState Other;
};

TEST_F(Loading, GivesTheSavedRunBack) {
    EXPECT_TRUE(LoadSaveState(App));
    EXPECT_TRUE(App.HasSavedRun);
    EXPECT_EQ(LiveRun(), Testing::Normalised(Original));
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 77U);
    EXPECT_EQ(App.LastSavedRevision, GetRevision());
    EXPECT_EQ(NamesIn(User.Path()), Names{"SaveState.bin"});
}

TEST_F(Loading, ForgetsWhatWasPendingAndShowsTheMenu) {
    App.SaveDirty = true;
    App.SaveDelaySeconds = 0.5F;
    App.LastSavedRevision = 5;
    App.PreviousSnapshotValid = true;
    App.Screen = AppScreen::Playing;
    App.MenuSelection = 3;
    App.PauseSelection = 2;
    EXPECT_TRUE(LoadSaveState(App));
    EXPECT_FALSE(App.SaveDirty);
    EXPECT_EQ(App.SaveDelaySeconds, 0.0F);
    EXPECT_FALSE(App.PreviousSnapshotValid);
    EXPECT_EQ(App.Screen, AppScreen::MainMenu);
    EXPECT_EQ(App.MenuSelection, 0);
    EXPECT_EQ(App.PauseSelection, 0);
}

TEST_F(Loading, ForgetsWhatWasPendingEvenWithoutAFile) {
    std::filesystem::remove(User.File("SaveState.bin"));
    App.SaveDirty = true;
    App.SaveDelaySeconds = 0.5F;
    App.LastSavedRevision = 5;
    App.PreviousSnapshotValid = true;
    EXPECT_FALSE(LoadSaveState(App));
    EXPECT_FALSE(App.SaveDirty);
    EXPECT_EQ(App.SaveDelaySeconds, 0.0F);
    EXPECT_FALSE(App.PreviousSnapshotValid);
    ExpectRefused();
}

TEST_F(Loading, OfADocumentWithoutARunLeavesNone) {
    PutSave(EmptySave);
    EXPECT_TRUE(LoadSaveState(App));
    ExpectRefused();
    EXPECT_FALSE(App.SaveDirty) << "Nothing needs to be written";
}

TEST_F(Loading, IsARunOnlyWhenTheFileSaysSo) {
    Tree["HasRunState"] = TaggedTree::Of(TagKind::Bool, false);
    EXPECT_TRUE(LoadTree());
    ExpectRefused();
    Tree["HasRunState"] = TaggedTree::Int32(5);
    EXPECT_TRUE(LoadTree());
    EXPECT_TRUE(App.HasSavedRun) << "A number that is not 0 says so too";
}

TEST_F(Loading, FailsWhereThereIsNothingToLoad) {
    PutSave({});
    EXPECT_FALSE(LoadSaveState(App));
    ExpectRefused();
    std::filesystem::remove(User.File("SaveState.bin"));
    std::filesystem::create_directory(User.File("SaveState.bin"));
    EXPECT_FALSE(LoadSaveState(App));
    ExpectRefused();
}

TEST_F(Loading, FailsWhenTheRootIsNoObject) {
    for (const char* const hex : {"09 01", "03 05000000", "01", "00", "FF", "20202020"}) {
        PutSave(FromHex(hex));
        EXPECT_FALSE(LoadSaveState(App)) << hex;
        ExpectRefused();
    }
}

TEST_F(Loading, WithoutAPlaceForFilesFails) {
    std::filesystem::rename(User.DataHome() / "Velkor", User.DataHome() / "Elsewhere");
    Testing::WriteFileText(User.DataHome() / "Velkor", "a file in the way");
    EXPECT_FALSE(LoadSaveState(App));
    ExpectRefused();
}

TEST_F(Loading, OfABadRunSucceedsAndLeavesTheFileForTheNextSave) {
    Tree["RunState"]["Level"] = TaggedTree::Int32(0);
    EXPECT_TRUE(LoadTree());
    ExpectRefused();
    EXPECT_FALSE(App.SaveDirty);
    EXPECT_EQ(Saved(), StreamOf(Tree));
    EXPECT_TRUE(WriteSaveState(App));
    EXPECT_EQ(Saved(), EmptySave);
}

TEST_F(Loading, OfARunThatCannotBeInstalledSucceedsWithoutOne) {
    Tree["RunState"]["Sources"].Elements.at(0)["Dir"] = TaggedTree::Int32(4);
    EXPECT_TRUE(LoadTree());
    ExpectRefused();
}

TEST_F(Loading, OfAFileCutShortAnywhereEndsWithoutARun) {
    for (std::size_t size = 1; size < WholeSave.size(); size += 101) {
        const Bytes cut(WholeSave.begin(), WholeSave.begin() + static_cast<std::ptrdiff_t>(size));
        PutSave(cut);
        EXPECT_TRUE(LoadSaveState(App)) << size;
        ASSERT_FALSE(App.HasSavedRun) << size;
        ASSERT_EQ(Saved(), cut) << "The file stays";
    }
    ExpectRefused();
}

TEST_F(Loading, LooksAtNothingBehindTheRoot) {
    Bytes longer = WholeSave;
    longer.insert(longer.end(), 100, 0xff);
    PutSave(longer);
    EXPECT_TRUE(LoadSaveState(App));
    EXPECT_TRUE(App.HasSavedRun);
}

TEST_F(Loading, IsSilent) {
    const Testing::CapturedLog log;
    const Testing::CapturedErrors errors;
    Tree["RunState"]["Level"] = TaggedTree::Int32(0);
    EXPECT_TRUE(LoadTree());
    std::filesystem::remove(User.File("SaveState.bin"));
    EXPECT_FALSE(LoadSaveState(App));
    EXPECT_EQ(log.Messages(), Names{});
    EXPECT_EQ(errors.Text(), "");
}

// What a process leaves behind that was killed while it saved: what it had staged in the temporary
// file, and a beginning of that in the file itself.
class InterruptedSave : public Loading {
protected:
    void Stage(const Bytes& content) const {
        WriteFileBytes(User.File(".SaveState.bin.tmp"), content);
    }
    Bytes Half() const {
        return {WholeSave.begin(),
                WholeSave.begin() + static_cast<std::ptrdiff_t>(WholeSave.size() / 2)};
    }
    void ExpectRecovered() {
        EXPECT_TRUE(LoadSaveState(App));
        EXPECT_TRUE(App.HasSavedRun);
        EXPECT_EQ(LiveRun(), Testing::Normalised(Original));
        EXPECT_EQ(Saved(), WholeSave) << "The write is finished";
        EXPECT_EQ(NamesIn(User.Path()), Names{"SaveState.bin"});
    }
};

TEST_F(InterruptedSave, IsFinishedWhenTheFileIsCutShort) {
    Stage(WholeSave);
    PutSave(Half());
    ExpectRecovered();
}

TEST_F(InterruptedSave, IsFinishedWhenTheFileIsEmpty) {
    Stage(WholeSave);
    PutSave({});
    ExpectRecovered();
}

TEST_F(InterruptedSave, IsFinishedWhenThereIsNoFileYet) {
    Stage(WholeSave);
    std::filesystem::remove(User.File("SaveState.bin"));
    ExpectRecovered();
}

TEST_F(InterruptedSave, OfAnEndedRunIsFinishedToo) {
    Stage(EmptySave);
    PutSave({EmptySave.begin(), EmptySave.begin() + 20});
    EXPECT_TRUE(LoadSaveState(App));
    ExpectRefused();
    EXPECT_EQ(Saved(), EmptySave);
}

TEST_F(InterruptedSave, CutOffWhileItStagedChangesNothing) {
    Stage(Half());
    ExpectRecovered();
}

TEST_F(InterruptedSave, GivesWayToAWholeFile) {
    Stage(EmptySave);
    ExpectRecovered();
}

TEST_F(InterruptedSave, IsNoHelpWhenItIsNotWholeEither) {
    Stage(Half());
    PutSave(Half());
    EXPECT_TRUE(LoadSaveState(App));
    ExpectRefused();
    EXPECT_EQ(Saved(), Half());
    EXPECT_EQ(NamesIn(User.Path()), Names{"SaveState.bin"});
}

TEST_F(InterruptedSave, StaysStagedAsLongAsItCannotBeStored) {
    Stage(WholeSave);
    std::filesystem::remove(User.File("SaveState.bin"));
    std::filesystem::create_directory(User.File("SaveState.bin"));
    EXPECT_TRUE(LoadSaveState(App));
    EXPECT_TRUE(App.HasSavedRun);
    EXPECT_EQ(ReadFileBytes(User.File(".SaveState.bin.tmp")), WholeSave);
    std::filesystem::remove(User.File("SaveState.bin"));
    PlaceOther();
    ExpectRecovered();
}

TEST_F(Saving, OfAFileThatIsTooLargeToReadLeavesItThere) {
    PutSave(EmptySave);
    std::filesystem::resize_file(User.File("SaveState.bin"), MaxFileBytes + 1);
    EXPECT_TRUE(LoadSaveState(App)) << "False would have it replaced";
    EXPECT_FALSE(App.HasSavedRun);
    EXPECT_EQ(std::filesystem::file_size(User.File("SaveState.bin")), MaxFileBytes + 1);
}

} // namespace
} // namespace Wirefall
