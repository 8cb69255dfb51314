// Every scene at every width of the canvas and every density, in the languages that it asks for, as
// pictures.

#include "screens/GoldenPictures.h"
#include "support/Scenes.h"
#include "support/TestHome.h"
#include "words/LanguageFiles.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall::Testing {

void PrintTo(const Scene& scene, std::ostream* out) { *out << scene.Name; }

namespace {

// No language of the game: its texts are those of the English one, each over and over.
constexpr std::string_view LongLanguage = "long";
constexpr std::size_t LongTextBytes = 500;

const PresentedScale& PresentedByName(std::string_view name) {
    return *std::find_if(std::begin(Presented), std::end(Presented),
                         [name](const PresentedScale& p) { return p.Name == name; });
}

LocalizationCatalogRecord LoadTexts(std::string_view language) {
    const TestHome home; // for the copies that reading makes
    GameOptions options;
    options.Language = language == LongLanguage ? "en" : language;
    LoadLocalization(options);
    LocalizationCatalogRecord catalog = LocalizationCatalog;
    if (language == LongLanguage) {
        for (auto& [key, text] : catalog.Texts) {
            std::string longText = text;
            while (longText.size() < LongTextBytes) {
                longText += " Ä" + text;
            }
            text = longText;
        }
    }
    return catalog;
}

const LocalizationCatalogRecord& TextsOf(std::string_view language) {
    static std::map<std::string_view, LocalizationCatalogRecord> loaded;
    const auto found = loaded.find(language);
    return found != loaded.end() ? found->second
                                 : loaded.emplace(language, LoadTexts(language)).first->second;
}

std::string PictureName(const Scene& scene, std::string_view language, std::int32_t logicalWidth,
                        std::string_view presented) {
    return std::string(scene.Name) + (language == "en" ? "" : "-" + std::string(language)) + "-" +
           std::to_string(logicalWidth) + "-" + std::string(presented);
}

std::string PictureName(const Scene& scene, const GoldenSize& size) {
    return PictureName(scene, size.Language, size.LogicalWidth, size.Presented);
}

class ScenePictures : public testing::TestWithParam<Scene> {};

TEST_P(ScenePictures, AreTheOnesKeptOfThem) {
    const Scene& scene = GetParam();
    for (const std::string_view language : scene.Languages) {
        for (const std::int32_t width : LogicalWidths) {
            for (const PresentedScale& presented : Presented) {
                EXPECT_TRUE(
                    MatchesChecksum(PictureName(scene, language, width, presented.Name),
                                    TakePicture(scene, width, presented, TextsOf(language))));
            }
        }
    }
    for (const GoldenSize& size : scene.Goldens) {
        EXPECT_TRUE(
            MatchesGolden(PictureName(scene, size),
                          TakePicture(scene, size.LogicalWidth, PresentedByName(size.Presented),
                                      TextsOf(size.Language))));
    }
}

TEST(KeptPictures, AreThoseOfTheScenesAndNoOthers) {
    std::set<std::string> pictures;
    std::set<std::string> goldens;
    for (const Scene& scene : AllScenes()) {
        for (const std::string_view language : scene.Languages) {
            for (const std::int32_t width : LogicalWidths) {
                for (const PresentedScale& presented : Presented) {
                    pictures.insert(PictureName(scene, language, width, presented.Name));
                }
            }
        }
        for (const GoldenSize& size : scene.Goldens) {
            goldens.insert(PictureName(scene, size));
        }
    }
    const std::vector<std::string> kept = KeptChecksums();
    EXPECT_EQ(std::set<std::string>(kept.begin(), kept.end()), pictures);
    EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
    const std::vector<std::string> files = KeptGoldens();
    EXPECT_EQ(std::set<std::string>(files.begin(), files.end()), goldens);
}

std::string CaseName(const testing::TestParamInfo<Scene>& info) {
    std::string name(info.param.Name);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Scenes, ScenePictures, testing::ValuesIn(AllScenes()), CaseName);

} // namespace

} // namespace Wirefall::Testing
