// The language files of the game, which lie beside this program as they do beside the game.

#include "base/Utf8.h"
#include "draw/Glyphs.h"
#include "support/Scenes.h"
#include "support/TestHome.h"
#include "words/LanguageFiles.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace Wirefall {

namespace {

using Texts = std::map<std::string, std::string>;

Texts TextsInCatalog() {
    return {LocalizationCatalog.Texts.begin(), LocalizationCatalog.Texts.end()};
}

// The texts that the screens ask for, with what they say by themselves: in a catalog that was empty
// lies afterwards what was looked up.
const Texts& BuiltInTexts() {
    static const Texts texts = [] {
        const LocalizationCatalogRecord before = LocalizationCatalog;
        Texts collected;
        for (const Testing::Scene& scene : Testing::AllScenes()) {
            Testing::SceneWorld world;
            Testing::EnterScene(scene, 1280, world);
            const Texts arranged = TextsInCatalog();
            Testing::SoftwareCanvas canvas;
            scene.Draw(canvas.Renderer(), world);
            for (const auto& [key, text] : TextsInCatalog()) {
                if (!arranged.contains(key)) {
                    collected.emplace(key, text);
                }
            }
        }
        LocalizationCatalog = before;
        return collected;
    }();
    return texts;
}

std::set<std::string> KeysOf(const Texts& texts) {
    std::set<std::string> keys;
    for (const auto& [key, text] : texts) {
        keys.insert(key);
    }
    return keys;
}

// How the blanks of a text stand: those at its ends, and those inside that come in runs.
std::string BlanksOf(std::string_view text) {
    std::string blanks = text.starts_with(' ') ? "|" : "";
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.substr(at).starts_with("  ")) {
            blanks += '_';
        }
    }
    return blanks + (text.ends_with(' ') ? "|" : "");
}

class ShippedTexts : public testing::Test {
protected:
    ShippedTexts() {
        GameOptions options;
        LoadLocalization(options);
    }
    void TearDown() override { LocalizationCatalog = {}; }

    // The texts of one language alone, without those of the fallback.
    static Texts TextsOf(const LanguageEntry& language) {
        LocalizationCatalog.Texts.clear();
        EXPECT_TRUE(LoadCatalogFile(language.File)) << language.File;
        return TextsInCatalog();
    }

    Testing::TestHome Home;
};

TEST_F(ShippedTexts, AreEnglishAndGerman) {
    ASSERT_EQ(LocalizationCatalog.Languages.size(), 2U);
    EXPECT_EQ(LocalizationCatalog.Languages[0].Code, "en");
    EXPECT_EQ(LocalizationCatalog.Languages[1].Code, "de");
    EXPECT_EQ(LanguageDisplayName("en"), "ENGLISH");
    EXPECT_EQ(LanguageDisplayName("de"), "DEUTSCH");
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
    EXPECT_TRUE(LocalizationCatalog.Loaded);
}

TEST_F(ShippedTexts, InEnglishAreTheBuiltInOnes) {
    EXPECT_EQ(BuiltInTexts().size(), 127U);
    const LanguageEntry english = LocalizationCatalog.Languages[0];
    EXPECT_EQ(TextsOf(english), BuiltInTexts());
}

TEST_F(ShippedTexts, AreAllThereInEveryLanguageAndNoOthers) {
    const std::vector<LanguageEntry> languages = LocalizationCatalog.Languages;
    for (const LanguageEntry& language : languages) {
        const Texts texts = TextsOf(language);
        EXPECT_EQ(KeysOf(texts), KeysOf(BuiltInTexts())) << language.Code;
        for (const auto& [key, text] : texts) {
            EXPECT_NE(text, "") << language.Code << ' ' << key;
        }
    }
}

TEST_F(ShippedTexts, HoldOnlyWhatTheFontCanDraw) {
    const std::vector<LanguageEntry> languages = LocalizationCatalog.Languages;
    for (const LanguageEntry& language : languages) {
        for (const auto& [key, text] : TextsOf(language)) {
            for (std::size_t at = 0; at < text.size();) {
                const auto [codePoint, length] = DecodeUtf8(text, at);
                EXPECT_TRUE(codePoint == U' ' ||
                            (codePoint > U' ' && FindGlyph(codePoint) != nullptr))
                    << language.Code << ' ' << key << ": " << text.substr(at, length);
                EXPECT_TRUE(codePoint != U'?' || text[at] == '?')
                    << language.Code << ' ' << key << " is no UTF-8";
                at += length;
            }
        }
    }
}

TEST_F(ShippedTexts, AreInCapitals) {
    const std::vector<LanguageEntry> languages = LocalizationCatalog.Languages;
    for (const LanguageEntry& language : languages) {
        for (const auto& [key, text] : TextsOf(language)) {
            EXPECT_EQ(ToDisplayUpper(text), text) << language.Code << ' ' << key;
        }
    }
}

TEST_F(ShippedTexts, KeepTheBlanksOfTheEnglishOnes) {
    const std::vector<LanguageEntry> languages = LocalizationCatalog.Languages;
    for (const LanguageEntry& language : languages) {
        for (const auto& [key, text] : TextsOf(language)) {
            EXPECT_EQ(BlanksOf(text), BlanksOf(BuiltInTexts().at(key)))
                << language.Code << ' ' << key;
        }
    }
}

} // namespace

} // namespace Wirefall
