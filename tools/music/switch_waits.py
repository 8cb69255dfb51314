#!/usr/bin/env python3
"""How often the board hears the music that its danger asks for, by the lengths of the loops.

Switches between the three pieces of the board wait for the end of the loop that plays. This plays
runs of a simple model against that rule: levels of 45 to 75 seconds, after whose grace an infection
comes up and grows into danger, while strikes fall at random; the fifth strike is danger too, the
tenth the end of the run. How soon all that comes differs from level to level. The means below are
no measurements of players; two of them, far apart, show how much depends on the player.
"""

import random

STEP = 0.05  # seconds
GRACE = 5.0
HOURS = 20
SEED = 1

# Mean seconds to an infection, from there to danger, and between strikes; and how unlike levels are.
PLAYERS = {
    "steady": {"calm": 40.0, "infection": 8.0, "strike": 10.0, "spread": 0.8},
    "pressed": {"calm": 14.0, "infection": 5.0, "strike": 5.0, "spread": 0.9},
}

# Seconds of Gameplay, Infection and Danger.
LENGTHS = [(72, 56, 54), (32, 32, 24), (32, 24, 24), (32, 20, 18), (36, 20, 18), (16, 16, 12)]


def level(chance, player):
    """The piece that is asked for, step by step; None at the end of a completed level."""
    ease = chance.lognormvariate(0, player["spread"])
    infected = GRACE + chance.expovariate(1 / (player["calm"] * ease))
    spread = infected + chance.expovariate(1 / player["infection"])
    next_strike = GRACE + chance.expovariate(1 / (player["strike"] * ease))
    strikes = 0
    time = 0.0
    length = chance.uniform(45, 75)
    while time < length:
        if time >= next_strike:
            strikes += 1
            next_strike += chance.expovariate(1 / (player["strike"] * ease))
            if strikes == 10:
                return
        if strikes >= 5 or time >= spread:
            yield "Danger"
        else:
            yield "Infection" if time >= infected else "Gameplay"
        time += STEP
    yield None


class Loop:
    """The piece that plays and where it is."""

    def __init__(self, seconds):
        self.seconds = seconds
        self.starts = dict.fromkeys(seconds, 0)
        self.begin("Gameplay")

    def begin(self, piece):
        self.piece = piece
        self.position = 0.0
        self.starts[piece] += 1

    def go_on(self, time, wanted):
        self.position += time
        if self.position >= self.seconds[self.piece]:
            self.begin(wanted)


def play(seconds, player):
    """Parts of the time on the board with the right piece, of danger with its own; starts."""
    chance = random.Random(SEED)
    loop = Loop(seconds)
    total = {}
    right = {}
    ended = True
    while sum(total.values()) < HOURS * 3600:
        if ended:
            loop.begin("Gameplay")
        else:
            loop.go_on(chance.uniform(2, 6), "Gameplay")  # the screen of a completed level
        ended = True
        for wanted in level(chance, player):
            if wanted is None:
                ended = False
                break
            total[wanted] = total.get(wanted, 0) + STEP
            right[wanted] = right.get(wanted, 0) + STEP * (wanted == loop.piece)
            loop.go_on(STEP, wanted)
    board = sum(total.values())
    starts = {piece: 60 * count / board for piece, count in loop.starts.items()}
    return sum(right.values()) / board, right["Danger"] / total["Danger"], starts


def main():
    for name, player in PLAYERS.items():
        for lengths in LENGTHS:
            seconds = dict(zip(("Gameplay", "Infection", "Danger"), lengths))
            right, danger, starts = play(seconds, player)
            print(f"{name:8} {lengths}: right {right:.0%}, in danger {danger:.0%}, starts a minute "
                  + ", ".join(f"{piece} {rate:.1f}" for piece, rate in starts.items()))


if __name__ == "__main__":
    main()
