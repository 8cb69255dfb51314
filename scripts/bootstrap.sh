# Wirefall: make sure that everything needed to build is there.
# shellcheck shell=sh
#
# The caller sets WIREFALL_ROOT, sources this file and calls bootstrap, which sets
# WIREFALL_CACHE and WIREFALL_PREFIX.

# shellcheck source=scripts/messages.sh
. "$WIREFALL_ROOT/scripts/messages.sh"
# shellcheck source=scripts/packages.sh
. "$WIREFALL_ROOT/scripts/packages.sh"
# shellcheck source=scripts/build-dependencies.sh
. "$WIREFALL_ROOT/scripts/build-dependencies.sh"
# shellcheck source=scripts/find-sdl.sh
. "$WIREFALL_ROOT/scripts/find-sdl.sh"

# bootstrap COMPILER LIST...: install what is missing of the named lists of packages, check the
# tools, and find SDL3 and SDL3_mixer or build them. WIREFALL_PREFIX is the folder they are in,
# or empty where CMake finds them by itself.
bootstrap() {
  compiler=$1
  shift
  open_cache
  recall_sdl
  if is_debian; then
    [ "$sdl_is" = found ] || require_space_for_sdl
    [ "$sdl_is" != cached ] || set -- "$@" packages_to_build_sdl
    install_missing "$@"
  fi
  require_tools
  require_compiler "$compiler"
  provide_sdl
}

open_cache() {
  case ${XDG_CACHE_HOME:-} in
  /*) WIREFALL_CACHE=$XDG_CACHE_HOME/wirefall ;;
  *)
    [ -n "${HOME:-}" ] ||
      fail "HOME is not set, and Wirefall keeps what it builds below it; set HOME to a folder of yours."
    WIREFALL_CACHE=$HOME/.cache/wirefall
    ;;
  esac
  { mkdir -p "$WIREFALL_CACHE" && [ -w "$WIREFALL_CACHE" ]; } 2>/dev/null || fail_to_write_cache
}

is_debian() {
  command -v apt-get >/dev/null && command -v dpkg-query >/dev/null
}

# missing_packages LIST...: print the packages of these lists that are not installed.
missing_packages() {
  wanted=$(for list; do "$list"; done | sort -u)
  # shellcheck disable=SC2016,SC2086 # dpkg-query fills in the format; one package a word
  installed=$(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null |
    sed -n 's/^installed //p' | sort -u)
  # What is wanted and not installed is what comes only once.
  printf '%s\n' "$wanted" "$installed" | grep . | sort | uniq -u
}

install_missing() {
  missing=$(missing_packages "$@")
  # shellcheck disable=SC2086 # one package a word
  [ -z "$missing" ] || install_packages $missing
}

install_packages() {
  start_log packages
  become_root "$@"
  say "installing the Debian packages $* (log: $log)."
  # Reading the lists fails when any of the system's sources does, be it one that matters to
  # nobody here; the installation will show.
  have_package_lists || apt_get_as_root update
  # Lists may be so old that they name what the mirror no longer has.
  apt_install "$@" || { apt_get_as_root update; apt_install "$@"; } ||
    fail_with_log "installing the packages $*"
}

have_package_lists() {
  [ -n "$(find /var/lib/apt/lists -maxdepth 1 -name '*_Packages*' 2>/dev/null)" ]
}

apt_install() {
  apt_get_as_root --no-install-recommends install "$@"
}

apt_get_as_root() {
  # shellcheck disable=SC2086 # no word when we are root already
  logged $as_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
    apt-get -q -y -o DPkg::Lock::Timeout=120 "$@"
}

# become_root PACKAGE...: set $as_root to what makes a command run as root. sudo may ask for the
# password, if there is somebody to ask.
become_root() {
  as_root=
  [ "$(id -u)" != 0 ] || return 0
  as_root=sudo
  if command -v sudo >/dev/null; then
    sudo -n true 2>/dev/null && return
    [ -t 0 ] && sudo -v && return
  fi
  fail "installing packages takes root or sudo, and neither is there; have somebody install these Debian packages: $*."
}

require_tools() {
  command -v cmake >/dev/null || fail_without "CMake 3.25 or newer"
  case $(cmake --version 2>&1) in
  "cmake version "[012].* | "cmake version 3."[0-9].* | "cmake version 3."1[0-9].* | "cmake version 3."2[0-4].*)
    fail_without "CMake 3.25 or newer"
    ;;
  esac
  command -v ninja >/dev/null || fail_without Ninja
}

# require_compiler COMMAND: the C++ library is a package of its own and easily forgotten, so one
# of its headers is asked for.
require_compiler() {
  # shellcheck disable=SC2086 # the command may have arguments
  printf '#include <version>\n' |
    $1 -std=c++20 -fsyntax-only -x c++ - >/dev/null 2>&1 ||
    fail_without "a working compiler of C++20, $1,"
}

fail_without() {
  if is_debian; then
    fail "$1 is missing although its package is installed; docs/building.md lists what Wirefall needs."
  fi
  fail "$1 is missing, and only on Debian can Wirefall install what it needs; docs/building.md lists it."
}

number_of_jobs() {
  echo "${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc 2>/dev/null || getconf _NPROCESSORS_ONLN)}"
}
