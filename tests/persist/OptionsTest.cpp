#include "persist/Options.h"

#include "display/DisplayModes.h"
#include "display/LogicalCanvas.h"
#include "game/GameApp.h"
#include "storage/Storage.h"
#include "support/CapturedLog.h"
#include "support/CapturedOutput.h"
#include "support/UserFolder.h"
#include "velini/VelINIStream.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace Wirefall {
namespace {

using Testing::CapturedOutput;
using Testing::NamesIn;
using Testing::ReadFileText;
using Testing::WriteFileText;
using velINI::velINIStream;

using Names = std::vector<std::string>;

// What a first start writes.
const std::string DefaultFile = "[Options]\r\n"
                                "ControlsDevice=\"keyboard\"\r\n"
                                "Language=\"en\"\r\n"
                                "\r\n"
                                "[ControlsKeyboard]\r\n"
                                "CursorUp=\"82\"\r\n"
                                "CursorDown=\"81\"\r\n"
                                "CursorLeft=\"80\"\r\n"
                                "CursorRight=\"79\"\r\n"
                                "RotateLeft=\"20\"\r\n"
                                "RotateRight=\"8\"\r\n"
                                "Place=\"40\"\r\n"
                                "FastForward=\"225\"\r\n"
                                "\r\n"
                                "[ControlsGamepad]\r\n"
                                "CursorUp=\"11\"\r\n"
                                "CursorDown=\"12\"\r\n"
                                "CursorLeft=\"13\"\r\n"
                                "CursorRight=\"14\"\r\n"
                                "RotateLeft=\"9\"\r\n"
                                "RotateRight=\"10\"\r\n"
                                "Place=\"0\"\r\n"
                                "FastForward=\"3\"\r\n"
                                "MenuConfirm=\"0\"\r\n"
                                "MenuBack=\"1\"\r\n"
                                "\r\n"
                                "[ControlsJoystick]\r\n"
                                "CursorUp=\"-1\"\r\n"
                                "CursorDown=\"-1\"\r\n"
                                "CursorLeft=\"-1\"\r\n"
                                "CursorRight=\"-1\"\r\n"
                                "RotateLeft=\"1\"\r\n"
                                "RotateRight=\"2\"\r\n"
                                "Place=\"0\"\r\n"
                                "FastForward=\"4\"\r\n"
                                "MenuConfirm=\"0\"\r\n"
                                "MenuBack=\"3\"\r\n"
                                "\r\n"
                                "[Graphics]\r\n"
                                "ResolutionWidth=\"1280\"\r\n"
                                "ResolutionHeight=\"720\"\r\n"
                                "AspectMode=\"widescreen\"\r\n"
                                "RefreshRate=\"0\"\r\n"
                                "Fullscreen=\"1\"\r\n"
                                "VSync=\"1\"\r\n"
                                "\r\n"
                                "[Audio]\r\n"
                                "MasterVolume=\"100\"\r\n"
                                "MusicVolume=\"50\"\r\n"
                                "SfxVolume=\"75\"\r\n"
                                "MusicEnabled=\"1\"\r\n"
                                "SfxEnabled=\"1\"";

class Options : public testing::Test {
protected:
    std::string File() const { return ReadFileText(User.File("Config.ini")); }
    void PutFile(std::string_view text) const {
        User.Create();
        WriteFileText(User.File("Config.ini"), text);
    }

    // Loads a file of one section with one line.
    void Load(const std::string& section, const std::string& line) {
        PutFile("[" + section + "]\n" + line + "\n");
        EXPECT_TRUE(LoadOptions(App));
        EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
    }

    Testing::UserFolder User;
    GameApp App;
};

TEST_F(Options, OfAFirstStartAreWrittenInTheirOrder) {
    EXPECT_TRUE(SaveOptions(App));
    EXPECT_EQ(File(), DefaultFile);
    EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
}

TEST_F(Options, AreWrittenWithoutRegardToWhatTheFileHeld) {
    PutFile("; a comment\r\n[Audio]\r\nMusicVolume=\"9\"\r\nOther=\"x\"\r\n" + DefaultFile);
    EXPECT_TRUE(SaveOptions(App));
    EXPECT_EQ(File(), DefaultFile);
}

TEST_F(Options, ComeBackFromTheirFile) {
    App.ControlsDevice = ControlsDevice::Joystick;
    App.Language = "de";
    App.KeyboardBindings = {1, 2, 3, 4, 5, 6, 7, 0};
    App.GamepadBindings = {25, -1, 2, 3, 4, 5, 6, 7, 8, 9};
    App.JoystickBindings = {1000, -1, 2, 3, 4, 5, 6, 7, 8, 9};
    App.AspectMode = AspectMode::Classic4x3;
    App.ResolutionIndex = 2;
    App.RefreshRate = 144;
    App.Fullscreen = false;
    App.VSync = false;
    App.MasterVolume = 1;
    App.MusicVolume = 2;
    App.SfxVolume = 3;
    App.MusicEnabled = false;
    App.SfxEnabled = false;
    EXPECT_TRUE(SaveOptions(App));
    const std::string written = File();

    GameApp loaded;
    EXPECT_TRUE(LoadOptions(loaded));
    EXPECT_EQ(loaded.ControlsDevice, ControlsDevice::Joystick);
    EXPECT_EQ(loaded.Language, "de");
    EXPECT_EQ(loaded.KeyboardBindings, App.KeyboardBindings);
    EXPECT_EQ(loaded.GamepadBindings, App.GamepadBindings);
    EXPECT_EQ(loaded.JoystickBindings, App.JoystickBindings);
    EXPECT_EQ(loaded.AspectMode, AspectMode::Classic4x3);
    EXPECT_EQ(CurrentResolution(loaded), (Resolution{1600, 1200}));
    EXPECT_EQ(loaded.RefreshRate, 144);
    EXPECT_FALSE(loaded.Fullscreen);
    EXPECT_FALSE(loaded.VSync);
    EXPECT_EQ(loaded.MasterVolume, 1);
    EXPECT_EQ(loaded.MusicVolume, 2);
    EXPECT_EQ(loaded.SfxVolume, 3);
    EXPECT_FALSE(loaded.MusicEnabled);
    EXPECT_FALSE(loaded.SfxEnabled);
    EXPECT_TRUE(SaveOptions(loaded));
    EXPECT_EQ(File(), written);
}

TEST_F(Options, AreNotThereAtAFirstStart) {
    EXPECT_FALSE(LoadOptions(App));
    PutFile("");
    EXPECT_FALSE(LoadOptions(App));
    EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
}

TEST_F(Options, WithoutAPlaceForFilesAreNeitherLoadedNorSaved) {
    WriteFileText(User.DataHome() / "Velkor", "a file in the way");
    EXPECT_FALSE(LoadOptions(App));
    EXPECT_FALSE(SaveOptions(App));
    EXPECT_EQ(NamesIn(User.DataHome()), Names{"Velkor"});
}

TEST_F(Options, InAFileOfFiveBytesAreNotThere) {
    PutFile("[A]\n\n");
    const CapturedOutput output;
    EXPECT_FALSE(LoadOptions(App));
    EXPECT_EQ(output.Text(), "INI file cannot be smaller than 6 bytes! (Size in bytes: 5)\n");
    EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
}

TEST_F(Options, BehindASyntaxErrorKeepTheirValues) {
    PutFile("[Audio]\nMasterVolume=10\nno separator\nMusicVolume=20\n");
    const CapturedOutput quiet;
    EXPECT_TRUE(LoadOptions(App));
    EXPECT_EQ(App.MasterVolume, 10);
    EXPECT_EQ(App.MusicVolume, 50);
}

TEST_F(Options, InAFileWithABrokenEscapeAllKeepTheirValuesAndTheFileStays) {
    const std::string text = "[Audio]\nMasterVolume=10\nMusicVolume=\\xD800\\x0041\n";
    PutFile(text);
    const Testing::CapturedLog log;
    EXPECT_TRUE(LoadOptions(App)) << "This is no first start";
    EXPECT_EQ(App.MasterVolume, 100);
    EXPECT_EQ(log.Messages(), Names{"Failed to read Config.ini: Invalid code point range for "
                                    "UTF-16 low surrogate pair!"});
    EXPECT_EQ(File(), text);
    EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
}

TEST_F(Options, InMalformedWideTextAllKeepTheirValues) {
    PutFile(std::string("\xff\xfe[\0A\0]\0\x00\xd8\x41\0", 12));
    const Testing::CapturedLog log;
    const CapturedOutput quiet;
    EXPECT_TRUE(LoadOptions(App));
    EXPECT_EQ(log.Messages().size(), 1U);
    EXPECT_EQ(App.MasterVolume, 100);
}

TEST_F(Options, InAFileOfMegabytesAreRead) {
    PutFile("[Options]\r\n" + std::string(1000000, '\n') + "[Audio]\r\nMusicVolume=\"7\"\r\n");
    EXPECT_TRUE(LoadOptions(App));
    EXPECT_EQ(App.MusicVolume, 7);
    EXPECT_FALSE(App.OptionsUnread);
}

TEST_F(Options, InAFileLargerThanAnySettingsAllKeepTheirValuesAndTheFileStays) {
    PutFile(DefaultFile);
    std::filesystem::resize_file(User.File("Config.ini"), MaxFileBytes + 1);
    const Testing::CapturedLog log;
    App.MusicVolume = 9;
    EXPECT_TRUE(LoadOptions(App));
    EXPECT_EQ(App.MusicVolume, 9);
    EXPECT_TRUE(App.OptionsUnread);
    EXPECT_EQ(log.Messages(), Names{"Failed to read Config.ini: larger than any settings file"});
    EXPECT_EQ(std::filesystem::file_size(User.File("Config.ini")), MaxFileBytes + 1);
}

TEST_F(Options, AreReadOutOfMemoryWhereTheDiskIsFull) {
    PutFile("[Audio]\r\nMusicVolume=\"7\"\r\n[Graphics]\r\nVSync=\"0\"\r\n");
    {
        const Testing::FullDisk disk(0);
        EXPECT_TRUE(LoadOptions(App));
    }
    EXPECT_EQ(App.MusicVolume, 7);
    EXPECT_FALSE(App.VSync);
    EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
}

TEST_F(Options, ThatCannotBeMadeSenseOfAreNoneOnAFullDiskEither) {
    PutFile("[Audio]\nMasterVolume=10\nMusicVolume=\\xD800\\x0041\n");
    const Testing::CapturedLog log;
    const Testing::FullDisk disk(0);
    EXPECT_TRUE(LoadOptions(App)) << "This is no first start";
    EXPECT_EQ(App.MasterVolume, 100);
    EXPECT_TRUE(App.OptionsUnread);
    EXPECT_EQ(log.Messages().size(), 1U);
}

TEST_F(Options, OfALanguageThatIsHalfASurrogatePairAreSaved) {
    App.Language = "\xed\xa0\xbd";
    EXPECT_TRUE(SaveOptions(App));
    EXPECT_NE(File().find("\\xd83d"), std::string::npos) << File().substr(0, 80);
}

TEST_F(Options, OfALanguageThatIsNoTextAreNotSaved) {
    EXPECT_TRUE(SaveOptions(App));
    App.Language = "\xff";
    const Testing::CapturedLog log;
    EXPECT_FALSE(SaveOptions(App));
    EXPECT_EQ(log.Messages(), Names{"Failed to write Config.ini: Invalid UTF-8 sequence!"});
    EXPECT_EQ(File(), DefaultFile);
    EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
}

TEST_F(Options, KnowThreeDevices) {
    Load("Options", "ControlsDevice=\"GAMEPAD\"");
    EXPECT_EQ(App.ControlsDevice, ControlsDevice::Gamepad);
    Load("Options", "ControlsDevice=mouse");
    EXPECT_EQ(App.ControlsDevice, ControlsDevice::Gamepad);
    Load("Options", "ControlsDevice=");
    EXPECT_EQ(App.ControlsDevice, ControlsDevice::Gamepad);
    Load("Options", "ControlsDevice=Joystick");
    EXPECT_EQ(App.ControlsDevice, ControlsDevice::Joystick);
    Load("Options", "ControlsDevice=keyboard");
    EXPECT_EQ(App.ControlsDevice, ControlsDevice::Keyboard);
}

TEST_F(Options, TakeAnUnknownDeviceForTheKeyboard) {
    App.ControlsDevice = static_cast<ControlsDevice>(7);
    EXPECT_TRUE(SaveOptions(App));
    EXPECT_EQ(File(), DefaultFile);
    Load("Options", "Language=en");
    EXPECT_EQ(App.ControlsDevice, ControlsDevice::Keyboard);
}

TEST_F(Options, NormaliseTheLanguage) {
    Load("Options", "Language=\" DE \"");
    EXPECT_EQ(App.Language, "de");
    Load("Options", "Language=\"\"");
    EXPECT_EQ(App.Language, "de");
    Load("Options", "Language=\" \"");
    EXPECT_EQ(App.Language, "en");
    Load("Options", "Language=\"P t\tbR\"");
    EXPECT_EQ(App.Language, "ptbr");
}

TEST_F(Options, TakeKeysUpTo511) {
    for (const auto& [text, key] :
         std::initializer_list<std::pair<const char*, std::uint32_t>>{{"511", 511},
                                                                      {"512", 511},
                                                                      {"0", 0},
                                                                      {"-1", 0},
                                                                      {"7", 7},
                                                                      {"-2147483648", 7},
                                                                      {"4294967297", 7},
                                                                      {"", 7},
                                                                      {"x", 7}}) {
        Load("ControlsKeyboard", std::string("Place=\"") + text + "\"");
        EXPECT_EQ(App.KeyboardBindings[6], key) << text;
    }
}

TEST_F(Options, TakeGamepadButtonsUpTo25) {
    for (const auto& [text, button] : std::initializer_list<std::pair<const char*, std::int32_t>>{
             {"25", 25}, {"26", 25}, {"-1", -1}, {"-2", -1}, {"7", 7}}) {
        Load("ControlsGamepad", std::string("MenuBack=\"") + text + "\"");
        EXPECT_EQ(App.GamepadBindings[9], button) << text;
    }
}

TEST_F(Options, TakeEveryJoystickButton) {
    for (const auto& [text, button] :
         std::initializer_list<std::pair<const char*, std::int32_t>>{{"1000", 1000},
                                                                     {"-2", 1000},
                                                                     {"-1", -1},
                                                                     {"2147483647", 2147483647},
                                                                     {"2147483648", 2147483647}}) {
        Load("ControlsJoystick", std::string("CursorUp=\"") + text + "\"");
        EXPECT_EQ(App.JoystickBindings[0], button) << text;
    }
}

TEST_F(Options, HaveNoMenuKeysOnTheKeyboard) {
    Load("ControlsKeyboard", "MenuConfirm=\"5\"");
    EXPECT_EQ(App.KeyboardBindings, FactoryBindings::Keyboard);
}

TEST_F(Options, KnowTwoAspects) {
    Load("Graphics", "AspectMode=CLASSIC4x3");
    EXPECT_EQ(App.AspectMode, AspectMode::Classic4x3);
    EXPECT_EQ(LogicalWidth, 960);
    Load("Graphics", "AspectMode=round");
    EXPECT_EQ(App.AspectMode, AspectMode::Classic4x3);
    Load("Graphics", "AspectMode=WideScreen");
    EXPECT_EQ(App.AspectMode, AspectMode::Widescreen);
}

TEST_F(Options, FindAResolutionOfTheBuiltInTable) {
    Load("Graphics", "ResolutionWidth=2560\nResolutionHeight=1080");
    EXPECT_TRUE(App.Resolutions.empty());
    EXPECT_EQ(CurrentResolution(App), (Resolution{2560, 1080}));
    EXPECT_EQ(LogicalWidth, 1728);
}

TEST_F(Options, AddAResolutionThatIsAllowedButNotListed) {
    Load("Graphics", "ResolutionWidth=1360\nResolutionHeight=768");
    EXPECT_EQ(App.Resolutions, (std::vector<Resolution>{{1360, 768}}));
    EXPECT_EQ(CurrentResolution(App), (Resolution{1360, 768}));
    Load("Graphics", "ResolutionWidth=1920\nResolutionHeight=1200");
    EXPECT_EQ(App.Resolutions, (std::vector<Resolution>{{1360, 768}, {1920, 1200}}));
    EXPECT_EQ(App.ResolutionIndex, 1);
    EXPECT_EQ(LogicalWidth, 1152);
    Load("Graphics", "ResolutionWidth=1360\nResolutionHeight=768");
    EXPECT_EQ(App.Resolutions.size(), 2U);
    EXPECT_EQ(App.ResolutionIndex, 0);
}

TEST_F(Options, RefuseResolutionsThatCannotBePlayedOn) {
    App.ResolutionIndex = 3;
    const Resolution before = CurrentResolution(App);
    for (const char* const lines :
         {"ResolutionWidth=1000\nResolutionHeight=562",
          "ResolutionWidth=1024\nResolutionHeight=768", "ResolutionWidth=1920\nResolutionHeight=0",
          "ResolutionWidth=-1920\nResolutionHeight=-1080",
          "ResolutionWidth=2147483647\nResolutionHeight=1"}) {
        LogicalWidth = 0;
        Load("Graphics", lines);
        EXPECT_EQ(CurrentResolution(App), before) << lines;
        EXPECT_TRUE(App.Resolutions.empty()) << lines;
        EXPECT_EQ(LogicalWidth, 1152) << "that of " << before.Width << "x" << before.Height;
    }
}

TEST_F(Options, JudgeAResolutionByTheAspectOfTheSameFile) {
    Load("Graphics", "ResolutionWidth=1024\nResolutionHeight=768\nAspectMode=classic4x3");
    EXPECT_EQ(CurrentResolution(App), (Resolution{1024, 768}));
}

TEST_F(Options, TakeAnyRefreshRateBeforeTheDisplayIsKnown) {
    Load("Graphics", "RefreshRate=144");
    EXPECT_EQ(App.RefreshRate, 144);
    Load("Graphics", "RefreshRate=2000");
    EXPECT_EQ(App.RefreshRate, 1000);
}

TEST_F(Options, LeaveTheRefreshRateThatTheDisplaySettlesOn) {
    for (const char* const rate : {"0", "-60", "\"\"", "fast"}) {
        App.RefreshRate = 0;
        Load("Graphics", std::string("RefreshRate=") + rate);
        EXPECT_EQ(App.RefreshRate, 0) << rate;
    }
}

TEST_F(Options, TakeOnlyRefreshRatesThatTheDisplayHas) {
    App.DisplayModes = {{1280, 720, 60}, {1280, 720, 144}, {1920, 1080, 75}};
    Load("Graphics", "RefreshRate=144");
    EXPECT_EQ(App.RefreshRate, 144);
    Load("Graphics", "RefreshRate=75");
    EXPECT_EQ(App.RefreshRate, 144) << "That rate belongs to another resolution";
    Load("Graphics", "RefreshRate=0");
    EXPECT_EQ(App.RefreshRate, 144);
    Load("Graphics", "Fullscreen=0\nRefreshRate=60");
    EXPECT_EQ(App.RefreshRate, 0) << "In a window there is only the automatic one";
}

TEST_F(Options, WriteNoNegativeRefreshRate) {
    App.RefreshRate = -5;
    EXPECT_TRUE(SaveOptions(App));
    EXPECT_EQ(File(), DefaultFile);
}

TEST_F(Options, WriteTheChosenResolutionWhereverItsIndexPoints) {
    App.Resolutions = {{1920, 1080}, {2560, 1440}};
    App.ResolutionIndex = 99;
    EXPECT_TRUE(SaveOptions(App));
    EXPECT_NE(File().find("ResolutionWidth=\"2560\"\r\nResolutionHeight=\"1440\"\r\n"),
              std::string::npos);
}

TEST_F(Options, ReadFlagsInWords) {
    App.Fullscreen = false;
    Load("Graphics", "Fullscreen=\"Yes\"");
    EXPECT_TRUE(App.Fullscreen);
    Load("Graphics", "Fullscreen=\"often\"");
    EXPECT_TRUE(App.Fullscreen);
    Load("Graphics", "Fullscreen=\"\"");
    EXPECT_TRUE(App.Fullscreen);
    Load("Graphics", "Fullscreen=OFF\nVSync=0");
    EXPECT_FALSE(App.Fullscreen);
    EXPECT_FALSE(App.VSync);
    Load("Audio", "MusicEnabled=no\nSfxEnabled=false");
    EXPECT_FALSE(App.MusicEnabled);
    EXPECT_FALSE(App.SfxEnabled);
}

TEST_F(Options, ClampVolumes) {
    for (const auto& [text, volume] :
         std::initializer_list<std::pair<const char*, std::int32_t>>{{"150", 100},
                                                                     {"-5", 0},
                                                                     {"7", 7},
                                                                     {"+5", 7},
                                                                     {"loud", 7},
                                                                     {"\"\"", 7},
                                                                     {"100", 100}}) {
        Load("Audio",
             std::string("MasterVolume=") + text + "\nMusicVolume=" + text + "\nSfxVolume=" + text);
        EXPECT_EQ(App.MasterVolume, volume) << text;
        EXPECT_EQ(App.MusicVolume, volume) << text;
        EXPECT_EQ(App.SfxVolume, volume) << text;
    }
}

TEST_F(Options, AreWrittenOnceWhenDirty) {
    SaveOptionsIfDirty(App);
    EXPECT_FALSE(std::filesystem::exists(User.Path()));
    App.OptionsDirty = true;
    SaveOptionsIfDirty(App);
    EXPECT_FALSE(App.OptionsDirty);
    EXPECT_EQ(File(), DefaultFile);
}

TEST_F(Options, StayDirtyAsLongAsTheyCannotBeWritten) {
    std::filesystem::create_directories(User.File("Config.ini"));
    const Testing::CapturedLog log;
    const std::string message = "Failed to write options config: Config.ini";
    App.OptionsDirty = true;
    SaveOptionsIfDirty(App);
    SaveOptionsIfDirty(App);
    EXPECT_TRUE(App.OptionsDirty);
    EXPECT_EQ(log.Messages(), (Names{message, message}));
    std::filesystem::remove(User.File("Config.ini"));
    SaveOptionsIfDirty(App);
    EXPECT_FALSE(App.OptionsDirty);
    EXPECT_EQ(File(), DefaultFile);
}

// What a process leaves behind that was killed while it wrote its options.
class InterruptedOptions : public Options {
protected:
    InterruptedOptions() {
        User.Create();
        Staged.replace(Staged.find("\"50\""), 4, "\"51\"");
    }
    void Stage(std::string_view text) const { WriteFileText(User.File(".Config.ini.tmp"), text); }
    void ExpectLoaded(std::int32_t musicVolume, const std::string& file) {
        EXPECT_TRUE(LoadOptions(App));
        EXPECT_EQ(App.MusicVolume, musicVolume);
        EXPECT_EQ(File(), file);
        EXPECT_EQ(NamesIn(User.Path()), Names{"Config.ini"});
    }

    std::string Staged = DefaultFile;
};

TEST_F(InterruptedOptions, AreFinishedWhenTheFileIsABeginningOfThem) {
    for (std::size_t size = 0; size < Staged.size(); size += 50) {
        Stage(Staged);
        PutFile(Staged.substr(0, size));
        ExpectLoaded(51, Staged);
    }
}

TEST_F(InterruptedOptions, AreFinishedWhenThereIsNoFileYet) {
    Stage(Staged);
    ExpectLoaded(51, Staged);
}

TEST_F(InterruptedOptions, GiveWayToAnyOtherFile) {
    Stage(Staged);
    PutFile(DefaultFile);
    ExpectLoaded(50, DefaultFile);
    const std::string handmade = "[Audio]\nMusicVolume=9\n";
    Stage(Staged);
    PutFile(handmade);
    ExpectLoaded(9, handmade);
}

TEST_F(InterruptedOptions, CutOffWhileTheyWereStagedChangeNothing) {
    const CapturedOutput quiet;
    for (std::size_t size = 0; size < Staged.size(); ++size) {
        Stage(Staged.substr(0, size));
        ASSERT_FALSE(LoadOptions(App)) << "This is still a first start: " << size;
        ASSERT_EQ(NamesIn(User.Path()), Names{});
    }
}

velINIStream DocumentWith(const std::string& value) {
    velINIStream document;
    document.SetValue("S", "Key", value, true);
    return document;
}

TEST(ConfigValue, IsTheDefaultWhenMissingOrEmpty) {
    EXPECT_EQ(ConfigString(DocumentWith("text"), "S", "Key", "default"), "text");
    EXPECT_EQ(ConfigString(DocumentWith(""), "S", "Key", "default"), "default");
    EXPECT_EQ(ConfigString(DocumentWith("text"), "S", "Other", "default"), "default");
    EXPECT_EQ(ConfigString(DocumentWith("text"), "T", "Key", "default"), "default");
}

TEST(ConfigValue, IsADecimalNumber) {
    const auto read = [](const std::string& text) {
        return ConfigInt(DocumentWith(text), "S", "Key", 42);
    };
    EXPECT_EQ(read("7"), 7);
    EXPECT_EQ(read("-7"), -7);
    EXPECT_EQ(read("007"), 7);
    EXPECT_EQ(read("-0"), 0);
    EXPECT_EQ(read("2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(read("-2147483648"), std::numeric_limits<std::int32_t>::min());
    for (const char* const text : {"", "-", "+5", " 5", "5 ", "--5", "5.0", "0x5", "1e3", "five",
                                   "2147483648", "-2147483649", "99999999999999999999"}) {
        EXPECT_EQ(read(text), 42) << text;
    }
}

TEST(ConfigValue, IsAFlag) {
    EXPECT_TRUE(ConfigBool(DocumentWith("On"), "S", "Key", false));
    EXPECT_FALSE(ConfigBool(DocumentWith("nO"), "S", "Key", true));
    for (const bool flag : {false, true}) {
        EXPECT_EQ(ConfigBool(DocumentWith(""), "S", "Key", flag), flag);
        EXPECT_EQ(ConfigBool(DocumentWith("perhaps"), "S", "Key", flag), flag);
    }
}

} // namespace
} // namespace Wirefall
