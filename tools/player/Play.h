#pragma once

// A play: all that is done to the live run, in the order in which it is done. It is kept as text
// that a person can read and write (*.play): commands of one letter, each perhaps with a decimal
// number before it, set apart by blanks or not at all. From # to the end of the line is a comment.
//
//     u d l r    the cursor goes up, down, left, right
//     q e p      the tile in hand is turned left, turned right, put down
//     k          the press with the code that is the number (ApplyRunCommand)
//     f          fast forward is held (1f) or let go (0f)
//     t          a step of 125 ms passes: one tick, or three with fast forward
//     m          the milliseconds that the number says pass at once, as in a frame
//     n          the next level, if this one is complete
//     c          the level's target is reached by decree
//     s          a new run whose engine starts from the number (StartSeededRun)
//
// u, d, l, r, q, e, p and t are done as often as the number says. A missing number is 1.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

struct PlayCommand {
    char Letter = 't';
    std::uint32_t Number = 1;

    bool operator==(const PlayCommand&) const = default;
};

/// What is wrong with the text of a play, and in which line.
class PlayError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws PlayError.
std::vector<PlayCommand> ParsePlay(std::string_view text);

/// The text of a play, a line for each level that is played and more where one would grow long.
std::string FormatPlay(const std::vector<PlayCommand>& play);

/// Takes down what is done, in as few commands as it takes.
class PlayWriter {
public:
    /// A command that is done `number` times, or that takes the number.
    void Add(char letter, std::uint32_t number = 1);
    /// A press, by its letter if it has one.
    void AddPress(std::uint32_t code);

    const std::vector<PlayCommand>& Play() const { return Commands; }

private:
    std::vector<PlayCommand> Commands;
};

/// Does what a play says to the live run. Copies of a reader go on from the same place.
class PlayReader {
public:
    /// `play` must outlive the reader. The live run starts as at the start of the program.
    explicit PlayReader(const std::vector<PlayCommand>& play);

    /// Does all up to and with the next command that lets time pass; of a command that stands for
    /// several steps, one. False at the end of the play.
    bool RunStep();

private:
    const std::vector<PlayCommand>* Commands;
    std::size_t Next = 0;
    std::uint32_t Done = 0; ///< How often the next command has been done.
};

} // namespace Wirefall
