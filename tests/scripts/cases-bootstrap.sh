# Tests of what ./run and ./test do before they build the game.
# shellcheck shell=sh disable=SC2016,SC2031,SC2034,SC2154

begin "the first run builds SDL and keeps it"
play run --prepare
succeeds
cache_has_sdl
[ "$(cat "$scene/stdout")" = "$(echo "$cache"/sdl-3.2.10-mixer-3.2.4-*)" ] ||
  wrong "stdout is not the folder of SDL"
calls 1 '^apt-get .* update'
calls 1 '^apt-get .*source --download-only libsdl3/trixie libsdl3-mixer/forky'
calls 0 '^apt-get .*install'
end

begin "its second run finds everything there"
play run --prepare
: >"$scene/calls"
play run --prepare
succeeds
[ "$(cat "$scene/stdout")" = "$(echo "$cache"/sdl-3.2.10-mixer-3.2.4-*)" ] ||
  wrong "stdout is not the folder of SDL"
[ ! -s "$scene/calls" ] || wrong "it called $(cat "$scene/calls")"
end

begin "sources are fetched aside, and signatures checked"
play run --prepare
succeeds
calls 0 'apt-get .*([Ii]nsecure|[Uu]nauthenticated|[Tt]rusted)'
grep -E '^apt-get .*(update|source)' "$scene/calls" |
  grep -vE 'sourcelist=/dev/null .*sourceparts=[^ ]*/\.building\.[^ ]* .*State::lists=[^ ]*/\.building\.[^ ]* .*Cache=[^ ]*/\.building\.' &&
  wrong "apt-get used what is the system's"
end

begin "SDL of the system comes first"
wish system-sdl
play run --prepare
succeeds
[ "$(cat "$scene/stdout")" = "" ] || wrong "it names a folder: $(cat "$scene/stdout")"
[ "$(prefixes)" = 0 ] || wrong "it built SDL"
calls 0 '^apt-get'
cache_has_no_leftovers
end

begin "a search for SDL is repeated where the user has another one looked at"
wish system-sdl
play run --prepare
rm "$scene/system-sdl"
mkdir -p "$scene/mine/lib"
variables="CMAKE_PREFIX_PATH=$scene/mine"
play run --prepare
cache_has_sdl
wish system-sdl
mkdir -p "$scene/mine/lib/cmake"
play run --prepare
variables=
succeeds
[ "$(cat "$scene/stdout")" = "" ] || wrong "it overlooked the user's SDL"
end

begin "what is missing is installed, and nothing else"
wish not-installed ninja-build libdecor-0-dev xvfb
play run --prepare
succeeds
calls 1 '^apt-get .*--no-install-recommends install ninja-build$'
calls 1 '^apt-get .*--no-install-recommends install libdecor-0-dev$'
calls 0 '^apt-get .*install.*xvfb'
cache_has_sdl
end

begin "packages that went missing later are installed again"
play run --prepare
wish not-installed libdecor-0-dev
play run --prepare
calls 1 '^apt-get .*install libdecor-0-dev$'
end

begin "stale package lists are read again"
wish not-installed cmake
wish stale-lists
play run --prepare
succeeds
end

begin "a broken source that nothing is needed from"
wish system-sdl
wish not-installed cmake
wish stale-lists
wish broken-source
play run --prepare
succeeds
end

begin "no network for packages"
wish not-installed g++
wish no-network
play run
fails_saying 'package mirror cannot be reached'
log_has 'Temporary failure'
end

begin "no network for sources"
wish no-network
play run
fails_saying 'package mirror cannot be reached'
log_has 'Temporary failure'
cache_has_no_sdl
end

begin "a package that is not to be had"
wish not-installed g++
wish no-such-package
play run
fails_saying 'installing the packages g\+\+ failed'
log_has 'Unable to locate'
end

begin "no mirror of Debian"
wish no-mirror
play run
fails_saying 'SDL3 and SDL3_mixer .* missing.*docs/building\.md'
says_only_that
cache_has_no_sdl
end

begin "neither root nor sudo"
wish not-installed g++ ninja-build
wish user-id 1000
play run
fails_saying 'root or sudo.*: g\+\+ ninja-build\.'
says_only_that
calls 0 '^apt-get .*install'
end

begin "sudo that nobody can give a password to"
wish not-installed g++
wish user-id 1000
printf '#!/bin/sh\nexit 1\n' >"$scene/fakes/sudo"
chmod +x "$scene/fakes/sudo"
play run
fails_saying 'root or sudo.*: g\+\+\.'
says_only_that
end

begin "sudo"
wish not-installed g++
wish user-id 1000
printf '#!/bin/sh\necho "sudo $*" >>"$SCENE/calls"\n[ "$1" != -n ] || exit 0\nexec "$@"\n' >"$scene/fakes/sudo"
chmod +x "$scene/fakes/sudo"
play run --prepare
succeeds
calls 1 '^sudo .*apt-get .*install g\+\+$'
calls 1 '^apt-get .*install g\+\+$'
end

begin "no compiler that works"
wish broken-compiler
play run
fails_saying 'compiler of C\+\+20, c\+\+, is missing although'
says_only_that
end

begin "no compiler, and no Debian"
is_gone apt-get dpkg-query c++
play run
fails_saying 'compiler of C\+\+20, c\+\+, is missing, and only on Debian.*docs/building\.md'
says_only_that
end

begin "a compiler by another name"
is_gone c++
printf '#!/bin/sh\necho "mine $*" >>"$SCENE/calls"\n' >"$scene/fakes/my-c++"
chmod +x "$scene/fakes/my-c++"
variables="CXX=my-c++"
play run --prepare
variables=
succeeds
calls 1 '^mine'
end

begin "no Ninja, and no Debian"
is_gone apt-get dpkg-query ninja
play run
fails_saying 'Ninja is missing, and only on Debian'
says_only_that
end

begin "no CMake, and no Debian"
is_gone apt-get dpkg-query cmake
play run
fails_saying 'CMake 3\.25 or newer is missing, and only on Debian'
says_only_that
end

for version in 2.8.12 3.9.6 3.18.4 3.24.4; do
  begin "CMake $version is too old"
  wish cmake-version "cmake version $version"
  play run
  fails_saying 'CMake 3\.25 or newer is missing'
  says_only_that
  end
done

for version in 3.25.1 3.26.0-rc2 3.31.6 4.0.3; do
  begin "CMake $version is new enough"
  wish cmake-version "cmake version $version"
  play run --prepare
  succeeds
  end
done

begin "no SDL, and no Debian"
is_gone apt-get dpkg-query
printf '#!/bin/sh\necho "not here" >&2\nexit 127\n' >"$scene/fakes/sha256sum"
chmod +x "$scene/fakes/sha256sum"
play run
fails_saying 'SDL3 and SDL3_mixer .* missing, and only on Debian.*docs/building\.md'
says_only_that
end

begin "no HOME"
home=
play run
fails_saying 'HOME is not set'
says_only_that
end

begin "a HOME that cannot be written to"
home=/dev/null
play run
fails_saying 'the cache /dev/null/\.cache/wirefall cannot be written to'
says_only_that
end

begin "a cache elsewhere"
home=/dev/null
cache=$scene/elsewhere/wirefall
variables="XDG_CACHE_HOME=$scene/elsewhere"
play run --prepare
variables=
succeeds
cache_has_sdl
end

begin "a HOME with blanks in its name"
home="$scene/the home"
cache=$home/.cache/wirefall
mkdir "$home"
play run --prepare
succeeds
cache_has_sdl
end

begin "too little disk space to begin"
wish kilobytes-free 20480
play run --prepare
fails_saying 'not enough disk space for building SDL3 and SDL3_mixer: .*/\.cache/wirefall needs [0-9]+ MB and has 20 MB'
says_only_that
cache_has_no_sdl
end

begin "a disk that fills up meanwhile"
wish disk-full-message
play run
fails_saying 'disk is full'
log_has 'No space left'
cache_has_no_sdl
end

begin "a disk so full that not even the log can say so"
if mount -t tmpfs -o size=4m tmpfs "$home" 2>/dev/null; then
  wish fill-disk
  rm "$scene/fakes/df"
  ln -s "$(command -v df)" "$scene/fakes/df"
  sed -i 's/^SDL_BUILD_MEGABYTES=.*/SDL_BUILD_MEGABYTES=1/' "$tree/scripts/build-dependencies.sh"
  play run
  fails_saying 'failed'
  cache_has_no_sdl
  [ "$(($(stat -f -c '%a * %S' "$home")))" -gt 3000000 ] || wrong "the disk is still full"
  umount "$home"
  end
else
  echo "SKIPPED $name: this needs the right to mount"
fi

for signal in HUP INT TERM; do
  begin "interrupted by $signal, it leaves nothing half-made"
  wish hang
  play_behind run
  wait_for "$scene/hanging"
  kill -s "$signal" -- "-$player"
  wait "$player"
  status=$?
  [ "$status" != 0 ] || wrong "exit status 0"
  cache_has_no_sdl
  end
done

begin "killed, it leaves nothing that the next run takes for whole"
wish hang
play_behind run
wait_for "$scene/hanging"
kill -s KILL -- "-$player"
wait "$player" 2>/dev/null
rm "$scene/hang"
[ "$(prefixes)" = 0 ] || wrong "a half-made SDL is in the cache"
play run --prepare
succeeds
cache_has_sdl
end

begin "two runs at once build SDL once"
wish seconds 1
play_behind run --prepare
# shellcheck disable=SC2086 # several words
enter_stage timeout $time_limits "$shell" "$tree/run" --prepare >"$scene/second" 2>&1 </dev/null &
second=$!
wait "$player"
status=$?
succeeds
wait "$second"
status=$?
succeeds
cat "$scene/second" >>"$scene/stdout"
cache_has_sdl
calls 1 '^cmake --build .*/build-libsdl3 '
end
