#!/bin/sh
# Plays the runs that docs/balance.md tells of, and leaves what comes of them in a folder for
# plot_balance.py. Takes about ten minutes of one core.
set -eu

[ $# -eq 2 ] || {
  echo "Usage: study.sh WIREFALL_PLAYER FOLDER" >&2
  exit 1
}
player=$1
mkdir -p "$2"
cd "$2"

"$player" --runs 100 --last-level 120 --csv perfect.csv --levels perfect-levels.csv >perfect.txt
"$player" --style person --runs 100 --csv person.csv --levels person-levels.csv \
  --infection person-infection.csv >person.txt
for pace in 2 3 4 6 8 10 12 16 20; do
  "$player" --style person --presses $pace --runs 50 --last-level 60 --csv "pace-$pace.csv" \
    >"pace-$pace.txt"
done
for delay in 0 700 1500 3000; do
  "$player" --style person --delay $delay --runs 50 --csv "delay-$delay.csv" >"delay-$delay.txt"
done
