# Tests of ./run.
# shellcheck shell=sh disable=SC2016,SC2031,SC2034,SC2154

begin_with_sdl "it starts the game and ends as the game ends"
printf '#!/bin/sh\necho "the game got: $*"\nexit 42\n' >"$scene/game"
play run -- --level 3 "a b"
[ "$status" = 42 ] || wrong "exit status $status"
says '^the game got: --level 3 a b$'
end

begin_with_sdl "where there is no display, the game gets a virtual one"
printf '#!/bin/sh\necho "display $DISPLAY"\n' >"$scene/game"
play run
succeeds
says '^display :42$'
says 'there is no display'
! kill -0 "$(cat "$scene/x-server")" 2>/dev/null || wrong "the virtual display is still there"
cache_has_no_leftovers
end

begin_with_sdl "a display that does not answer is none"
printf '#!/bin/sh\necho "display $DISPLAY"\n' >"$scene/game"
printf '#!/bin/sh\nexit 1\n' >"$scene/fakes/xdpyinfo"
chmod +x "$scene/fakes/xdpyinfo"
variables="DISPLAY=:7"
play run
variables=
says '^display :42$'
end

begin_with_sdl "a display that answers is used"
printf '#!/bin/sh\necho "display $DISPLAY"\nexit 42\n' >"$scene/game"
printf '#!/bin/sh\n' >"$scene/fakes/xdpyinfo"
chmod +x "$scene/fakes/xdpyinfo"
variables="DISPLAY=:7"
play run
variables=
[ "$status" = 42 ] || wrong "exit status $status"
says '^display :7$'
calls 0 '^Xvfb'
end

begin_with_sdl "a Wayland display without a socket is none"
printf '#!/bin/sh\necho "display $DISPLAY ${WAYLAND_DISPLAY:-unset}"\n' >"$scene/game"
variables="WAYLAND_DISPLAY=wayland-0 XDG_RUNTIME_DIR=$scene"
play run
variables=
says '^display :42 unset$'
end

begin_with_sdl "a virtual display that does not start"
wish no-virtual-display
play run
fails_saying 'starting a virtual display failed'
log_has 'Fatal server error'
cache_has_no_leftovers
end

begin_with_sdl "the packages of a virtual display are installed where it is needed"
wish not-installed xvfb
play run
calls 1 '^apt-get .*install xvfb$'
end

for signal in HUP INT TERM; do
  begin_with_sdl "the game is told when $signal ends the script"
  printf '#!/bin/sh\ntrap "exit 7" TERM\ntouch "$SCENE/playing"\nwhile true; do sleep 0.1; done\n' >"$scene/game"
  play_behind run
  wait_for "$scene/playing"
  kill -s "$signal" "$player"
  wait "$player"
  status=$?
  [ "$status" = 7 ] || wrong "exit status $status"
  ! kill -0 "$(cat "$scene/x-server")" 2>/dev/null || wrong "the virtual display is still there"
  end
done

begin_with_sdl "a signal to all leaves the display to the game until the game has ended"
cat >"$scene/game" <<'GAME'
#!/bin/sh
trap 'sleep 0.3; kill -0 "$(cat "$SCENE/x-server")" && touch "$SCENE/still-there"; exit 7' TERM
touch "$SCENE/playing"
while true; do sleep 0.1; done
GAME
play_behind run
wait_for "$scene/playing"
kill -s TERM -- "-$player"
wait "$player"
status=$?
[ "$status" = 7 ] || wrong "exit status $status"
[ -e "$scene/still-there" ] || wrong "the display was gone before the game"
end

begin "it configures for playing only, and with SDL of the cache"
play run --build
succeeds
says 'build/release/Wirefall'
calls 1 "^cmake --preset release .*CMAKE_PREFIX_PATH=$cache/sdl-3.* -DWIREFALL_BUILD_TESTS=OFF -DWIREFALL_BUILD_BENCHMARKS=OFF"
calls 1 '^cmake --build .*/build/release --target Wirefall '
end

begin_with_sdl "it leaves the tests in a folder that has them"
mkdir -p "$tree/build/release"
printf '%s\n' "CMAKE_HOME_DIRECTORY:INTERNAL=$tree" WIREFALL_BUILD_TESTS:BOOL=ON \
  >"$tree/build/release/CMakeCache.txt"
play run --build
calls 0 'WIREFALL_BUILD_TESTS=OFF'
calls 0 '^cmake --preset release --fresh'
end

begin_with_sdl "a build folder that was made elsewhere is begun afresh"
mkdir -p "$tree/build/release"
echo "CMAKE_HOME_DIRECTORY:INTERNAL=/somewhere/else" >"$tree/build/release/CMakeCache.txt"
play run --build
calls 1 '^cmake --preset release --fresh'
end

begin "the number of jobs is the user's"
variables="CMAKE_BUILD_PARALLEL_LEVEL=7"
play run --build
variables=
calls 3 '^cmake --build .*--parallel 7$'
end

begin_with_sdl "it fails to configure"
wish cannot-configure
play run
fails_saying 'configuring the preset release failed'
log_has 'something is wrong'
end

begin_with_sdl "it fails to build"
wish cannot-build
play run
fails_saying 'building the preset release failed'
log_has "expected ';'"
end

begin_with_sdl "too little disk space for the game"
wish kilobytes-free 20480
play run
fails_saying 'not enough disk space for building Wirefall: .*/tree needs [0-9]+ MB and has 20 MB'
says_only_that
[ ! -s "$scene/calls" ] || wrong "it called $(cat "$scene/calls")"
end

begin_with_sdl "a build folder that cannot be written to"
: >"$tree/build"
play run
fails_saying 'the folder .*/build/release cannot be written to'
says_only_that
end

begin_with_sdl "an argument that it does not know"
play run --bogus
fails_saying 'does not know the argument --bogus'
says_only_that
[ ! -s "$scene/calls" ] || wrong "it called $(cat "$scene/calls")"
end

begin_with_sdl "help"
play run --help
succeeds
says '^Usage: ./run'
[ ! -s "$scene/calls" ] || wrong "it called $(cat "$scene/calls")"
end
