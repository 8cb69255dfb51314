#!/bin/sh
# What a loss of power leaves of a run on a real file system. The game plays on an ext4 that lies in
# a file; the file is copied while it plays, as the disk would be found after a loss of power, and
# the copy is mounted and its run gone on with. Needs root, loop devices, Xvfb and xdotool.
#
# usage: sh tests/e2e/power-cuts.sh BUILD-FOLDER MOUNT-OPTIONS
#
# BUILD-FOLDER is build/release or the like, with its tests. MOUNT-OPTIONS are those of ext4:
# "defaults", or "noauto_da_alloc", with which it does not look after files that are written in place.
set -u

build=$(cd "$1" && pwd) || exit
options=$2
sessions=5
cuts_of_a_session=5

work=$(mktemp -d) || exit
mkdir "$work/disk" "$work/found"
game=
x_server=
trap 'kill -s KILL $game $x_server 2>/dev/null; umount "$work/found" "$work/disk" 2>/dev/null; rm -rf "$work"' EXIT
trap 'exit 130' HUP INT TERM

Xvfb -displayfd 3 -screen 0 1280x960x24 3>"$work/display" 2>/dev/null &
x_server=$!
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY

# Whether a start after the loss of power finds a run.
goes_on() {
  XDG_DATA_HOME=$work/found "$build/tests/persist/play_on" 1 1 >/dev/null 2>&1
}

cuts=0
empty=0
gone_on=0
for session in $(seq "$sessions"); do
  truncate -s 0 "$work/image" && truncate -s 48M "$work/image" || exit
  mkfs.ext4 -q -F "$work/image" && mount -o "loop,$options" "$work/image" "$work/disk" || exit
  XDG_DATA_HOME=$work/disk SDL_AUDIO_DRIVER=dummy "$build/Wirefall" >/dev/null 2>&1 &
  game=$!
  # A new run, as soon as the menu takes keys.
  until [ -s "$work/disk/Velkor/Wirefall/.SaveState.bin.bak" ]; do
    sleep 1
    xdotool key Return
  done
  for cut in $(seq "$cuts_of_a_session"); do
    sleep "$(awk -v seed="$session$cut" 'BEGIN { srand(seed); print 1 + 4 * rand() }')"
    cp --sparse=always "$work/image" "$work/copy"
    mount -o loop "$work/copy" "$work/found" || exit
    cuts=$((cuts + 1))
    [ -s "$work/found/Velkor/Wirefall/SaveState.bin" ] || empty=$((empty + 1))
    ! goes_on || gone_on=$((gone_on + 1))
    umount "$work/found"
  done
  kill -s KILL "$game"
  wait "$game" 2>/dev/null
  umount "$work/disk" || exit
done

echo "$options: $gone_on of $cuts runs went on; the save itself was empty $empty times"
[ "$gone_on" = "$cuts" ]
