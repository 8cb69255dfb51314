# Wirefall: the Debian packages that building, playing and testing need.
# shellcheck shell=sh
#
# One package a line. A function prints each list, because a POSIX shell has no arrays.

# What building the game needs.
packages_to_build() {
  cat <<'LIST'
cmake
g++
ninja-build
LIST
}

# What showing the game on a virtual display needs.
packages_to_play_without_display() {
  cat <<'LIST'
libegl1
libgl1
libgl1-mesa-dri
xvfb
LIST
}

# What building SDL3 and SDL3_mixer needs, where the system has no packages of them.
packages_to_build_sdl() {
  cat <<'LIST'
ca-certificates
cmake
debian-archive-keyring
dpkg-dev
g++
libasound2-dev
libdbus-1-dev
libdecor-0-dev
libdrm-dev
libegl-dev
libflac-dev
libgbm-dev
libgl-dev
libgles-dev
libibus-1.0-dev
libmpg123-dev
libogg-dev
libopus-dev
libopusfile-dev
libpipewire-0.3-dev
libpulse-dev
libudev-dev
libvorbis-dev
libwayland-dev
libx11-dev
libxcursor-dev
libxext-dev
libxfixes-dev
libxi-dev
libxinerama-dev
libxkbcommon-dev
libxrandr-dev
libxss-dev
libxtst-dev
ninja-build
pkg-config
wayland-protocols
xz-utils
LIST
}

# What the tests need besides the packages to build and to play without a display.
packages_to_test() {
  cat <<'LIST'
clang
clang-format
clang-tidy
jwm
libbenchmark-dev
libclang-rt-dev
libflac-dev
libgmock-dev
libgtest-dev
libinih-dev
libmsgpack-cxx-dev
libogg-dev
libpng-dev
libsimpleini-dev
libvorbis-dev
libx11-dev
libxrandr-dev
llvm
nlohmann-json3-dev
shellcheck
x11-utils
xdotool
LIST
}
