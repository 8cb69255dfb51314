#include "persist/Options.h"

#include "app/GameApp.h"
#include "base/SdlMemory.h"
#include "display/Aspect.h"
#include "display/DisplayModes.h"
#include "persist/Storage.h"
#include "velini/VelINIStream.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
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

constexpr std::array<std::string_view, 3> DeviceWords = {"keyboard", "gamepad", "joystick"};
constexpr std::array<std::string_view, 2> AspectWords = {"widescreen", "classic4x3"};

constexpr std::array<std::string_view, ActionCount> ActionKeys = {
    "CursorUp",    "CursorDown", "CursorLeft",  "CursorRight", "RotateLeft",
    "RotateRight", "Place",      "FastForward", "MenuConfirm", "MenuBack",
};

constexpr std::array<std::string_view, 4> TrueWords = {"1", "true", "yes", "on"};
constexpr std::array<std::string_view, 4> FalseWords = {"0", "false", "no", "off"};

constexpr std::int32_t MaxRefreshRate = 1000;
constexpr const char* DefaultLanguage = "en";

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
    std::int32_t GameOptions::*Volume;
};
constexpr std::array<VolumeKey, 3> VolumeKeys = {{
    {"MasterVolume", &GameOptions::MasterVolume},
    {"MusicVolume", &GameOptions::MusicVolume},
    {"SfxVolume", &GameOptions::SfxVolume},
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

template <typename List>
bool Contains(const List& list, std::string_view text) {
    return std::ranges::find(list, text) != list.end();
}

std::string_view BoolText(bool flag) { return flag ? TrueWords.front() : FalseWords.front(); }

// The word for an enumeration's value; the first word for a value that has none.
template <typename Enum>
std::string_view WordOf(std::span<const std::string_view> words, Enum value) {
    const auto index = static_cast<std::size_t>(value);
    return index < words.size() ? words[index] : words.front();
}

template <typename Enum>
void ReadWord(const velINIStream& document, std::string_view section, std::string_view key,
              std::span<const std::string_view> words, Enum& value) {
    const std::string present(WordOf(words, value));
    const std::string word = ToLowerCopy(ConfigString(document, section, key, present));
    const auto found = std::ranges::find(words, std::string_view(word));
    if (found != words.end()) {
        value = static_cast<Enum>(found - words.begin());
    }
}

template <typename Table>
void ReadBindings(const velINIStream& document, std::string_view section,
                  const BindingLimits& limits, Table& bindings) {
    for (std::size_t action = 0; action < bindings.size(); ++action) {
        const auto present = static_cast<std::int32_t>(bindings[action]);
        const std::int32_t number = ConfigInt(document, section, ActionKeys[action], present);
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

void ReadResolution(const velINIStream& document, GameApp& app) {
    const Resolution present = CurrentResolution(app);
    const Resolution read = {
        ConfigInt(document, GraphicsSection, "ResolutionWidth", present.Width),
        ConfigInt(document, GraphicsSection, "ResolutionHeight", present.Height)};
    if (IsPlayable(read.Width, read.Height) &&
        IsResolutionAllowed(app.AspectMode, read.Width, read.Height)) {
        const std::span<const Resolution> offered = OfferedResolutions(app);
        if (std::ranges::find(offered, read) == offered.end()) {
            app.Resolutions.push_back(read);
        }
    }
    app.ResolutionIndex = FindResolutionIndex(app, read.Width, read.Height, app.ResolutionIndex);
    const Resolution chosen = CurrentResolution(app);
    UpdateLogicalWidth(app.AspectMode, chosen.Width, chosen.Height);
}

void ReadGraphics(const velINIStream& document, GameApp& app) {
    // The aspect mode comes first, because it decides which resolutions are allowed.
    ReadWord(document, GraphicsSection, "AspectMode", AspectWords, app.AspectMode);
    ReadResolution(document, app);
    const std::int32_t rate = ConfigInt(document, GraphicsSection, "RefreshRate", app.RefreshRate);
    ReadFlags(document, GraphicsSection, GraphicsFlags, app);
    RefreshRefreshRates(app);
    const std::int32_t clamped = std::clamp(rate, 0, MaxRefreshRate);
    const bool offered = std::ranges::find(app.RefreshRates, clamped) != app.RefreshRates.end();
    if (rate > 0 && (offered || app.DisplayModes.empty())) {
        app.RefreshRate = clamped;
    }
}

void ReadAudio(const velINIStream& document, GameOptions& options) {
    for (const VolumeKey& volume : VolumeKeys) {
        std::int32_t& percent = options.*volume.Volume;
        percent = std::clamp(ConfigInt(document, AudioSection, volume.Key, percent), 0, MaxVolume);
    }
    ReadFlags(document, AudioSection, AudioFlags, options);
}

void ReadOptions(const velINIStream& document, GameApp& app) {
    ReadWord(document, OptionsSection, "ControlsDevice", DeviceWords, app.ControlsDevice);
    app.Language =
        NormalizeLanguageCode(ConfigString(document, OptionsSection, "Language", app.Language));
    ReadBindings(document, KeyboardSection, KeyboardLimits, app.KeyboardBindings);
    ReadBindings(document, GamepadSection, GamepadLimits, app.GamepadBindings);
    ReadBindings(document, JoystickSection, JoystickLimits, app.JoystickBindings);
    ReadGraphics(document, app);
    ReadAudio(document, app);
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
        StoreNumber(document, section, ActionKeys[action], bindings[action]);
    }
    document.AddBlankLine(section);
}

void StoreFlags(velINIStream& document, std::string_view section, std::span<const FlagKey> flags,
                const GameOptions& options) {
    for (const FlagKey& flag : flags) {
        StoreText(document, section, flag.Key, BoolText(options.*flag.Flag));
    }
}

velINIStream MakeDocument(const GameApp& app) {
    velINIStream document;
    StoreText(document, OptionsSection, "ControlsDevice", WordOf(DeviceWords, app.ControlsDevice));
    StoreText(document, OptionsSection, "Language", app.Language);
    document.AddBlankLine(OptionsSection);

    StoreBindings(document, KeyboardSection, app.KeyboardBindings);
    StoreBindings(document, GamepadSection, app.GamepadBindings);
    StoreBindings(document, JoystickSection, app.JoystickBindings);

    const Resolution resolution = CurrentResolution(app);
    StoreNumber(document, GraphicsSection, "ResolutionWidth", resolution.Width);
    StoreNumber(document, GraphicsSection, "ResolutionHeight", resolution.Height);
    StoreText(document, GraphicsSection, "AspectMode", WordOf(AspectWords, app.AspectMode));
    StoreNumber(document, GraphicsSection, "RefreshRate", std::max(app.RefreshRate, 0));
    StoreFlags(document, GraphicsSection, GraphicsFlags, app);
    document.AddBlankLine(GraphicsSection);

    for (const VolumeKey& volume : VolumeKeys) {
        StoreNumber(document, AudioSection, volume.Key, app.*volume.Volume);
    }
    StoreFlags(document, AudioSection, AudioFlags, app);
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

// velINI does not tell of writes that fail, so the file is read again.
bool StageOptions(const GameApp& app, const std::string& path) {
    return MakeDocument(app).WriteFile(path, false, velINI::TextEncoding::None) &&
           IsWrittenWhole(path);
}

// A session that was killed while the storage wrote has left the beginning of the staged file
// there, or nothing. Anything else in the storage is newer, or somebody's own work.
void FinishInterruptedWrite(const std::string& path) {
    if (!IsWrittenWhole(path)) {
        return;
    }
    std::size_t size = 0;
    const SdlArray<char> content(static_cast<char*>(SDL_LoadFile(path.c_str(), &size)));
    const std::string_view staged(content.get(), content ? size : 0);
    const std::optional<std::vector<std::uint8_t>> stored = ReadUserFile(StorageName);
    if (!stored || (stored->size() < staged.size() &&
                    std::equal(stored->begin(), stored->end(), staged.begin()))) {
        SaveToUserStorage(StorageName, path);
    }
}

} // namespace

bool LoadOptions(GameApp& app) {
    const std::string path = GetPrefFilePath(StagedName);
    IniOutcome outcome = IniOutcome::Unreadable;
    velINIStream document;
    if (!path.empty()) {
        FinishInterruptedWrite(path);
        if (CopyUserFileToLocal(StorageName, path)) {
            outcome = ReadIniFile(path, StorageName, document);
        }
    }
    RemoveLocalFile(path);
    if (outcome == IniOutcome::Read) {
        ReadOptions(document, app);
    }
    return outcome != IniOutcome::Unreadable;
}

bool SaveOptions(const GameApp& app) {
    std::string path;
    bool written = false;
    try {
        path = GetPrefFilePath(StagedName);
        written = !path.empty() && StageOptions(app, path) && SaveToUserStorage(StorageName, path);
    } catch (const std::exception& error) {
        SDL_Log("Failed to write %s: %s", StorageName, error.what());
    }
    RemoveLocalFile(path);
    return written;
}

void SaveOptionsIfDirty(GameApp& app) {
    if (!app.OptionsDirty) {
        return;
    }
    if (SaveOptions(app)) {
        app.OptionsDirty = false;
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
    const std::string text = ConfigString(document, section, key, std::to_string(defaultValue));
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc{} && result.ptr == end ? number : defaultValue;
}

bool ConfigBool(const velINIStream& document, std::string_view section, std::string_view key,
                bool defaultValue) {
    return ParseBool(ConfigString(document, section, key, std::string(BoolText(defaultValue))),
                     defaultValue);
}

bool ParseBool(std::string_view text, bool defaultValue) {
    const std::string word = ToLowerCopy(text);
    if (Contains(TrueWords, word)) {
        return true;
    }
    return !Contains(FalseWords, word) && defaultValue;
}

std::string ToLowerCopy(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

std::string NormalizeLanguageCode(std::string_view code) {
    std::string normal = ToLowerCopy(code);
    std::erase_if(normal, [](unsigned char c) { return std::isspace(c) != 0; });
    return normal.empty() ? DefaultLanguage : normal;
}

} // namespace Wirefall
