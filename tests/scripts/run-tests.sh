#!/bin/sh
# Tests of ./run and ./test: the real scripts, with fake commands where the system begins.
#
# usage: sh tests/scripts/run-tests.sh SOURCE-DIRECTORY
#
# Every test gets a scene: a folder with a home, a copy of the scripts, and the wishes that the
# fakes go by (fakes/). Out there is a Debian on which everything is installed but SDL3; a test
# makes it worse, runs a script and looks at what it says and leaves.
#
# WIREFALL_TEST_SHELL names the shell that runs the scripts, sh if unset.
#
# shellcheck disable=SC2034 # the cases use what seems unused here
set -u

root=$(cd "$1" && pwd -P) || exit
shell=${WIREFALL_TEST_SHELL:-sh}
fakes=$root/tests/scripts/fakes
real_home=${HOME:-}
real_cache=${XDG_CACHE_HOME:-$real_home/.cache}/wirefall

if [ "$(uname -s)" != Linux ]; then
  echo "SKIPPED: these tests are of what the scripts do on Linux"
  exit 0
fi

work=$(mktemp -d) || exit
work=$(cd "$work" && pwd -P)
trap 'umount "$work"/*/home 2>/dev/null; rm -rf "$work"' EXIT
trap 'exit 130' HUP INT TERM

# --- the stage ---------------------------------------------------------------------------------

# The scripts see nothing of this machine but the fakes and these.
real_commands="awk bash cat chmod cksum cp cut dirname env find flock grep head kill ls
  mkdir mktemp mv nproc printf rm sed setsid sh sha256sum sleep sort stat tail tee timeout touch tr uname
  uniq wc xargs"
mkdir "$work/commands"
for command in $real_commands; do
  path=$(command -v "$command")
  case $path in
  /*) ln -s "$path" "$work/commands/$command" ;;
  *) ln -s "/usr/bin/$command" "$work/commands/$command" ;;
  esac
done

tests=0
failures=0

# begin NAME: a new scene for the test of that name.
begin() {
  name=$1
  tests=$((tests + 1))
  failures_before=$failures
  scene=$work/$tests
  home=$scene/home
  tree=$scene/tree
  cache=$home/.cache/wirefall
  mkdir -p "$home" "$tree/cmake" "$scene/fakes" "$scene/tmp"
  cp "$fakes"/* "$scene/fakes"
  cp -R "$root/run" "$root/test" "$root/scripts" "$root/CMakePresets.json" "$tree"
  cp -R "$root/cmake/sdl32-compat" "$tree/cmake"
  printf '#!/bin/sh\necho "the game got: $*"\n' >"$scene/game"
  chmod +x "$scene/game"
  : >"$scene/calls"
}

# On most stages SDL is there already; building it takes time.
begin_with_sdl() {
  begin "$1"
  wish system-sdl
}

end() {
  [ -z "$player" ] || kill -s KILL -- "-$player" 2>/dev/null
  player=
  if [ "$failures" = "$failures_before" ]; then
    echo "ok   $name"
  else
    sed 's/^/     | /' "$scene/stdout" "$scene/stderr"
  fi
}

# wish NAME [LINE...]: what the fakes of this scene go by.
wish() {
  wish_file=$scene/$1
  shift
  printf '%s\n' "$@" >"$wish_file"
}

# is_gone COMMAND...: out there is no such command.
is_gone() {
  for command; do
    rm -f "$scene/fakes/$command"
  done
}

# enter_stage COMMAND...: become that command, out there, with the variables that $variables adds.
# What a shell starts in the background is deaf to SIGINT and stays so unless it is told otherwise.
variables=
enter_stage() {
  # shellcheck disable=SC2086 # one variable a word
  exec env -i --default-signal=INT PATH="$scene/fakes:$work/commands" SCENE="$scene" \
    HOME="$home" TMPDIR="$scene/tmp" $variables "$@"
}

# A script that hangs is ended after a minute, and killed after another: timeout counts the second
# one from any signal that it passes on, and on a busy machine a script takes its time to tidy up.
time_limits="-k 60 60"

# play SCRIPT ARGUMENT...: run it to its end.
play() {
  script=$1
  shift
  # shellcheck disable=SC2086 # several words
  (enter_stage timeout $time_limits "$shell" "$tree/$script" "$@") >"$scene/stdout" 2>"$scene/stderr" </dev/null
  status=$?
}

# play_behind SCRIPT ARGUMENT...: run it in a process group of its own, $player, of which nothing is
# left when the test ends.
player=
play_behind() {
  script=$1
  shift
  # shellcheck disable=SC2086 # several words
  enter_stage "$setsid" timeout --foreground $time_limits "$shell" "$tree/$script" "$@" \
    >"$scene/stdout" 2>"$scene/stderr" </dev/null &
  player=$!
}
setsid=$(command -v setsid)

# wait_for FILE: until it is there.
wait_for() {
  tries=0
  until [ -e "$1" ]; do
    tries=$((tries + 1))
    if [ "$tries" -gt 1200 ]; then
      wrong "$1 never came to be"
      return
    fi
    sleep 0.05
  done
}

# --- what is looked at -------------------------------------------------------------------------

wrong() {
  failures=$((failures + 1))
  echo "FAIL $name: $*"
}

succeeds() {
  [ "$status" = 0 ] || wrong "exit status $status"
}

# fails_saying PATTERN: the last line on stderr is a sentence of that kind.
fails_saying() {
  [ "$status" != 0 ] || wrong "exit status 0"
  sentence=$(tail -n 1 "$scene/stderr")
  case $sentence in
  "Wirefall: "*.) ;;
  *) wrong "not a sentence: $sentence" ;;
  esac
  printf '%s\n' "$sentence" | grep -qE -e "$1" || wrong "not about $1: $sentence"
}

# Nothing but the sentence is on stderr.
says_only_that() {
  [ "$(wc -l <"$scene/stderr")" = 1 ] || wrong "more than one line on stderr"
}

# The log that the sentence names is there, and has this in it.
log_has() {
  named=$(printf '%s\n' "$sentence" | sed -n 's/.*the log is \(.*\)\.$/\1/Ip')
  grep -qs -e "$1" "$named" || wrong "the log ($named) lacks $1"
}

says() {
  grep -qE -e "$1" "$scene/stdout" || wrong "stdout lacks $1"
}

# calls NUMBER PATTERN: a fake was called like that so many times.
calls() {
  called=$(grep -cE -e "$2" "$scene/calls")
  [ "$called" = "$1" ] || wrong "$called calls of $2, not $1"
}

prefixes() {
  find "$cache" -maxdepth 1 -name 'sdl-*-mixer-*' | wc -l
}

cache_has_sdl() {
  [ "$(prefixes)" = 1 ] || wrong "no SDL in the cache"
  cache_has_no_leftovers
}

cache_has_no_sdl() {
  [ "$(prefixes)" = 0 ] || wrong "a half-made SDL is in the cache"
  cache_has_no_leftovers
}

cache_has_no_leftovers() {
  leftovers=$(find "$cache" -maxdepth 1 -name '.building.*' -o -maxdepth 1 -name '.probe.*')
  [ -z "$leftovers" ] || wrong "left behind: $leftovers"
  leftovers=$(ls -A "$scene/tmp")
  [ -z "$leftovers" ] || wrong "left behind among temporary files: $leftovers"
}

for cases in "$root"/tests/scripts/cases-*.sh; do
  # shellcheck source=/dev/null
  . "$cases"
done

echo "$tests tests, $failures failures"
[ "$failures" = 0 ]
