#pragma once

// What the program reports goes through SDL_Log. By default only warnings and worse get through;
// the environment variable WIREFALL_VERBOSE_LOG (1, true, yes or on) lets everything through.

namespace Wirefall {

/// Sets which messages get through. After SDL_Init.
void SetLogPriorities();

/// Begins catching the messages in the session's log file. Without a place for one there is none.
void StartSessionLog();

/// Ends what StartSessionLog began. Right before SDL_Quit.
void EndSessionLog();

} // namespace Wirefall
