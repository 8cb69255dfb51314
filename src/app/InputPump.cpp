#include "app/InputPump.h"

#include "app/Screens.h"
#include "game/ScreenFlow.h"
#include "input/InputSampling.h"
#include "options/ControlsPage.h"

namespace Wirefall {

PressCode PressFromEvent(GameApp& app, ControllerSet& controllers, const SDL_Event& event) {
    const DevicePress press = ReadDevicePress(app, controllers, event);
    switch (press.Kind) {
    case PressKind::Key:
        return IsCapturing(app, press.Device) ? press.Code
                                              : PressFromKey(app.KeyboardBindings, press.Code);
    case PressKind::Button:
        if (IsCapturing(app, press.Device)) {
            CaptureButton(app, press.Device, press.ButtonNumber);
            return Press::None;
        }
        return PressFromButton(app, press.Device, press.ButtonNumber,
                               app.Screen == AppScreen::Playing);
    case PressKind::Step:
    case PressKind::None:
        break;
    }
    return press.Code;
}

bool SampleFastForward(const GameApp& app, const ControllerSet& controllers) {
    return app.Screen == AppScreen::Playing && IsFastForwardHeld(app, controllers);
}

void PollInput(GameApp& app, ControllerSet& controllers, SDL_Window* window,
               SDL_Renderer* renderer) {
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (event.type == SDL_EVENT_QUIT) {
            RequestQuit(app);
            return;
        }
        DispatchPress(app, window, renderer, PressFromEvent(app, controllers, event));
    }
}

} // namespace Wirefall
