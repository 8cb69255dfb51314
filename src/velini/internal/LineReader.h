#pragma once

// The second step of reading: line ends are made alike and \x escapes are decoded, which divides
// the text of a file into the lines that the third step understands one by one.

#include <cstddef>
#include <string>
#include <string_view>

namespace velINI::Internal {

/// Finds where a character occurs next, looking no more than once for each occurrence.
class NextOccurrence {
public:
    NextOccurrence(std::string_view text, char wanted)
        : Text(text), Wanted(wanted), Found(text.find(wanted)) {}

    /// The first one at `position` or behind it; the size of the text when there is none. Positions
    /// must not go back.
    std::size_t From(std::size_t position) {
        if (Found < position) {
            Found = Text.find(Wanted, position);
        }
        return Found < Text.size() ? Found : Text.size();
    }

private:
    std::string_view Text;
    char Wanted;
    std::size_t Found;
};

/// Where something stands in a text, as editors count: both from 1, columns in characters.
struct TextPosition {
    std::size_t Line = 0;
    std::size_t Column = 0;
};

/// Goes through a text line by line. Each line ends in a newline. A newline can also stand within a
/// line, when it came from an escape or had a backslash in front of it.
///
/// - A line feed ends a line. So does a carriage return, which takes the byte behind it with it,
///   whatever that is; as the last byte of the text it counts for nothing.
/// - `\x` and four hexadecimal digits are a UTF-16 unit, and two units can be a surrogate pair.
///   Without four digits only the backslash goes, and the rest stays as it stands.
/// - Any other backslash and the byte behind it pass together, so that this byte neither ends a
///   line nor begins an escape. As the last byte of the text a backslash counts for nothing.
class LineReader {
public:
    /// The text must stay as it is. When it is not the first part of a file, `offset` tells how
    /// many bytes are in front of it, and `line` the number of its first line.
    explicit LineReader(std::string_view text, std::size_t offset = 0, std::size_t line = 1);

    /// Moves to the first or next line; false when there is none.
    ///
    /// Raises std::runtime_error for an escape that cannot be decoded: "Read beyond end of file,
    /// and found invalid unicode escape sequence!" when the text ends before its fourth digit;
    /// "Invalid code point for UTF-16 low surrogate pair!" when `\x` follows directly behind a
    /// unit, any unit, and has no four digits; "Invalid code point range for UTF-16 low surrogate
    /// pair!" when the unit that follows directly behind a high surrogate is not a low one.
    bool Next();

    /// The line at hand, decoded. Good until the next move.
    std::string_view Line() const { return CurrentLine; }

    /// The line at hand as it stands in the text, and all that is behind it.
    std::string_view Rest() const { return Text.substr(LineStart); }

    /// Where the line at hand begins in the file.
    std::size_t Start() const { return Offset + LineStart; }

    /// The number of the line, as editors count, that is to be read next.
    std::size_t LineBehind() const { return NumberBehind; }

    /// Where the byte at `offset` of the line at hand comes from.
    TextPosition PositionOf(std::size_t offset) const;

    /// Where the escape stands that Next raised an error for.
    TextPosition ErrorPosition() const { return PositionInText(Position); }

private:
    /// Appends what the bytes at `position` mean, a line end at the most, and moves behind them.
    /// True when that ended the line.
    bool DecodeSpecial(std::size_t& position, std::string& out) const;
    void DecodeEscape(std::size_t& position, std::string& out) const;

    bool EscapeStartsAt(std::size_t position) const { return Text.substr(position, 2) == "\\x"; }

    /// How many lines end between two places of the text, as editors count.
    std::size_t LineEnds(std::size_t begin, std::size_t end) const;

    /// Of a place in the line at hand.
    TextPosition PositionInText(std::size_t position) const;

    std::string_view Text;
    std::size_t Offset;
    NextOccurrence LineFeed;
    NextOccurrence CarriageReturn;
    NextOccurrence Backslash;
    std::size_t LineStart = 0; // of the line at hand
    std::size_t Position = 0;  // of what is not read yet
    std::string_view CurrentLine;
    std::string Decoded; // the line at hand, unless it stands in the text just so

    std::size_t Number; // of the line at hand, as editors count
    std::size_t NumberBehind;
};

} // namespace velINI::Internal
