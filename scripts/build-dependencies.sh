# Wirefall: SDL3 and SDL3_mixer from the Debian sources, for a Debian that has no packages of
# them. Binary packages of a newer Debian would pull half of that Debian along; sources built
# here, into the user's own cache, leave the system as it is.
# shellcheck shell=sh disable=SC2030,SC2031,SC2034,SC2154

# The suites whose sources are taken. These releases of SDL3 and SDL3_mixer are the ones that
# build with the tools and libraries of Debian 12.
SDL_SUITE=trixie
MIXER_SUITE=forky
DEBIAN_KEYRING=/usr/share/keyrings/debian-archive-keyring.gpg

# Unpacked sources, objects and the installed result, with room to spare.
SDL_BUILD_MEGABYTES=300

sdl_options() {
  cat <<'LIST'
-DSDL_SHARED=ON
-DSDL_STATIC=OFF
-DSDL_DUMMYAUDIO=ON
-DSDL_DUMMYVIDEO=ON
-DSDL_EXAMPLES=OFF
-DSDL_INSTALL_DOCS=OFF
-DSDL_OFFSCREEN=ON
-DSDL_TESTS=OFF
-DSDL_TEST_LIBRARY=OFF
-DSDL_VIRTUAL_JOYSTICK=ON
-DSDL_WAYLAND=ON
-DSDL_X11=ON
LIST
}

# Only what Debian's own libraries decode: nothing is downloaded and no copy of a decoder is
# built in.
mixer_options() {
  cat <<'LIST'
-DBUILD_SHARED_LIBS=ON
-DSDLMIXER_DEPS_SHARED=OFF
-DSDLMIXER_EXAMPLES=OFF
-DSDLMIXER_FLAC_DRFLAC=OFF
-DSDLMIXER_FLAC_LIBFLAC=ON
-DSDLMIXER_GME=OFF
-DSDLMIXER_MIDI=OFF
-DSDLMIXER_MOD=OFF
-DSDLMIXER_MP3_DRMP3=OFF
-DSDLMIXER_MP3_MPG123=ON
-DSDLMIXER_OPUS=ON
-DSDLMIXER_STRICT=ON
-DSDLMIXER_TESTS=OFF
-DSDLMIXER_VENDORED=OFF
-DSDLMIXER_VORBIS_STB=OFF
-DSDLMIXER_VORBIS_VORBISFILE=ON
-DSDLMIXER_WAVPACK=OFF
LIST
}

# Twelve digits that change with everything the built libraries depend on but their versions.
sdl_recipe() {
  {
    sdl_options
    mixer_options
    packages_to_build_sdl
    cat "$WIREFALL_ROOT"/cmake/sdl32-compat/*
    uname -m
    sed -n 's/^VERSION_ID=//p' /etc/os-release
  } | sha256sum | cut -c 1-12
}

# Print the folder in the cache that holds SDL3 and SDL3_mixer built by this recipe, if there is
# one. It got its name in one move when it was complete, so there is no more to check.
cached_sdl_prefix() {
  for prefix in "$WIREFALL_CACHE"/sdl-*-mixer-*-"$(sdl_recipe)"; do
    if [ -d "$prefix" ]; then
      printf '%s\n' "$prefix"
      return 0
    fi
  done
  return 1
}

# Stop before packages are installed and sources fetched rather than in the middle of it.
require_space_for_sdl() {
  cached_sdl_prefix >/dev/null ||
    require_space "$WIREFALL_CACHE" "$SDL_BUILD_MEGABYTES" "building SDL3 and SDL3_mixer"
}

# Build both, unless somebody else did so while we waited for the lock.
build_sdl() {
  { true >"$WIREFALL_CACHE/.lock"; } 2>/dev/null || fail_to_write_cache
  exec 9>"$WIREFALL_CACHE/.lock"
  if ! flock -n 9; then
    say "another run is building SDL3 and SDL3_mixer; waiting for it."
    flock 9
  fi
  cached_sdl_prefix >/dev/null || build_sdl_alone
  exec 9>&-
}

# Build both in a folder beside their final one, which they get in one move when all is done.
build_sdl_alone() {
  # Whatever was left half-made by a run that could not clean up is ours to remove: we have
  # the lock.
  rm -rf "$WIREFALL_CACHE"/.building.*
  work=$(mktemp -d "$WIREFALL_CACHE/.building.XXXXXX") || fail_to_write_cache
  remove_at_end "$work"

  start_log sdl
  say "this system has no SDL3 and SDL3_mixer of version 3.2 or newer; building them once from the Debian sources (a few minutes, log: $log)."
  fetch_sdl_sources
  unpack_sdl_sources
  build_sdl_sources
  remove_now
  say "SDL3 and SDL3_mixer are in $final."
}

# What building them needs besides disk space: a Debian mirror, their packages, and the keys of
# the suites, which a keyring that was never updated does not have.
require_sdl_can_be_built() {
  if ! have_package_lists; then
    start_log packages
    become_root ca-certificates
    apt_get_as_root update || fail_with_log "reading the package lists"
  fi
  [ -n "$(debian_mirror)" ] || fail_without_sdl
  install_missing packages_to_build_sdl
  for key in /usr/share/keyrings/debian-archive-"$SDL_SUITE"-*; do
    [ -e "$key" ] || install_packages debian-archive-keyring
  done
}

fail_without_sdl() {
  fail "SDL3 and SDL3_mixer of version 3.2 or newer are missing, and only on Debian can Wirefall build them; docs/building.md tells how to bring your own."
}

# The URI of the mirror this system gets Debian itself from; not the one of security updates,
# which has no other suites.
debian_mirror() {
  # shellcheck disable=SC2016 # apt-get fills these in, not the shell
  apt-get indextargets --format '$(ORIGIN)|$(LABEL)|$(REPO_URI)' 2>/dev/null |
    sed -n 's/^Debian|Debian|//p' | grep -v '^cdrom:' | head -n 1
}

# apt-get with sources, lists and cache of its own: the system's are neither used nor changed.
# Signatures are checked as ever; only their age is not, because a mirror may be kept as it was on
# some day, and the lists of a suite that is not released yet expire within a week. Root downloads
# as root here, because apt's download user may not be able to enter a folder below somebody's home.
apt_get_aside() {
  logged apt-get -q \
    -o "Dir::Etc::sourcelist=/dev/null" \
    -o "Dir::Etc::sourceparts=$work/apt/sources" \
    -o "Dir::State::lists=$work/apt/lists" \
    -o "Dir::Cache=$work/apt/cache" \
    -o "APT::Default-Release=" \
    -o "APT::Sandbox::User=root" \
    -o "APT::Update::Error-Mode=any" \
    -o "Acquire::Check-Valid-Until=false" \
    "$@"
}

fetch_sdl_sources() {
  mirror=$(debian_mirror)
  mkdir -p "$work/apt/sources" "$work/apt/lists/partial" "$work/apt/cache/archives/partial" \
    "$work/sources"
  cat >"$work/apt/sources/wirefall.sources" <<SOURCES
Types: deb-src
URIs: $mirror
Suites: $SDL_SUITE $MIXER_SUITE
Components: main
Signed-By: $DEBIAN_KEYRING
SOURCES
  say "fetching the sources of SDL3 ($SDL_SUITE) and SDL3_mixer ($MIXER_SUITE)."
  apt_get_aside update || fail_with_log "reading the Debian source lists"
  (
    cd "$work/sources" &&
      apt_get_aside source --download-only \
        "libsdl3/$SDL_SUITE" "libsdl3-mixer/$MIXER_SUITE"
  ) || fail_with_log "fetching the sources of SDL3 and SDL3_mixer"
}

# unpack_source NAME: unpack the one source package of that name into $work/NAME, and print its
# version without Debian's additions.
unpack_source() {
  for description in "$work/sources/$1"_*.dsc; do
    logged dpkg-source --extract "$description" "$work/$1" || return 1
    version=${description##*_}
    version=${version%.dsc}
    version=${version%-*}
    printf '%s\n' "${version%%+*}"
  done
}

unpack_sdl_sources() {
  sdl_version=$(unpack_source libsdl3) || fail_with_log "unpacking the sources of SDL3"
  mixer_version=$(unpack_source libsdl3-mixer) ||
    fail_with_log "unpacking the sources of SDL3_mixer"
  # The version it asks for is that of the functions which our own header provides.
  sed -i 's/^set(SDL_REQUIRED_VERSION .*)/set(SDL_REQUIRED_VERSION 3.2.0)/' \
    "$work/libsdl3-mixer/CMakeLists.txt"
  final=$WIREFALL_CACHE/sdl-$sdl_version-mixer-$mixer_version-$(sdl_recipe)
  stage=$work/stage$final
}

# cmake_install NAME OPTION...: configure, build and install $work/NAME below $work/stage, made
# for the final place. $ORIGIN lets the libraries find each other wherever they lie.
cmake_install() {
  name=$1
  shift
  # shellcheck disable=SC2016 # the dynamic linker fills in $ORIGIN, not the shell
  logged cmake -S "$work/$name" -B "$work/build-$name" -G Ninja \
    -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$final" \
    -DCMAKE_INSTALL_LIBDIR=lib \
    -DCMAKE_INSTALL_RPATH='$ORIGIN' \
    "$@" &&
    logged cmake --build "$work/build-$name" --parallel "$(number_of_jobs)" &&
    logged env DESTDIR="$work/stage" cmake --install "$work/build-$name"
}

build_sdl_sources() {
  say "building SDL3 $sdl_version."
  # shellcheck disable=SC2046 # one option a word
  cmake_install libsdl3 $(sdl_options) || fail_with_log "building SDL3"

  say "building SDL3_mixer $mixer_version."
  # shellcheck disable=SC2046 # one option a word
  cmake_install libsdl3-mixer $(mixer_options) \
    -DSDL3_DIR="$stage/lib/cmake/SDL3" \
    -DCMAKE_PROJECT_SDL3_mixer_INCLUDE="$WIREFALL_ROOT/cmake/sdl32-compat/use.cmake" ||
    fail_with_log "building SDL3_mixer"

  mv "$stage" "$final" || fail_with_log "moving SDL3 and SDL3_mixer into the cache"
}
