#include "persist/Options.h"

#include "base/SdlMemory.h"
#include "base/TextValues.h"
#include "display/DisplayModes.h"
#include "storage/LocalFiles.h"
#include "storage/Storage.h"
#include "velini/VelINIStream.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>

#include <algorithm>
#include <array>
#include <exception>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace Wirefall {

namespace {

using velINI::velINIStream;

constexpr const char* StorageName = "Config.ini";
constexpr const char* StagedName = ".Config.ini.tmp";

constexpr std::string_view OptionsSection = "Options";
constexpr std::string_view KeyboardSection = "ControlsKeyboard";
constexpr std::string_view GamepadSection = "ControlsGamepad";
constexpr std::string_view JoystickSection = "ControlsJoystick";
constexpr std::string_view GraphicsSection = "Graphics";
constexpr std::string_view AudioSection = "Audio";

constexpr auto DeviceWords =
    TableBy<ControlsDevice, std::string_view>({"keyboard", "gamepad", "joystick"});
constexpr auto AspectWords = TableBy<AspectMode, std::string_view>({"widescreen", "classic4x3"});

constexpr std::int32_t MaxRefreshRate = 1000;

// Which numbers a binding of a device takes; what lies outside leaves it as it was.
struct BindingLimits {
    std::int32_t Lowest;
    std::int32_t Highest;
};
constexpr BindingLimits KeyboardLimits = {static_cast<std::int32_t>(UnboundKey),
                                          static_cast<std::int32_t>(MaxScancode)};
constexpr BindingLimits GamepadLimits = {UnboundButton, MaxGamepadButton};
constexpr BindingLimits JoystickLimits = {UnboundButton, std::numeric_limits<std::int32_t>::max()};

struct VolumeKey {
    std::string_view Key;
    std::int32_t AudioSettings::*Volume;
};
constexpr std::array<VolumeKey, 3> VolumeKeys = {{
    {"MasterVolume", &AudioSettings::MasterVolume},
    {"MusicVolume", &AudioSettings::MusicVolume},
    {"SfxVolume", &AudioSettings::SfxVolume},
}};

struct FlagKey {
    std::string_view Key;
    bool GameOptions::*Flag;
};
constexpr std::array<FlagKey, 2> GraphicsFlags = {{
    {"Fullscreen", &GameOptions::Fullscreen},
    {"VSync", &GameOptions::VSync},
}};
constexpr std::array<FlagKey, 2> AudioFlags = {{
    {"MusicEnabled", &GameOptions::MusicEnabled},
    {"SfxEnabled", &GameOptions::SfxEnabled},
}};

// The word for an enumerator; the first word for a value that has none.
template <typename Enum>
std::string_view WordOf(const EnumTable<Enum, std::string_view>& words, Enum value) {
    const std::string_view* const word = words.Find(value);
    return word != nullptr ? *word : words.front();
}

template <typename Enum>
void ReadWord(const velINIStream& document, std::string_view section, std::string_view key,
              const EnumTable<Enum, std::string_view>& words, Enum& value) {
    const std::string present(WordOf(words, value));
    const std::string word = ToLowerCopy(ConfigString(document, section, key, present));
    const auto found = std::ranges::find(words, std::string_view(word));
    if (found != words.end()) {
        value = static_cast<Enum>(found - words.begin());
    }
}

std::string_view ActionKey(std::size_t action) {
    return Actions[static_cast<InputAction>(action)].ConfigKey();
}

template <typename Table>
void ReadBindings(const velINIStream& document, std::string_view section,
                  const BindingLimits& limits, Table& bindings) {
    for (std::size_t action = 0; action < bindings.size(); ++action) {
        const auto present = static_cast<std::int32_t>(bindings[action]);
        const std::int32_t number = ConfigInt(document, section, ActionKey(action), present);
        if (number >= limits.Lowest && number <= limits.Highest) {
            bindings[action] = static_cast<typename Table::value_type>(number);
        }
    }
}

void ReadFlags(const velINIStream& document, std::string_view section,
               std::span<const FlagKey> flags, GameOptions& options) {
    for (const FlagKey& flag : flags) {
        options.*flag.Flag = ConfigBool(document, section, flag.Key, options.*flag.Flag);
    }
}

void ReadGraphics(const velINIStream& document, GameOptions& options) {
    // The aspect mode comes first, because it decides which resolutions are allowed.
    ReadWord(document, GraphicsSection, "AspectMode", AspectWords, options.AspectMode);
    const Resolution present = CurrentResolution(options);
    ChooseResolution(options,
                     {ConfigInt(document, GraphicsSection, "ResolutionWidth", present.Width),
                      ConfigInt(document, GraphicsSection, "ResolutionHeight", present.Height)});
    const std::int32_t rate =
        ConfigInt(document, GraphicsSection, "RefreshRate", options.RefreshRate);
    ReadFlags(document, GraphicsSection, GraphicsFlags, options);
    RefreshRefreshRates(options);
    const std::int32_t clamped = std::clamp(rate, 0, MaxRefreshRate);
    const bool offered =
        std::ranges::find(options.RefreshRates, clamped) != options.RefreshRates.end();
    if (rate > 0 && (offered || options.DisplayModes.empty())) {
        options.RefreshRate = clamped;
    }
}

void ReadAudio(const velINIStream& document, GameOptions& options) {
    for (const VolumeKey& volume : VolumeKeys) {
        std::int32_t& percent = options.*volume.Volume;
        percent = std::clamp(ConfigInt(document, AudioSection, volume.Key, percent), 0, MaxVolume);
    }
    ReadFlags(document, AudioSection, AudioFlags, options);
}

void ReadOptions(const velINIStream& document, GameOptions& options) {
    ReadWord(document, OptionsSection, "ControlsDevice", DeviceWords, options.ControlsDevice);
    options.Language =
        NormalizeLanguageCode(ConfigString(document, OptionsSection, "Language", options.Language));
    ReadBindings(document, KeyboardSection, KeyboardLimits, options.KeyboardBindings);
    ReadBindings(document, GamepadSection, GamepadLimits, options.GamepadBindings);
    ReadBindings(document, JoystickSection, JoystickLimits, options.JoystickBindings);
    ReadGraphics(document, options);
    ReadAudio(document, options);
}

// All values stand in quotes, numbers and flags too.

void StoreText(velINIStream& document, std::string_view section, std::string_view key,
               std::string_view text) {
    document.SetValue(section, key, text, true);
}

template <typename Number>
void StoreNumber(velINIStream& document, std::string_view section, std::string_view key,
                 Number number) {
    StoreText(document, section, key, std::to_string(number));
}

template <typename Table>
void StoreBindings(velINIStream& document, std::string_view section, const Table& bindings) {
    for (std::size_t action = 0; action < bindings.size(); ++action) {
        StoreNumber(document, section, ActionKey(action), bindings[action]);
    }
    document.AddBlankLine(section);
}

void StoreFlags(velINIStream& document, std::string_view section, std::span<const FlagKey> flags,
                const GameOptions& options) {
    for (const FlagKey& flag : flags) {
        StoreText(document, section, flag.Key, BoolText(options.*flag.Flag));
    }
}

velINIStream MakeDocument(const GameOptions& options) {
    velINIStream document;
    StoreText(document, OptionsSection, "ControlsDevice",
              WordOf(DeviceWords, options.ControlsDevice));
    StoreText(document, OptionsSection, "Language", options.Language);
    document.AddBlankLine(OptionsSection);

    StoreBindings(document, KeyboardSection, options.KeyboardBindings);
    StoreBindings(document, GamepadSection, options.GamepadBindings);
    StoreBindings(document, JoystickSection, options.JoystickBindings);

    const DisplayChoice display = ChosenDisplay(options);
    StoreNumber(document, GraphicsSection, "ResolutionWidth", display.Width);
    StoreNumber(document, GraphicsSection, "ResolutionHeight", display.Height);
    StoreText(document, GraphicsSection, "AspectMode", WordOf(AspectWords, display.AspectMode));
    StoreNumber(document, GraphicsSection, "RefreshRate", std::max(display.RefreshRate, 0));
    StoreFlags(document, GraphicsSection, GraphicsFlags, options);
    document.AddBlankLine(GraphicsSection);

    for (const VolumeKey& volume : VolumeKeys) {
        StoreNumber(document, AudioSection, volume.Key, options.*volume.Volume);
    }
    StoreFlags(document, AudioSection, AudioFlags, options);
    return document;
}

// Whether the local file is one that SaveOptions has written down to its end. A write that was cut
// short has lost at least the end, and so the last value.
bool IsWrittenWhole(const std::string& path) {
    SDL_PathInfo info = {};
    if (!SDL_GetPathInfo(path.c_str(), &info) || info.type != SDL_PATHTYPE_FILE) {
        return false;
    }
    velINIStream document;
    return ReadIniFile(path, StagedName, document) == IniOutcome::Read &&
           !document.GetValue(AudioSection, AudioFlags.back().Key, {}).empty();
}

std::string LocalContent(const std::string& path) {
    std::size_t size = 0;
    const SdlArray<char> content(static_cast<char*>(SDL_LoadFile(path.c_str(), &size)));
    return content ? std::string(content.get(), size) : std::string();
}

// Neither velINI nor SDL tells of every write that fails, so the file is read again.
bool StageOptions(const GameOptions& options, const std::string& path) {
    const velINIStream document = MakeDocument(options);
    return document.WriteFile(path, false, velINI::TextEncoding::None) &&
           LocalContent(path) == document.WriteText();
}

// From the staged file on, the new options survive a loss of power: there is nothing, or their
// beginning, in the storage then.
bool StoreOptions(const std::string& path) {
    ForceToDisk(path);
    const bool stored = SaveToUserStorage(StorageName, path);
    if (stored) {
        ForceToDisk(GetPrefFilePath(StorageName));
    }
    return stored;
}

// A session that was killed while the storage wrote has left the beginning of the staged file
// there, or nothing. Anything else in the storage is newer, or somebody's own work.
void FinishInterruptedWrite(const std::string& path) {
    if (!IsWrittenWhole(path)) {
        return;
    }
    const std::string staged = LocalContent(path);
    const std::optional<std::vector<std::uint8_t>> stored = ReadUserFile(StorageName).Content;
    if (!stored || (stored->size() < staged.size() &&
                    std::equal(stored->begin(), stored->end(), staged.begin()))) {
        StoreOptions(path);
    }
}

// Through the staged file, or out of memory where no such file can be made.
IniOutcome ReadStoredOptions(const std::string& path, velINIStream& document) {
    const StoredFile stored = ReadUserFile(StorageName);
    if (stored.TooLarge) {
        SDL_Log("Failed to read %s: larger than any settings file", StorageName);
        return IniOutcome::Refused;
    }
    if (!stored.Content || stored.Content->empty()) {
        return IniOutcome::Unreadable;
    }
    const std::span<const std::uint8_t> content = *stored.Content;
    if (SDL_SaveFile(path.c_str(), content.data(), content.size()) &&
        std::ranges::equal(LocalContent(path), content, {},
                           [](char byte) { return static_cast<std::uint8_t>(byte); })) {
        return ReadIniFile(path, StorageName, document);
    }
    return ReadIniContent(content, StorageName, document);
}

} // namespace

bool LoadOptions(GameOptions& options) {
    const std::string path = GetPrefFilePath(StagedName);
    IniOutcome outcome = IniOutcome::Unreadable;
    velINIStream document;
    if (!path.empty()) {
        const PrefPathLock lock;
        const TemporaryFile staged(path);
        FinishInterruptedWrite(path);
        outcome = ReadStoredOptions(path, document);
    }
    if (outcome == IniOutcome::Read) {
        ReadOptions(document, options);
    }
    options.OptionsUnread = outcome == IniOutcome::Refused;
    return outcome != IniOutcome::Unreadable;
}

bool SaveOptions(const GameOptions& options) {
    try {
        const std::string path = GetPrefFilePath(StagedName);
        if (path.empty()) {
            return false;
        }
        const PrefPathLock lock;
        const TemporaryFile staged(path);
        FinishInterruptedWrite(path);
        return StageOptions(options, path) && StoreOptions(path);
    } catch (const std::exception& error) {
        SDL_Log("Failed to write %s: %s", StorageName, error.what());
        return false;
    }
}

void SaveOptionsIfDirty(GameOptions& options) {
    if (!options.OptionsDirty) {
        return;
    }
    if (SaveOptions(options)) {
        options.OptionsDirty = false;
    } else {
        SDL_Log("Failed to write options config: %s", StorageName);
    }
}

std::string ConfigString(const velINIStream& document, std::string_view section,
                         std::string_view key, const std::string& defaultValue) {
    const std::string value = document.GetValue(section, key, {});
    return value.empty() ? defaultValue : value;
}

std::int32_t ConfigInt(const velINIStream& document, std::string_view section, std::string_view key,
                       std::int32_t defaultValue) {
    std::int32_t number = defaultValue;
    ParseStrictInt(ConfigString(document, section, key, std::to_string(defaultValue)), number);
    return number;
}

bool ConfigBool(const velINIStream& document, std::string_view section, std::string_view key,
                bool defaultValue) {
    return ParseBool(ConfigString(document, section, key, std::string(BoolText(defaultValue))),
                     defaultValue);
}

} // namespace Wirefall
