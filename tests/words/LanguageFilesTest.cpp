// Loads language files that lie beside this program, as those of the game lie beside the game. That
// folder is this program's own, and its tests run one at a time.

#include "words/LanguageFiles.h"

#include "storage/Storage.h"
#include "support/CapturedLog.h"
#include "support/CapturedOutput.h"
#include "support/TestFiles.h"
#include "support/TestHome.h"
#include "words/Localization.h"

#include <SDL3/SDL_filesystem.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Wirefall {

namespace {

using Messages = std::vector<std::string>;

constexpr const char* NoCatalog = "Localization catalog 'Localization/Languages.ini' could not be "
                                  "loaded; using built-in defaults";

constexpr std::string_view TwoLanguages = "[Language.en]\nName=English\nFile=Localization/En.ini\n"
                                          "[Language.de]\nName=Deutsch\nFile=Localization/De.ini\n";

class LanguageFiles : public testing::Test {
protected:
    LanguageFiles() { std::filesystem::create_directory(Folder()); }
    void TearDown() override {
        std::filesystem::remove_all(Folder());
        LocalizationCatalog = {};
    }

    static std::filesystem::path Folder() {
        return std::filesystem::path(SDL_GetBasePath()) / "Localization";
    }

    static void Install(std::string_view name, std::string_view content) {
        Testing::WriteFileText(Folder() / name, content);
    }

    // Returns the language of the options afterwards.
    static std::string Load(std::string language) {
        LanguageSetting setting = {std::move(language)};
        const Testing::CapturedOutput quiet; // velINI tells there of files that are not
        LoadLocalization(setting);
        return setting.Language;
    }

    static std::string TextOf(const char* key) { return LocalizedText(key, "BUILT IN"); }

    static std::vector<std::string> Codes() {
        std::vector<std::string> codes;
        for (const LanguageEntry& entry : LocalizationCatalog.Languages) {
            codes.push_back(entry.Code);
        }
        return codes;
    }

    using Strings = std::vector<std::string>;

    Testing::TestHome Home;
    Testing::CapturedLog Log;
};

// --- Without usable files

TEST_F(LanguageFiles, AreNotNeeded) {
    EXPECT_EQ(Load("de"), "de");
    EXPECT_EQ(Log.Messages(), Messages{NoCatalog});
    EXPECT_EQ(Codes(), (Strings{"en", "de"}));
    EXPECT_EQ(LanguageDisplayName("en"), "ENGLISH");
    EXPECT_EQ(LanguageDisplayName("de"), "DEUTSCH");
    EXPECT_EQ(FindLanguage("en")->File, "Localization/En.ini");
    EXPECT_EQ(FindLanguage("de")->File, "Localization/De.ini");
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "de");
    EXPECT_FALSE(LocalizationCatalog.Loaded);
    EXPECT_EQ(TextOf("Common.Back"), "BUILT IN");
}

TEST_F(LanguageFiles, AreReadForTheBuiltInLanguagesWithoutAList) {
    Install("En.ini", "[Common]\nCommon.Back=BACK\nCommon.Apply=APPLY\n");
    Install("De.ini", "[Common]\nCommon.Back=ZURÜCK\n");
    EXPECT_EQ(Load("de"), "de");
    EXPECT_EQ(Log.Messages(), Messages{NoCatalog});
    EXPECT_EQ(TextOf("Common.Back"), "ZURÜCK");
    EXPECT_EQ(TextOf("Common.Apply"), "APPLY");
    EXPECT_TRUE(LocalizationCatalog.Loaded);
}

TEST_F(LanguageFiles, OfAnUnknownLanguageFallToTheDefault) {
    EXPECT_EQ(Load("fr"), "en");
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "en");
}

class UselessList : public LanguageFiles, public testing::WithParamInterface<const char*> {};

TEST_P(UselessList, LeavesTheBuiltInLanguages) {
    Install("Languages.ini", GetParam());
    EXPECT_EQ(Load("fr"), "en");
    EXPECT_EQ(Codes(), (Strings{"en", "de"}));
    ASSERT_FALSE(Log.Messages().empty());
    EXPECT_EQ(Log.Messages().back(), NoCatalog);
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
}

INSTANTIATE_TEST_SUITE_P(
    LanguageFiles, UselessList,
    testing::Values("",    // empty
                    "a=1", // too short
                    "\x7f"
                    "ELF\x02\x01\x01 \xff\xfe\x01\x02[\x03]\x80=\x90\n", // binary
                    "[Languages]\nDefault=de\nFallback=de\n",            // no language
                    "[Language.de]\nName=Deutsch\n",                     // no file
                    "[Language.de]\nName=Deutsch\nFile=\n",              // an empty one
                    "[language.de]\nFile=Localization/De.ini\n",         // another prefix
                    "File=Localization/De.ini\n",                        // before a section
                    "[Language.de]\nFile=\\xD800\\x0041\n"));            // refused

TEST_F(LanguageFiles, MayBeLargerThanAnyTranslation) {
    const std::string lines(std::size_t{1} << 19U, '\n');
    Install("Languages.ini", "[Language.de]\nFile=Localization/De.ini\n" + lines);
    Install("De.ini", "[Common]\n" + lines + "Common.Back=ZURÜCK\n");
    EXPECT_EQ(Load("de"), "de");
    EXPECT_EQ(Log.Messages(), Messages{});
    EXPECT_EQ(TextOf("Common.Back"), "ZURÜCK");
}

TEST_F(LanguageFiles, LargerThanAnythingReadAreRefused) {
    for (const char* const name : {"Languages.ini", "De.ini"}) {
        Install(name, "[Common]\nCommon.Back=ZURÜCK\n");
        std::filesystem::resize_file(Folder() / name, MaxFileBytes + 1);
    }
    EXPECT_EQ(Load("de"), "de");
    EXPECT_EQ(Log.Messages(),
              (Messages{
                  "Failed to read Localization/Languages.ini: larger than any settings file",
                  NoCatalog,
                  "Failed to read Localization/De.ini: larger than any settings file",
              }));
    EXPECT_EQ(TextOf("Common.Back"), "BUILT IN");
}

// --- The list

TEST_F(LanguageFiles, AreListedInTheirOrder) {
    Install("Languages.ini", "[Other]\nFile=x\n"
                             "[Language.fr]\nName=Français\nFile=Localization/Fr.ini\n"
                             "[Language. PT-br ]\nFile=Localization/Pt.ini\n"
                             "[Language.en]\nName=English\nFile=Localization/En.ini\n");
    EXPECT_EQ(Load("fr"), "fr");
    EXPECT_EQ(Log.Messages(), Messages{});
    EXPECT_EQ(Codes(), (Strings{"fr", "pt-br", "en"}));
    EXPECT_EQ(LocalizationCatalog.Languages[0].Name, "Français");
    EXPECT_EQ(LocalizationCatalog.Languages[0].File, "Localization/Fr.ini");
    EXPECT_EQ(LocalizationCatalog.Languages[1].Name, "pt-br") << "the code, without a name";
}

TEST_F(LanguageFiles, OfACodeThatIsThereAlreadyAreDropped) {
    Install("Languages.ini", "[Language.de]\nName=Deutsch\nFile=Localization/De.ini\n"
                             "[Language.DE]\nName=Zwei\nFile=Localization/De2.ini\n"
                             "[Language.dE]\nName=Drei\n");
    EXPECT_EQ(Load("de"), "de");
    EXPECT_EQ(Log.Messages(),
              Messages{"Duplicate language code 'de' in Localization/Languages.ini"})
        << "the third one has no file and is no language";
    EXPECT_EQ(Codes(), Strings{"de"});
    EXPECT_EQ(LocalizationCatalog.Languages[0].Name, "Deutsch");
}

TEST_F(LanguageFiles, WithoutACodeAreEnglish) {
    Install("Languages.ini", "[Language.de]\nFile=Localization/De.ini\n"
                             "[Language.]\nFile=Localization/En.ini\n");
    EXPECT_EQ(Load(""), "en");
    EXPECT_EQ(Codes(), (Strings{"de", "en"}));
    EXPECT_EQ(LocalizationCatalog.Languages[1].Name, "en");
}

TEST_F(LanguageFiles, NameTheirDefaultAndFallback) {
    Install("Languages.ini",
            "[Languages]\nDefault=\" DE\"\nFallback=De\n" + std::string(TwoLanguages));
    EXPECT_EQ(Load("fr"), "de");
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "de");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "de");
}

TEST_F(LanguageFiles, HaveEnglishAsDefaultAndFallbackWithoutAWord) {
    Install("Languages.ini", "[Language.de]\nFile=Localization/De.ini\n"
                             "[Language.en]\nFile=Localization/En.ini\n");
    EXPECT_EQ(Load("fr"), "en");
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
}

TEST_F(LanguageFiles, TakeTheFirstLanguageForAnUnknownDefault) {
    Install("Languages.ini", "[Languages]\nDefault=it\nFallback=es\n"
                             "[Language.fr]\nFile=Localization/Fr.ini\n"
                             "[Language.de]\nFile=Localization/De.ini\n");
    EXPECT_EQ(Load("en"), "fr");
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "fr");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "fr") << "an unknown fallback is the default";
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "fr");
}

TEST_F(LanguageFiles, MayHaveAnotherFallbackThanDefault) {
    Install("Languages.ini", "[Languages]\nDefault=de\nFallback=en\n" + std::string(TwoLanguages));
    Install("En.ini", "[Common]\nCommon.Back=BACK\nCommon.Apply=APPLY\n");
    Install("De.ini", "[Common]\nCommon.Back=ZURÜCK\n");
    EXPECT_EQ(Load("fr"), "de");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
    EXPECT_EQ(TextOf("Common.Back"), "ZURÜCK");
    EXPECT_EQ(TextOf("Common.Apply"), "APPLY");
}

TEST_F(LanguageFiles, TakeTheDefaultForAnUnknownFallback) {
    Install("Languages.ini", "[Languages]\nDefault=de\nFallback=es\n" + std::string(TwoLanguages));
    EXPECT_EQ(Load("en"), "en");
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "de");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "de");
}

TEST_F(LanguageFiles, ForgetTheListBefore) {
    Install("Languages.ini", "[Languages]\nDefault=fr\nFallback=fr\n"
                             "[Language.fr]\nFile=Localization/Fr.ini\n");
    EXPECT_EQ(Load("fr"), "fr");
    Install("Languages.ini", "[Language.de]\nFile=Localization/De.ini\n"
                             "[Language.en]\nFile=Localization/En.ini\n");
    EXPECT_EQ(Load("fr"), "en");
    EXPECT_EQ(Codes(), (Strings{"de", "en"}));
    EXPECT_EQ(LocalizationCatalog.DefaultLanguage, "en");
    EXPECT_EQ(LocalizationCatalog.FallbackLanguage, "en");
}

TEST_F(LanguageFiles, AreChosenByACodeInAnyForm) {
    Install("Languages.ini", TwoLanguages);
    EXPECT_EQ(Load("DE "), "de");
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "de");
    EXPECT_EQ(Load(""), "en");
}

// --- The catalogs

TEST_F(LanguageFiles, OfTheLanguageLieOverThoseOfTheFallback) {
    Install("Languages.ini", TwoLanguages);
    Install("En.ini", "[Common]\nCommon.Back=BACK\nCommon.Apply=APPLY\nCommon.On=\n");
    Install("De.ini", "[Common]\nCommon.Back=ZURÜCK\nCommon.Off=AUS\n");
    Load("de");
    EXPECT_EQ(TextOf("Common.Back"), "ZURÜCK");
    EXPECT_EQ(TextOf("Common.Apply"), "APPLY");
    EXPECT_EQ(TextOf("Common.Off"), "AUS");
    EXPECT_EQ(TextOf("Common.On"), "BUILT IN") << "an empty text is none";
    EXPECT_EQ(TextOf("Common.Revert"), "BUILT IN");
    EXPECT_TRUE(LocalizationCatalog.Loaded);
}

TEST_F(LanguageFiles, ForgetTheTextsOfTheLanguageBefore) {
    Install("Languages.ini", TwoLanguages);
    Install("De.ini", "[Common]\nCommon.Back=ZURÜCK\n");
    Load("de");
    EXPECT_EQ(TextOf("Common.Back"), "ZURÜCK");
    EXPECT_EQ(LocalizedText("Common.Apply", "ONE DEFAULT"), "ONE DEFAULT");
    Load("en");
    EXPECT_EQ(TextOf("Common.Back"), "BUILT IN");
    EXPECT_EQ(LocalizedText("Common.Apply", "ANOTHER"), "ANOTHER");
    EXPECT_FALSE(LocalizationCatalog.Loaded);
}

// A file that is refused is logged each time.
TEST_F(LanguageFiles, AreReadOnceWhenTheLanguageIsItsOwnFallback) {
    Install("Languages.ini", TwoLanguages);
    Install("En.ini", "[Common]\nCommon.Back=\\xD800\\x0041\n");
    Load("en");
    EXPECT_EQ(Log.Messages(), Messages{"Failed to read Localization/En.ini: Invalid code point "
                                       "range for UTF-16 low surrogate pair!"});
    EXPECT_EQ(TextOf("Common.Back"), "BUILT IN");
    EXPECT_FALSE(LocalizationCatalog.Loaded);
}

TEST_F(LanguageFiles, CountAsLoadedWhenOneOfThemIsThere) {
    Install("Languages.ini", TwoLanguages);
    Install("En.ini", "[Common]\nCommon.Back=BACK\n");
    Load("de");
    EXPECT_TRUE(LocalizationCatalog.Loaded);
    std::filesystem::rename(Folder() / "En.ini", Folder() / "De.ini");
    Load("de");
    EXPECT_TRUE(LocalizationCatalog.Loaded);
}

TEST_F(LanguageFiles, GroupTheirTextsInSectionsThatHaveNoMeaning) {
    Install("One.ini", "Common.Back=GLOBAL\nHud.OK=GLOBAL\n"
                       "; a comment=1\n\n"
                       "[Common]\n# Hud.Bad=COMMENT\nCommon.Back=FIRST ; about it\n"
                       "[Other]\nCommon.Back=SECOND\n"
                       "[]\nHud.Lost=UNNAMED\n"
                       "[VI_Global]\nHud.Bad=GLOBAL\n");
    EXPECT_TRUE(LoadCatalogFile("Localization/One.ini"));
    EXPECT_EQ(TextOf("Common.Back"), "SECOND") << "the last one read";
    EXPECT_EQ(TextOf("Hud.OK"), "BUILT IN");
    EXPECT_EQ(TextOf("Hud.Bad"), "BUILT IN");
    EXPECT_EQ(TextOf("Hud.Lost"), "UNNAMED");
}

TEST_F(LanguageFiles, KeepTheBlanksOfQuotedTexts) {
    Install("One.ini", "[A]\nPrompt=\"PRESS A KEY FOR \"\nHint=\"ENTER   ESC\"\n");
    EXPECT_TRUE(LoadCatalogFile("Localization/One.ini"));
    EXPECT_EQ(TextOf("Prompt"), "PRESS A KEY FOR ");
    EXPECT_EQ(TextOf("Hint"), "ENTER   ESC");
}

TEST_F(LanguageFiles, HaveOnlyPlainEntriesAsTexts) {
    Install("One.ini", "[A]\nList[]=1\nList[]=2\nHud.OK=GUT\n");
    EXPECT_TRUE(LoadCatalogFile("Localization/One.ini"));
    EXPECT_EQ(LocalizationCatalog.Texts.size(), 1U);
    EXPECT_EQ(TextOf("Hud.OK"), "GUT");
}

TEST_F(LanguageFiles, AreNotLookedForOutsideTheGame) {
    Testing::WriteFileText(Folder().parent_path() / "Outside.ini", "[A]\nHud.OK=OUTSIDE\n");
    for (const char* const path :
         {"", "../Outside.ini", "Localization/../Outside.ini", "./Outside.ini", "/Outside.ini",
          "\\Outside.ini", "C:Outside.ini", "Localization\\..\\Outside.ini"}) {
        EXPECT_FALSE(LoadCatalogFile(path)) << path;
    }
    EXPECT_TRUE(LoadCatalogFile("Outside.ini")) << "it is there";
    std::filesystem::remove(Folder().parent_path() / "Outside.ini");
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(LanguageFiles, MayBeOfALanguageWithAnUnsafePath) {
    Install("Languages.ini", "[Language.en]\nFile=../En.ini\n[Language.de]\nFile=/etc/hostname\n");
    EXPECT_EQ(Load("de"), "de");
    EXPECT_EQ(Log.Messages(), Messages{});
    EXPECT_FALSE(LocalizationCatalog.Loaded);
    EXPECT_EQ(TextOf("Common.Back"), "BUILT IN");
}

TEST_F(LanguageFiles, MayHoldAnyBytes) {
    const std::string longText(500, 'W');
    Install("One.ini", "[A]\nBytes=\"\xff\xfe\x80\xe4 \xed\xa0\x80\"\nLong=\"" + longText + "\"\n");
    EXPECT_TRUE(LoadCatalogFile("Localization/One.ini"));
    EXPECT_EQ(TextOf("Bytes"), "\xff\xfe\x80\xe4 \xed\xa0\x80");
    EXPECT_EQ(TextOf("Long"), longText);
}

TEST_F(LanguageFiles, ThatAreMissingOrBinaryHaveNoTexts) {
    Install("Binary.ini", std::string("\x7f"
                                      "ELF\0\0\0[\0]\0\x90\n\n",
                                      14));
    const Testing::CapturedOutput quiet;
    EXPECT_FALSE(LoadCatalogFile("Localization/Missing.ini"));
    EXPECT_FALSE(LoadCatalogFile("Localization"));
    LoadCatalogFile("Localization/Binary.ini");
    EXPECT_TRUE(LocalizationCatalog.Texts.empty());
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(LanguageFiles, LeaveNothingBehindInTheFolderOfTheUser) {
    Install("Languages.ini", TwoLanguages);
    Install("En.ini", "[Common]\nCommon.Back=BACK\n");
    Load("de");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Home.Folder())) {
        EXPECT_FALSE(entry.is_regular_file()) << entry.path();
    }
}

} // namespace

} // namespace Wirefall
