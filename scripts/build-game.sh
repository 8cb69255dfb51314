# Wirefall: configure and build one preset.
# shellcheck shell=sh disable=SC2154

# What the folder of a preset takes at most: objects, test programs, and their debug information.
BUILD_MEGABYTES=500

# To be called before anything else is done, rather than after minutes of building SDL.
require_space_for_preset() {
  [ -e "$WIREFALL_ROOT/build/$1/build.ninja" ] ||
    require_space "$WIREFALL_ROOT" "$BUILD_MEGABYTES" "building Wirefall"
}

# build_preset PRESET TARGET OPTION...: build the target ("all" for everything) with these options
# for CMake. Two runs in one folder wait for each other, where the system can make them.
build_preset() {
  preset=$1
  target=$2
  shift 2
  build=$WIREFALL_ROOT/build/$preset
  { mkdir -p "$build" && true >"$build/.lock"; } 2>/dev/null ||
    fail "the folder $build cannot be written to."
  start_log "build-$preset"
  say "building the preset $preset (log: $log)."
  exec 8>"$build/.lock"
  ! command -v flock >/dev/null || flock 8
  configure_preset "$@" || fail_with_log "configuring the preset $preset"
  logged cmake --build "$build" --target "$target" --parallel "$(number_of_jobs)" ||
    fail_with_log "building the preset $preset" 60
  exec 8>&-
}

# SDL is looked for anew each time: CMake would keep to where it once found it. A folder that was
# copied along with the sources belongs to the place where it was made, and is begun afresh.
configure_preset() (
  fresh=
  grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$WIREFALL_ROOT" "$build/CMakeCache.txt" ||
    fresh=--fresh
  cd "$WIREFALL_ROOT" || exit
  # shellcheck disable=SC2086 # no word unless it is needed
  logged cmake --preset "$preset" $fresh -U SDL3_DIR -U SDL3_mixer_DIR \
    -D CMAKE_PREFIX_PATH="$WIREFALL_PREFIX" "$@"
)
