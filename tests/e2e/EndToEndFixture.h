#pragma once

// A test that plays one game, and shows what was on the screen when it fails.

#include "e2e/GameSession.h"
#include "support/Png.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

namespace Wirefall::Testing {

inline constexpr WindowSize Wide = {1280, 720, 1280};

class EndToEndTest : public testing::Test {
protected:
    GameSession& Start(const WindowSize& window, DrawnBy drawnBy = DrawnBy::Software) {
        return Keep(std::make_unique<GameSession>(window, drawnBy));
    }

    GameSession& Keep(std::unique_ptr<GameSession> session) {
        Session = std::move(session);
        return *Session;
    }

    void TearDown() override {
        if (!HasFailure() || !Session) {
            return;
        }
        std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::ranges::replace(name, '/', '-');
        const std::filesystem::path path =
            std::filesystem::path(WIREFALL_E2E_FAILURE_DIR) / (name + ".png");
        if (!Session->LastSeen().Pixels.empty()) {
            WritePng(path, Session->LastSeen());
            ADD_FAILURE() << "The last screenshot is " << path.string();
        }
        ADD_FAILURE() << "The game printed: " << Session->Printed();
    }

private:
    std::unique_ptr<GameSession> Session;
};

} // namespace Wirefall::Testing
