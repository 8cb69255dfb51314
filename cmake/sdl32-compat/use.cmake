# Handed to SDL3_mixer's own project as CMAKE_PROJECT_SDL3_mixer_INCLUDE, which puts the header
# beside this file ahead of every source file. A function that is lacking all the same must stop
# that build, not the start of the game.
add_compile_options(
  -include "${CMAKE_CURRENT_LIST_DIR}/sdl32_compat.h"
  -Werror=implicit-function-declaration)
add_link_options(-Wl,--no-undefined)
