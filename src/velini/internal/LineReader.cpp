#include "velini/internal/LineReader.h"

#include "velini/Text.h"

#include <algorithm>
#include <stdexcept>

namespace velINI::Internal {
namespace {

constexpr char32_t FirstHighSurrogate = 0xD800;
constexpr char32_t LastHighSurrogate = 0xDBFF;
constexpr char32_t FirstLowSurrogate = 0xDC00;
constexpr char32_t LastLowSurrogate = 0xDFFF;

constexpr std::size_t EscapeDigits = 4;

/// The value of a hexadecimal digit, -1 for anything else.
int DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// What four digits were read as, or where the first byte stands that is not a digit.
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
    : text_(text),
      offset_(offset),
      firstLine_(line),
      lineFeed_(text, '\n'),
      carriageReturn_(text, '\r'),
      backslash_(text, '\\'),
      countedPosition_{line, 1},
      linePosition_{line, 1} {}

bool LineReader::Next() {
    start_ = position_;
    const std::size_t end = lineFeed_.From(position_);
    if (end < text_.size() && end < carriageReturn_.From(position_) &&
        end < backslash_.From(position_)) {
        position_ = end + 1;
        line_ = text_.substr(start_, position_ - start_);
        return true;
    }
    decoded_.clear();
    for (bool ended = false; !ended;) {
        const std::size_t special =
            std::min({lineFeed_.From(position_), carriageReturn_.From(position_),
                      backslash_.From(position_)});
        decoded_.append(text_, position_, special - position_);
        position_ = special;
        if (position_ == text_.size()) {
            if (decoded_.empty()) {
                return false;
            }
            decoded_ += '\n';
            break;
        }
        ended = DecodeSpecial(position_, decoded_);
    }
    line_ = decoded_;
    return true;
}

bool LineReader::DecodeSpecial(std::size_t& position, std::string& out) const {
    const bool isLast = position + 1 == text_.size();
    const char c = text_[position];
    if (c == '\n' || (c == '\r' && !isLast)) {
        out += '\n';
        position += c == '\n' ? 1 : 2;
        return true;
    }
    if (isLast) {
        ++position;
    } else if (text_[position + 1] == 'x') {
        DecodeEscape(position, out);
    } else {
        out.append(text_, position, 2);
        position += 2;
    }
    return false;
}

void LineReader::DecodeEscape(std::size_t& position, std::string& out) const {
    const Digits first = ReadDigits(text_.substr(position + 2));
    if (first.Count < EscapeDigits) {
        out.append(text_, position + 1, 1 + first.Count);
        position += 2 + first.Count;
        return;
    }
    char32_t codePoint = first.Unit;
    std::size_t end = position + 2 + EscapeDigits;
    if (EscapeStartsAt(end)) {
        const Digits second = ReadDigits(text_.substr(end + 2));
        if (second.Count < EscapeDigits) {
            throw std::runtime_error("Invalid code point for UTF-16 low surrogate pair!");
        }
        if (first.Unit >= FirstHighSurrogate && first.Unit <= LastHighSurrogate) {
            if (second.Unit < FirstLowSurrogate || second.Unit > LastLowSurrogate) {
                throw std::runtime_error("Invalid code point range for UTF-16 low surrogate pair!");
            }
            codePoint = (first.Unit - FirstHighSurrogate) * 0x400 +
                        (second.Unit - FirstLowSurrogate) + 0x10000;
            end += 2 + EscapeDigits;
        }
    }
    out += EncodeUtf8(codePoint);
    position = end;
}

TextPosition LineReader::PositionOf(std::size_t offset) {
    if (lineCounted_ != start_) {
        linePosition_ = PositionInText(start_);
        lineCounted_ = start_;
    }
    std::size_t position = start_;
    std::string decoded;
    while (true) {
        const std::size_t special = std::min(text_.find_first_of("\n\r\\", position), text_.size());
        if (offset < decoded.size() + (special - position)) {
            return PositionInText(position + (offset - decoded.size()));
        }
        decoded.append(text_, position, special - position);
        std::size_t next = special;
        if (special == text_.size() || DecodeSpecial(next, decoded) || offset < decoded.size()) {
            return PositionInText(special);
        }
        position = next;
    }
}

std::size_t LineReader::LineBehind() {
    if (text_.find('\r') != std::string_view::npos) {
        return PositionInText(text_.size()).Line;
    }
    return firstLine_ + static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n'));
}

TextPosition LineReader::PositionInText(std::size_t position) {
    if (position < counted_) {
        const bool isBehindLine = lineCounted_ <= position;
        counted_ = isBehindLine ? lineCounted_ : 0;
        countedPosition_ = isBehindLine ? linePosition_ : TextPosition{firstLine_, 1};
    }
    for (; counted_ < position; ++counted_) {
        const char c = text_[counted_];
        if (c == '\n' || (c == '\r' && text_.substr(counted_ + 1, 1) != "\n")) {
            countedPosition_ = {countedPosition_.Line + 1, 1};
        } else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
            ++countedPosition_.Column;
        }
    }
    return countedPosition_;
}

} // namespace velINI::Internal
