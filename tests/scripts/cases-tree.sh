# Tests of the scripts as they lie there, and of what they bring along for building SDL3_mixer.
# shellcheck shell=sh disable=SC2016,SC2031,SC2034,SC2154

begin "the scripts please shellcheck"
if command -v shellcheck >/dev/null; then
  cd "$root" || exit
  shellcheck --external-sources run test .ci/run scripts/*.sh tests/scripts/run-tests.sh \
    tests/scripts/cases-*.sh tests/scripts/fakes/* >"$scene/stdout" 2>"$scene/stderr"
  status=$?
  succeeds
  end
else
  echo "SKIPPED $name: shellcheck is not there"
fi

begin "SDL 3.2 is helped to what SDL3_mixer uses of a newer one"
# The real SDL, as the scripts would hand it to the build.
prefix=$(
  WIREFALL_ROOT=$root
  WIREFALL_CACHE=$real_cache
  . "$root/scripts/packages.sh"
  . "$root/scripts/build-dependencies.sh"
  cached_sdl_prefix
)
if [ -n "$prefix" ] && command -v cc >/dev/null; then
  {
    cc -std=c99 -Wall -Wextra -Werror -include "$root/cmake/sdl32-compat/sdl32_compat.h" \
      -I "$prefix/include" "$root/tests/scripts/sdl32_compat_test.c" -o "$scene/compat" \
      -L "$prefix/lib" -Wl,-rpath,"$prefix/lib" -lSDL3 &&
      "$scene/compat"
  } >"$scene/stdout" 2>"$scene/stderr"
  status=$?
  succeeds
  end
else
  echo "SKIPPED $name: there is no SDL built by ./run, or no compiler"
fi
