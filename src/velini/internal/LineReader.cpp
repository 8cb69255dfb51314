#include "velini/internal/LineReader.h"

#include "velini/Text.h"

#include <algorithm>
#include <stdexcept>

namespace velINI::Internal {
namespace {

constexpr bool IsHighSurrogate(char32_t unit) { return unit >> 10 == 0xD800 >> 10; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >> 10 == 0xDC00 >> 10; }

constexpr std::size_t EscapeDigits = 4;

// The value of a hexadecimal digit, -1 for anything else.
int DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// What four digits were read as, or where the first byte stands that is not a digit.
struct Digits {
    char32_t Unit = 0;
    std::size_t Count = 0;
};

Digits ReadDigits(std::string_view text) {
    Digits digits;
    for (; digits.Count < EscapeDigits; ++digits.Count) {
        if (digits.Count >= text.size()) {
            throw std::runtime_error("Read beyond end of file, and found invalid unicode escape "
                                     "sequence!");
        }
        const int value = DigitValue(text[digits.Count]);
        if (value < 0) {
            break;
        }
        digits.Unit = digits.Unit * 16 + static_cast<char32_t>(value);
    }
    return digits;
}

} // namespace

LineReader::LineReader(std::string_view text, std::size_t offset, std::size_t line)
    : Text(text),
      Offset(offset),
      LineFeed(text, '\n'),
      CarriageReturn(text, '\r'),
      Backslash(text, '\\'),
      Number(line),
      NumberBehind(line) {}

bool LineReader::Next() {
    LineStart = Position;
    Number = NumberBehind;
    const std::size_t end = LineFeed.From(Position);
    if (end < Text.size() && end < CarriageReturn.From(Position) &&
        end < Backslash.From(Position)) {
        Position = end + 1;
        ++NumberBehind;
        CurrentLine = Text.substr(LineStart, Position - LineStart);
        return true;
    }
    Decoded.clear();
    for (bool ended = false; !ended;) {
        const std::size_t special = std::min(
            {LineFeed.From(Position), CarriageReturn.From(Position), Backslash.From(Position)});
        Decoded.append(Text, Position, special - Position);
        Position = special;
        if (Position == Text.size()) {
            if (Decoded.empty()) {
                return false;
            }
            Decoded += '\n';
            break;
        }
        ended = DecodeSpecial(Position, Decoded);
        NumberBehind += LineEnds(special, Position);
    }
    CurrentLine = Decoded;
    return true;
}

bool LineReader::DecodeSpecial(std::size_t& position, std::string& out) const {
    const bool isLast = position + 1 == Text.size();
    const char c = Text[position];
    if (c == '\n' || (c == '\r' && !isLast)) {
        out += '\n';
        position += c == '\n' ? 1 : 2;
        return true;
    }
    if (isLast) {
        ++position;
    } else if (Text[position + 1] == 'x') {
        DecodeEscape(position, out);
    } else {
        out.append(Text, position, 2);
        position += 2;
    }
    return false;
}

void LineReader::DecodeEscape(std::size_t& position, std::string& out) const {
    const Digits first = ReadDigits(Text.substr(position + 2));
    if (first.Count < EscapeDigits) {
        out.append(Text, position + 1, 1 + first.Count);
        position += 2 + first.Count;
        return;
    }
    char32_t codePoint = first.Unit;
    std::size_t end = position + 2 + EscapeDigits;
    if (EscapeStartsAt(end)) {
        const Digits second = ReadDigits(Text.substr(end + 2));
        if (second.Count < EscapeDigits) {
            throw std::runtime_error("Invalid code point for UTF-16 low surrogate pair!");
        }
        if (IsHighSurrogate(first.Unit)) {
            if (!IsLowSurrogate(second.Unit)) {
                throw std::runtime_error("Invalid code point range for UTF-16 low surrogate pair!");
            }
            codePoint = 0x10000 + ((first.Unit & 0x3FFU) << 10 | (second.Unit & 0x3FFU));
            end += 2 + EscapeDigits;
        }
    }
    out += EncodeUtf8(codePoint);
    position = end;
}

TextPosition LineReader::PositionOf(std::size_t offset) const {
    std::size_t position = LineStart;
    std::string decoded;
    while (true) {
        const std::size_t special = std::min(Text.find_first_of("\n\r\\", position), Text.size());
        if (offset < decoded.size() + (special - position)) {
            return PositionInText(position + (offset - decoded.size()));
        }
        decoded.append(Text, position, special - position);
        std::size_t next = special;
        if (special == Text.size() || DecodeSpecial(next, decoded) || offset < decoded.size()) {
            return PositionInText(special);
        }
        position = next;
    }
}

std::size_t LineReader::LineEnds(std::size_t begin, std::size_t end) const {
    std::size_t count = 0;
    for (std::size_t i = begin; i < end; ++i) {
        if (Text[i] == '\n' || (Text[i] == '\r' && Text.substr(i + 1, 1) != "\n")) {
            ++count;
        }
    }
    return count;
}

TextPosition LineReader::PositionInText(std::size_t position) const {
    std::size_t column = 1;
    for (std::size_t i = position; i != 0 && LineEnds(i - 1, i) == 0; --i) {
        if ((static_cast<unsigned char>(Text[i - 1]) & 0xC0U) != 0x80U) {
            ++column;
        }
    }
    return {Number + LineEnds(LineStart, position), column};
}

} // namespace velINI::Internal
