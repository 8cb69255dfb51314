# Wirefall: how the scripts speak, log and fail.
# shellcheck shell=sh

say() {
  printf 'Wirefall: %s\n' "$*"
}

# End with one sentence on stderr.
fail() {
  printf 'Wirefall: %s\n' "$*" >&2
  exit 1
}

# start_log NAME: set $log to the path of an empty log in the cache.
start_log() {
  log=$WIREFALL_CACHE/log/$1.log
  { mkdir -p "$WIREFALL_CACHE/log" && true >"$log"; } 2>/dev/null || fail_to_write_cache
}

# logged COMMAND...: run it with its chatter at the end of the log, out of the way, and in English,
# because failures are told apart by it.
logged() {
  LC_ALL=C.UTF-8 "$@" >>"$log" 2>&1 </dev/null
}

# fail_with_log WHAT [LINES]: show the last lines of the log, and say in one sentence what went
# wrong, as far as the log tells. Who runs out of disk space may be unable to log that, so the
# disks themselves are asked as well.
fail_with_log() {
  tail -n "${2:-15}" "$log" >&2
  if grep -qiE 'no space left on device|enough free space|disk quota exceeded' "$log" ||
    disk_is_full "$WIREFALL_CACHE" || disk_is_full "$WIREFALL_ROOT"; then
    fail "$1 failed because the disk is full; the log is $log."
  fi
  if grep -qE 'Temporary failure resolving|Could not resolve|[Cc]ould not connect|Unable to connect|Cannot initiate the connection|Network is unreachable|Connection (timed out|failed|refused)' "$log"; then
    fail "$1 failed because the package mirror cannot be reached; is there a network connection? The log is $log."
  fi
  fail "$1 failed; the log is $log."
}

# remove_at_end FOLDER: however this shell ends, unless remove_now came before. Not every shell
# runs the EXIT trap when a signal ends it, so signals are turned into ordinary exits.
remove_at_end() {
  folder_to_remove=$1
  trap 'ignore_signals; rm -rf "$folder_to_remove"' EXIT
  trap 'ignore_signals; exit 129' HUP
  trap 'ignore_signals; exit 130' INT
  trap 'ignore_signals; exit 143' TERM
}

# A second signal may come at once, and must not end what the first one has begun.
ignore_signals() {
  trap '' HUP INT TERM
}

remove_now() {
  rm -rf "$folder_to_remove"
  trap - EXIT HUP INT TERM
}

fail_to_write_cache() {
  if disk_is_full "$WIREFALL_CACHE"; then
    fail "the disk that holds the cache $WIREFALL_CACHE is full."
  fi
  fail "the cache $WIREFALL_CACHE cannot be written to; set HOME or XDG_CACHE_HOME to a folder that can."
}

# The megabytes free where the folder lies, or will lie.
megabytes_free_at() (
  folder=$1
  while [ ! -d "$folder" ]; do
    folder=$(dirname -- "$folder")
  done
  df -Pk "$folder" 2>/dev/null | awk 'NR == 2 { print int($4 / 1024) }'
)

disk_is_full() {
  [ "$(megabytes_free_at "$1")" = 0 ]
}

# require_space FOLDER MEGABYTES WHAT: stop before the work rather than in the middle of it.
require_space() {
  free=$(megabytes_free_at "$1")
  [ "${free:-$2}" -ge "$2" ] ||
    fail "there is not enough disk space for $3: $1 needs $2 MB and has $free MB."
}
