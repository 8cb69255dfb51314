#include "app/InputPump.h"
#include "support/InputFixture.h"
#include "support/XServer.h"

#include <array>
#include <chrono>
#include <limits>
#include <memory>

namespace Wirefall {

namespace {

constexpr std::size_t FastForward = ActionIndex(InputAction::FastForward);

class FastForwardTest : public InputTest {
protected:
    FastForwardTest() { App.Screen = AppScreen::Playing; }

    [[nodiscard]] bool Sample() const { return SampleFastForward(App, Controllers); }
};

constexpr std::array<AppScreen, 7> OtherScreens = {
    AppScreen::MainMenu, AppScreen::Options, AppScreen::Help,    AppScreen::LevelComplete,
    AppScreen::Pause,    AppScreen::Credits, AppScreen::GameOver};

TEST_F(FastForwardTest, NothingHeldIsNothing) {
    const VirtualGamepad gamepad;
    const VirtualJoystick joystick;
    Pump();
    EXPECT_FALSE(Sample());
}

TEST_F(FastForwardTest, IsHeldByTheGamepadsButton) {
    VirtualGamepad gamepad;
    Pump();
    gamepad.PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    EXPECT_EQ(Pump(), Presses{}) << "It is no press.";
    EXPECT_TRUE(Sample());
    Pump();
    EXPECT_TRUE(Sample()) << "It stays held from frame to frame.";
    gamepad.ReleaseButton(SDL_GAMEPAD_BUTTON_NORTH);
    Pump();
    EXPECT_FALSE(Sample());
}

TEST_F(FastForwardTest, IsHeldByTheJoysticksButton) {
    VirtualJoystick joystick;
    Pump();
    joystick.PressButton(4);
    EXPECT_EQ(Pump(), Presses{});
    EXPECT_TRUE(Sample());
    joystick.ReleaseButton(4);
    Pump();
    EXPECT_FALSE(Sample());
}

TEST_F(FastForwardTest, AnyDeviceIsEnough) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    gamepad.PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    joystick.PressButton(4);
    Pump();
    gamepad.ReleaseButton(SDL_GAMEPAD_BUTTON_NORTH);
    Pump();
    EXPECT_TRUE(Sample());
    joystick.ReleaseButton(4);
    Pump();
    EXPECT_FALSE(Sample());
}

TEST_F(FastForwardTest, IsNeverHeldOffTheBoard) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    gamepad.PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    joystick.PressButton(4);
    Pump();
    for (const AppScreen screen : OtherScreens) {
        App.Screen = screen;
        EXPECT_FALSE(Sample()) << static_cast<int>(screen);
    }
    App.Screen = AppScreen::Playing;
    EXPECT_TRUE(Sample()) << "Coming back with it held goes on at once.";
}

TEST_F(FastForwardTest, FollowsTheBindings) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    App.GamepadBindings[FastForward] = SDL_GAMEPAD_BUTTON_TOUCHPAD;
    App.JoystickBindings[FastForward] = 25;
    gamepad.PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    joystick.PressButton(4);
    Pump();
    EXPECT_FALSE(Sample());
    gamepad.PressButton(SDL_GAMEPAD_BUTTON_TOUCHPAD);
    Pump();
    EXPECT_TRUE(Sample());
    gamepad.ReleaseButton(SDL_GAMEPAD_BUTTON_TOUCHPAD);
    joystick.PressButton(25);
    Pump();
    EXPECT_TRUE(Sample());
}

TEST_F(FastForwardTest, UnboundOrDamagedBindingsHoldNothing) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    for (int button = 0; button < SDL_GAMEPAD_BUTTON_COUNT; ++button) {
        gamepad.PressButton(button);
        joystick.PressButton(button);
    }
    Pump();
    ASSERT_TRUE(Sample());
    for (const std::int32_t bad : {-1, 26, std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max()}) {
        App.GamepadBindings[FastForward] = bad;
        App.JoystickBindings[FastForward] = bad;
        for (const std::uint32_t key : {0U, 512U, 0xFFFFFFFFU}) {
            App.KeyboardBindings[FastForward] = key;
            EXPECT_FALSE(Sample()) << bad << " " << key;
        }
    }
}

TEST_F(FastForwardTest, EndsWhenTheDeviceIsPulledOut) {
    auto gamepad = std::make_unique<VirtualGamepad>();
    auto joystick = std::make_unique<VirtualJoystick>();
    Pump();
    gamepad->PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    joystick->PressButton(4);
    Pump();
    ASSERT_TRUE(Sample());
    gamepad.reset();
    Pump();
    EXPECT_TRUE(Sample());
    joystick.reset();
    Pump();
    EXPECT_FALSE(Sample());
}

TEST_F(FastForwardTest, TheOtherGamepadDoesNotCount) {
    const VirtualGamepad gamepad;
    VirtualGamepad other;
    Pump();
    other.PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    Pump();
    EXPECT_FALSE(Sample());
}

TEST_F(FastForwardTest, IsSampledAfterAQuitEventAsWell) {
    VirtualGamepad gamepad;
    Pump();
    gamepad.PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    Pump();
    SDL_Event quit = {};
    quit.type = SDL_EVENT_QUIT;
    ASSERT_TRUE(SDL_PushEvent(&quit));
    Pump();
    EXPECT_TRUE(Sample());
}

// The keyboard's state is the window system's, so its keys are pressed on a real one.
class KeyboardFastForwardTest : public testing::Test {
public:
    KeyboardFastForwardTest(const KeyboardFastForwardTest&) = delete;
    KeyboardFastForwardTest(KeyboardFastForwardTest&&) = delete;
    KeyboardFastForwardTest& operator=(const KeyboardFastForwardTest&) = delete;
    KeyboardFastForwardTest& operator=(KeyboardFastForwardTest&&) = delete;
    ~KeyboardFastForwardTest() override {
        SDL_DestroyWindow(Window);
        SDL_Quit();
        SDL_ResetHints();
    }

protected:
    KeyboardFastForwardTest() {
        SDL_SetHintWithPriority(SDL_HINT_VIDEO_DRIVER, "x11", SDL_HINT_OVERRIDE);
        App.Screen = AppScreen::Playing;
    }
    void SetUp() override {
        ASSERT_TRUE(SDL_Init(SDL_INIT_VIDEO)) << SDL_GetError();
        // As large as the display, so that the pointer is over it and the keys are its own.
        Window = SDL_CreateWindow("Wirefall test", 640, 480, 0);
        ASSERT_NE(Window, nullptr) << SDL_GetError();
        SDL_SyncWindow(Window);
    }

    // Presses or releases a key by its X name, waits until the game has seen it, and samples.
    bool SampleAfter(const char* action, const char* key, SDL_EventType seen) {
        const std::array<const char*, 4> arguments = {"xdotool", action, key, nullptr};
        SDL_Process* const process = SDL_CreateProcess(arguments.data(), false);
        EXPECT_NE(process, nullptr) << "xdotool must be installed: " << SDL_GetError();
        if (process == nullptr) {
            return false;
        }
        SDL_WaitProcess(process, true, nullptr);
        SDL_DestroyProcess(process);
        EXPECT_TRUE(WaitFor(seen)) << action << " " << key;
        return SampleFastForward(App, Controllers);
    }
    bool SampleAfterDown(const char* key) {
        return SampleAfter("keydown", key, SDL_EVENT_KEY_DOWN);
    }
    bool SampleAfterUp(const char* key) { return SampleAfter("keyup", key, SDL_EVENT_KEY_UP); }

    // False after a time that no healthy machine needs.
    bool WaitFor(SDL_EventType type) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        SDL_Event event;
        while (std::chrono::steady_clock::now() < end) {
            while (SDL_PollEvent(&event)) {
                PressFromEvent(App, Controllers, event);
                if (event.type == type) {
                    return true;
                }
            }
            SDL_Delay(1);
        }
        return false;
    }

    XServer Server{{{640, 480}}};
    SDL_Window* Window = nullptr;
    GameApp App;
    ControllerSet Controllers;
};

TEST_F(KeyboardFastForwardTest, EitherShiftHoldsIt) {
    for (const std::uint32_t bound : {SDL_SCANCODE_LSHIFT, SDL_SCANCODE_RSHIFT}) {
        App.KeyboardBindings[FastForward] = bound;
        EXPECT_TRUE(SampleAfterDown("Shift_L")) << bound;
        EXPECT_FALSE(SampleAfterUp("Shift_L")) << bound;
        EXPECT_TRUE(SampleAfterDown("Shift_R")) << bound;
        EXPECT_FALSE(SampleAfterUp("Shift_R")) << bound;
    }
}

TEST_F(KeyboardFastForwardTest, OtherKeysStandForThemselves) {
    App.KeyboardBindings[FastForward] = SDL_SCANCODE_X;
    EXPECT_FALSE(SampleAfterDown("z"));
    EXPECT_FALSE(SampleAfterUp("z"));
    EXPECT_FALSE(SampleAfterDown("Shift_L"));
    EXPECT_FALSE(SampleAfterUp("Shift_L"));
    EXPECT_TRUE(SampleAfterDown("x"));
    App.Screen = AppScreen::Pause;
    EXPECT_FALSE(SampleFastForward(App, Controllers));
    App.Screen = AppScreen::Playing;
    EXPECT_FALSE(SampleAfterUp("x"));
}

TEST_F(KeyboardFastForwardTest, AKeyThatIsNotBoundHoldsNothing) {
    App.KeyboardBindings[FastForward] = 0;
    EXPECT_FALSE(SampleAfterDown("Shift_L"));
    EXPECT_FALSE(SampleAfterUp("Shift_L"));
}

} // namespace

} // namespace Wirefall
