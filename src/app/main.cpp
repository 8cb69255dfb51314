#include "app/Game.h"

int main(int /*argc*/, char* /*argv*/[]) {
    Wirefall::Game game;
    if (!Wirefall::StartGame(game)) {
        return 1;
    }
    while (game.App.Running) {
        Wirefall::RunFrame(game);
    }
    Wirefall::ShutdownGame(game);
    return 0;
}
