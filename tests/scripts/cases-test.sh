# Tests of ./test.
# shellcheck shell=sh disable=SC2016,SC2031,SC2034,SC2154

begin_with_sdl "it tests release and asan-ubsan, and ends with the closing line of each"
play test
succeeds
calls 1 '^ctest --preset release '
calls 1 '^ctest --preset asan-ubsan '
calls 2 '^cmake --build .* --target all '
calls 2 '^cmake --preset .* -DWIREFALL_BUILD_TESTS=ON'
tail -n 2 "$scene/stdout" >"$scene/end"
printf '%s\n' \
  "Wirefall: release: 100% tests passed, 0 tests failed out of 2" \
  "Wirefall: asan-ubsan: 100% tests passed, 0 tests failed out of 2" | cmp -s - "$scene/end" ||
  wrong "it ends with: $(cat "$scene/end")"
end

begin_with_sdl "it tests the presets named"
play test debug tsan
succeeds
calls 1 '^ctest --preset debug '
calls 1 '^ctest --preset tsan '
calls 2 '^ctest'
end

begin_with_sdl "a preset that there is not"
play test release bogus
fails_saying 'there is no preset bogus; the presets are release .*asan-ubsan'
says_only_that
[ ! -s "$scene/calls" ] || wrong "it called $(cat "$scene/calls")"
end

begin_with_sdl "a preset that is only there for others to build on"
play test base
fails_saying 'there is no preset base'
end

begin_with_sdl "a test that fails"
wish failing-presets release
play test
fails_saying 'these presets failed: release\.'
calls 1 '^ctest --preset asan-ubsan '
says '^Wirefall: release: 50% tests passed, 1 tests failed out of 2$'
says '^Wirefall: asan-ubsan: 100% tests passed'
end

begin_with_sdl "a build that fails"
wish cannot-build
play test debug
fails_saying 'these presets failed: debug\.'
calls 0 '^ctest'
says '^Wirefall: debug: not tested'
end

begin_with_sdl "what only the tests need is installed"
wish not-installed libgtest-dev xvfb clang
play test debug
succeeds
calls 1 '^apt-get .*install clang libgtest-dev xvfb$'
end

begin_with_sdl "help"
play test --help
succeeds
says '^Usage: ./test'
says '^release debug asan-ubsan'
[ ! -s "$scene/calls" ] || wrong "it called $(cat "$scene/calls")"
end

# begin_lint NAME: a tree of one source file, of which the preset tells how it is compiled.
begin_lint() {
  begin_with_sdl "$1"
  mkdir -p "$tree/build/lint" "$tree/src" "$tree/tests" "$tree/bench" "$tree/fuzz" "$tree/tools"
  cp "$scene/fakes/c++" "$scene/fakes/clang++"
  touch "$tree/src/One.cpp" "$tree/src/One.h"
  printf '"file": "%s/src/One.cpp"\n' "$tree" >"$tree/build/lint/compile_commands.json"
}

begin_lint "the lint holds each file against both tools, and builds nothing"
play test lint
succeeds
calls 1 '^clang-format .*src/One.cpp src/One.h$'
calls 1 '^clang-tidy .*/src/One.cpp$'
calls 0 '^cmake --build'
says '^Wirefall: lint: 2 files checked\.$'
end

begin_lint "a file that the lint finds something in"
wish findings "src/One.cpp:1:1: warning: a bad name"
play test lint
fails_saying 'the sources are not as .clang-format and .clang-tidy have them; the log is '
end

for tool in clang-format clang-tidy; do
  begin_lint "$tool ends badly without a word"
  wish "broken-$tool"
  play test lint
  fails_saying 'the sources are not as .clang-format and .clang-tidy have them; the log is '
  end
done
