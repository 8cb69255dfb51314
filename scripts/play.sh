# Wirefall: start the game, on the display there is or on a virtual one.
# shellcheck shell=sh disable=SC2154

# Only Unix without a desktop of its own kind can be without a display. An X server is asked when
# a program for that is there; otherwise its socket has to do.
have_display() {
  case $(uname -s) in
  Linux | *BSD) have_wayland_display || have_x11_display ;;
  esac
}

have_wayland_display() {
  case ${WAYLAND_DISPLAY:-} in
  '') return 1 ;;
  /*) [ -S "$WAYLAND_DISPLAY" ] ;;
  *) [ -S "${XDG_RUNTIME_DIR:-}/$WAYLAND_DISPLAY" ] ;;
  esac
}

have_x11_display() {
  [ -n "${DISPLAY:-}" ] || return 1
  if command -v xdpyinfo >/dev/null; then
    timeout 10 xdpyinfo >/dev/null 2>&1
    return
  fi
  case $DISPLAY in
  :*)
    number=${DISPLAY#:}
    [ -S "/tmp/.X11-unix/X${number%%.*}" ]
    ;;
  esac
}

# play COMMAND...: end as the game ends.
play() {
  if have_display; then
    exec "$@"
  fi
  play_on_virtual_display "$@"
}

play_on_virtual_display() {
  start_virtual_display
  say "there is no display; the game is running on the virtual display $DISPLAY (Ctrl-C ends it)."
  # Neither the game nor the X server may outlive this script. A shell starts what it runs in
  # the background deaf to Ctrl-C, so whatever ends us is passed on as the ordinary request
  # to end, also where it comes before we know whom to pass it to.
  game=
  told_to_end=
  trap 'told_to_end=yes; [ -z "$game" ] || kill "$game" 2>/dev/null' HUP INT TERM
  "$@" <&0 &
  game=$!
  [ -z "$told_to_end" ] || kill "$game" 2>/dev/null
  wait "$game"
  status=$?
  # A signal ends the waiting, but the game has to do so itself.
  while kill -0 "$game" 2>/dev/null; do
    wait "$game"
    status=$?
  done
  exit "$status"
}

# Xvfb picks a free number and writes it down as soon as it takes connections. In a session of its
# own it does not hear the Ctrl-C, so that the game can end before its display does.
start_virtual_display() {
  start_log virtual-display
  number_file=$(mktemp) || fail "no temporary file can be made."
  $(command -v setsid) Xvfb -displayfd 3 -screen 0 1280x960x24 -nolisten tcp 3>"$number_file" >>"$log" 2>&1 &
  x_server=$!
  trap 'ignore_signals; kill "$x_server" 2>/dev/null; wait "$x_server"; rm -f "$number_file"' EXIT
  trap 'ignore_signals; exit 130' HUP INT TERM
  tries=0
  until [ -s "$number_file" ]; do
    tries=$((tries + 1))
    if [ "$tries" -gt 100 ] || ! kill -0 "$x_server" 2>/dev/null; then
      fail_with_log "starting a virtual display"
    fi
    sleep 0.1
  done
  DISPLAY=:$(cat "$number_file")
  export DISPLAY
  unset WAYLAND_DISPLAY
}
