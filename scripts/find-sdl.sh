# Wirefall: find SDL3 and SDL3_mixer, on the system or where the user says, before anything is
# built.
# shellcheck shell=sh disable=SC2034,SC2154

# Set $sdl_is to what an earlier search came to, as long as nothing has changed where it looked:
# "found" by CMake itself, "cached" when there is none but ours, or "unknown".
recall_sdl() {
  sdl_is=unknown
  surroundings=$(describe_surroundings) || return 0
  [ -r "$WIREFALL_CACHE/sdl-search" ] || return 0
  { read -r remembered_surroundings && read -r remembered; } <"$WIREFALL_CACHE/sdl-search" ||
    return 0
  [ "$remembered_surroundings" != "$surroundings" ] || sdl_is=$remembered
}

remember_sdl() {
  sdl_is=$1
  surroundings=$(describe_surroundings) || return 0
  printf '%s\n' "$surroundings" "$sdl_is" >"$WIREFALL_CACHE/sdl-search"
}

# Print a number that changes with every package installed or removed, and with every CMake
# package that comes to or goes from a folder where CMake looks. Without dpkg it cannot be told,
# and CMake has to look each time.
describe_surroundings() {
  [ -e /var/lib/dpkg/status ] || return 1
  {
    printf '%s\n' "$PATH" "${CMAKE_PREFIX_PATH:-}" "${SDL3_DIR:-}" "${SDL3_ROOT:-}" \
      "${SDL3_mixer_DIR:-}" "${SDL3_mixer_ROOT:-}"
    folders_cmake_looks_in | xargs -d '\n' stat -L -c '%n %Y %s' 2>/dev/null
  } | cksum
}

folders_cmake_looks_in() {
  printf '%s\n' /var/lib/dpkg/status "${SDL3_DIR:-}" "${SDL3_mixer_DIR:-}" \
    "${HOME:-}"/.cmake/packages/SDL3*
  printf '%s\n' "${CMAKE_PREFIX_PATH:-}:${SDL3_ROOT:-}:${SDL3_mixer_ROOT:-}:$PATH" |
    tr ':' '\n' | sed 's,/s\{0\,1\}bin/*$,,' | sort -u |
    while read -r base; do
      printf '%s\n' "$base" "$base"/lib*/cmake "$base"/lib/*-linux-*/cmake
    done
}

# Find SDL3 and SDL3_mixer, or install their packages, or build them. Sets WIREFALL_PREFIX.
provide_sdl() {
  WIREFALL_PREFIX=
  [ "$sdl_is" != unknown ] || look_for_sdl
  [ "$sdl_is" = cached ] || return 0
  is_debian || fail_without_sdl
  WIREFALL_PREFIX=$(cached_sdl_prefix) && return
  require_sdl_can_be_built
  build_sdl
  remember_sdl cached
  WIREFALL_PREFIX=$(cached_sdl_prefix)
}

look_for_sdl() {
  if search_sdl || { install_sdl_packages && search_sdl; }; then
    remember_sdl found
  else
    remember_sdl cached
  fi
}

# Let CMake look, as it will for the game.
search_sdl() {
  start_log find-sdl
  probe=$(mktemp -d "$WIREFALL_CACHE/.probe.XXXXXX") || fail_to_write_cache
  remove_at_end "$probe"
  cat >"$probe/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(FindSdl LANGUAGES CXX)
find_package(SDL3 3.2 REQUIRED CONFIG)
find_package(SDL3_mixer 3.2 REQUIRED CONFIG)
CMAKE
  logged cmake -S "$probe" -B "$probe/build" -G Ninja
  search_status=$?
  remove_now
  return "$search_status"
}

# Newer Debians have both as packages.
install_sdl_packages() {
  is_debian || return 1
  candidates=$(apt-cache policy libsdl3-dev libsdl3-mixer-dev 2>/dev/null |
    grep -c '^  Candidate: [^(]')
  [ "$candidates" = 2 ] || return 1
  install_missing list_sdl_packages
}

list_sdl_packages() {
  printf '%s\n' libsdl3-dev libsdl3-mixer-dev
}
