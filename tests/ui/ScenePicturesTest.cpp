// Every scene at every width of the canvas and every density, as pictures.

#include "support/PictureTest.h"
#include "support/Scenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace Wirefall::Testing {

void PrintTo(const Scene& scene, std::ostream* out) { *out << scene.Name; }

namespace {

const PresentedScale& PresentedByName(std::string_view name) {
    return *std::find_if(std::begin(Presented), std::end(Presented),
                         [name](const PresentedScale& p) { return p.Name == name; });
}

std::string PictureName(const Scene& scene, std::int32_t logicalWidth, std::string_view presented) {
    return std::string(scene.Name) + "-" + std::to_string(logicalWidth) + "-" +
           std::string(presented);
}

class ScenePictures : public testing::TestWithParam<Scene> {};

TEST_P(ScenePictures, AreTheOnesKeptOfThem) {
    const Scene& scene = GetParam();
    for (const std::int32_t width : LogicalWidths) {
        for (const PresentedScale& presented : Presented) {
            EXPECT_TRUE(MatchesChecksum(PictureName(scene, width, presented.Name),
                                        TakePicture(scene, width, presented)));
        }
    }
    for (const GoldenSize& size : scene.Goldens) {
        EXPECT_TRUE(
            MatchesGolden(PictureName(scene, size.LogicalWidth, size.Presented),
                          TakePicture(scene, size.LogicalWidth, PresentedByName(size.Presented))));
    }
}

TEST(KeptPictures, AreThoseOfTheScenesAndNoOthers) {
    std::set<std::string> pictures;
    std::set<std::string> goldens;
    for (const Scene& scene : AllScenes()) {
        for (const std::int32_t width : LogicalWidths) {
            for (const PresentedScale& presented : Presented) {
                pictures.insert(PictureName(scene, width, presented.Name));
            }
        }
        for (const GoldenSize& size : scene.Goldens) {
            goldens.insert(PictureName(scene, size.LogicalWidth, size.Presented));
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
