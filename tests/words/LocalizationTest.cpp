#include "words/Localization.h"

#include "words/LanguageCode.h"

#include <gtest/gtest.h>

#include <string>

namespace Wirefall {

namespace {

class Texts : public testing::Test {
protected:
    Texts() { LocalizationCatalog = {}; }
};

TEST_F(Texts, ComeFromTheCatalogFirst) {
    LocalizationCatalog.Texts["Hud.Queue"] = "WARTEND";
    EXPECT_EQ(LocalizedText("Hud.Queue", "QUEUE"), "WARTEND");
}

TEST_F(Texts, FallBackToTheBuiltInOneAndKeepIt) {
    const std::string& text = LocalizedText("Hud.Queue", "QUEUE");
    EXPECT_EQ(text, "QUEUE");
    EXPECT_EQ(LocalizationCatalog.Texts.at("Hud.Queue"), "QUEUE");
    EXPECT_EQ(&LocalizedText("Hud.Queue", "ANOTHER"), &text);
}

TEST_F(Texts, TakeAnEmptyTranslationForNone) {
    LocalizationCatalog.Texts["Hud.Queue"] = "";
    EXPECT_EQ(LocalizedText("Hud.Queue", "QUEUE"), "QUEUE");
    EXPECT_EQ(LocalizationCatalog.Texts.at("Hud.Queue"), "QUEUE");
}

TEST_F(Texts, AreEmptyWithoutAKey) {
    EXPECT_EQ(LocalizedText(nullptr, "QUEUE"), "");
    EXPECT_EQ(LocalizedText("", "QUEUE"), "");
    EXPECT_TRUE(LocalizationCatalog.Texts.empty());
}

TEST_F(Texts, StayInPlaceWhileOthersAreAdded) {
    const std::string& text = LocalizedText("Hud.Queue", "QUEUE");
    for (int i = 0; i < 1000; ++i) {
        LocalizedText(("Key." + std::to_string(i)).c_str(), "TEXT");
    }
    EXPECT_EQ(&LocalizedText("Hud.Queue", ""), &text);
}

TEST_F(Texts, AreEnglishFromTheStart) {
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "en");
    EXPECT_FALSE(LocalizationCatalog.Loaded);
}

class Languages : public testing::Test {
protected:
    Languages() {
        LocalizationCatalog = {};
        LocalizationCatalog.Languages = {{.Code = "en", .Name = "English", .File = "e.ini"},
                                         {.Code = "de", .Name = "Deutsch", .File = "d.ini"},
                                         {.Code = "fr", .Name = "Français", .File = "f.ini"},
                                         {.Code = "xx", .Name = "", .File = "x.ini"}};
    }
    void TearDown() override { LocalizationCatalog = {}; }

    static std::string Cycled(std::string field, std::int32_t direction) {
        CycleLanguage(field, direction);
        return field;
    }
};

TEST_F(Languages, HaveCodesInLowerCaseWithoutWhiteSpace) {
    EXPECT_EQ(NormalizeLanguageCode("de"), "de");
    EXPECT_EQ(NormalizeLanguageCode("DE "), "de");
    EXPECT_EQ(NormalizeLanguageCode(" p\tT\n-\v\fbR\r"), "pt-br");
    EXPECT_EQ(NormalizeLanguageCode(""), "en");
    EXPECT_EQ(NormalizeLanguageCode(" \t\n\v\f\r"), "en");
    EXPECT_EQ(NormalizeLanguageCode("\xc3\x84"), "\xc3\x84") << "byte by byte";
}

TEST_F(Languages, AreFoundByExactlyTheirCode) {
    EXPECT_EQ(FindLanguage("de"), &LocalizationCatalog.Languages[1]);
    EXPECT_EQ(FindLanguage("DE"), nullptr);
    EXPECT_EQ(FindLanguage("d"), nullptr);
    EXPECT_EQ(FindLanguage("es"), nullptr);
}

TEST_F(Languages, AreNotFoundByNoCode) {
    EXPECT_EQ(FindLanguage(""), nullptr);
    LocalizationCatalog.Languages.push_back({});
    EXPECT_EQ(FindLanguage(""), nullptr);
    LocalizationCatalog.Languages.clear();
    EXPECT_EQ(FindLanguage("en"), nullptr);
}

TEST_F(Languages, AreCycledInBothDirectionsAndAround) {
    EXPECT_EQ(Cycled("en", 1), "de");
    EXPECT_EQ(Cycled("de", 1), "fr");
    EXPECT_EQ(Cycled("xx", 1), "en");
    EXPECT_EQ(Cycled("de", -1), "en");
    EXPECT_EQ(Cycled("en", -1), "xx");
}

TEST_F(Languages, AreCycledFromACodeInAnyForm) {
    EXPECT_EQ(Cycled(" D E", 1), "fr");
    EXPECT_EQ(Cycled("", 1), "de") << "no code is English";
}

TEST_F(Languages, AreCycledFromTheDefaultWhenTheCodeIsUnknown) {
    LocalizationCatalog.DefaultLanguage = " DE";
    EXPECT_EQ(Cycled("es", 1), "fr");
    EXPECT_EQ(Cycled("es", -1), "en");
    LocalizationCatalog.DefaultLanguage = "it";
    EXPECT_EQ(Cycled("es", 1), "de") << "from the first, when the default is unknown too";
    EXPECT_EQ(Cycled("es", -1), "xx");
}

TEST_F(Languages, StayAsTheyAreWrittenWhenThereIsNoOther) {
    LocalizationCatalog.Languages.resize(1);
    EXPECT_EQ(Cycled(" EN", 1), " EN");
    EXPECT_EQ(Cycled("es", 1), "en");
    LocalizationCatalog.Languages.clear();
    EXPECT_EQ(Cycled("es", 1), "es");
}

TEST_F(Languages, AreShownByTheirNameInUpperCase) {
    EXPECT_EQ(LanguageDisplayName("de"), "DEUTSCH");
    EXPECT_EQ(LanguageDisplayName(" DE"), "DEUTSCH");
    EXPECT_EQ(LanguageDisplayName(""), "ENGLISH");
    EXPECT_EQ(LanguageDisplayName("xx"), "XX") << "by their code, without a name";
    EXPECT_EQ(LanguageDisplayName(" p\xc3\xbc"), "P\xc3\x9c") << "or unknown";
}

TEST(DisplayUpper, IsForNamesFromOutside) {
    EXPECT_EQ(ToDisplayUpper("Größe \xe4x"), "GRÖßE ?X");
    EXPECT_EQ(ToDisplayUpper("\xe1\xba\x9e"), "ß");
    EXPECT_EQ(ToDisplayUpper(""), "");
}

TEST(DisplayUpper, GoesOnAtTheByteAfterABrokenOne) {
    EXPECT_EQ(ToDisplayUpper("\xe4"
                             "b"),
              "?B");
}

} // namespace

} // namespace Wirefall
