#include "app/InputPump.h"

#include "app/ScreenFlow.h"
#include "input/InputSampling.h"

#include <SDL3/SDL_events.h>

namespace Wirefall {

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
