#include "velini/internal/LogicalLines.h"

#include "velini/Text.h"

#include <algorithm>
#include <cstddef>
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

/// Where a character occurs next, looked up no more than once for each occurrence.
class NextOccurrence {
public:
    NextOccurrence(std::string_view text, char wanted)
        : text_(text), wanted_(wanted), found_(text.find(wanted)) {}

    /// The first one at `position` or behind it, npos when there is none. Positions must not go
    /// back.
    std::size_t From(std::size_t position) {
        if (found_ < position) {
            found_ = text_.find(wanted_, position);
        }
        return found_;
    }

private:
    std::string_view text_;
    char wanted_;
    std::size_t found_;
};

/// Writes the decoded text over the text that it reads. It never overtakes itself: nothing becomes
/// longer by decoding except the last line, which may get a newline.
class LineDecoder {
public:
    explicit LineDecoder(std::string& text) : text_(text), size_(text.size()) {
        text_.resize(size_ + 1);
        constexpr std::size_t ShortLine = 32;
        lines_.reserve(size_ / ShortLine + 1);
    }

    std::vector<std::string_view> Decode() {
        const std::string_view source(text_.data(), size_);
        NextOccurrence lineFeed(source, '\n');
        NextOccurrence carriageReturn(source, '\r');
        NextOccurrence backslash(source, '\\');
        while (in_ < size_) {
            CopyUpTo(std::min(
                {size_, lineFeed.From(in_), carriageReturn.From(in_), backslash.From(in_)}));
            if (in_ < size_) {
                DecodeSpecial();
            }
        }
        if (out_ != lineStart_) {
            EndLine();
        }
        return std::move(lines_);
    }

private:
    void EndLine() {
        text_[out_++] = '\n';
        lines_.emplace_back(text_.data() + lineStart_, out_ - lineStart_);
        lineStart_ = out_;
    }

    void CopyUpTo(std::size_t end) {
        if (in_ != out_) {
            std::char_traits<char>::move(text_.data() + out_, text_.data() + in_, end - in_);
        }
        out_ += end - in_;
        in_ = end;
    }

    void DecodeSpecial() {
        const bool isLast = in_ + 1 == size_;
        switch (text_[in_]) {
        case '\n':
            EndLine();
            ++in_;
            break;
        case '\r':
            if (!isLast) {
                EndLine();
            }
            in_ += isLast ? 1 : 2;
            break;
        default:
            if (isLast) {
                ++in_;
            } else if (text_[in_ + 1] == 'x') {
                DecodeEscape();
            } else {
                CopyUpTo(in_ + 2);
            }
            break;
        }
    }

    bool EscapeStartsAt(std::size_t position) const {
        return position + 1 < size_ && text_[position] == '\\' && text_[position + 1] == 'x';
    }

    /// What four digits were read as, or where the first byte stands that is not a digit.
    struct Digits {
        char32_t Unit = 0;
        std::size_t Count = 0;
    };

    Digits ReadDigits(std::size_t position) const {
        Digits digits;
        for (; digits.Count < EscapeDigits; ++digits.Count) {
            if (position + digits.Count >= size_) {
                throw std::runtime_error("Read beyond end of file, and found invalid unicode "
                                         "escape sequence!");
            }
            const int value = DigitValue(text_[position + digits.Count]);
            if (value < 0) {
                break;
            }
            digits.Unit = digits.Unit * 16 + static_cast<char32_t>(value);
        }
        return digits;
    }

    void DecodeEscape() {
        const Digits first = ReadDigits(in_ + 2);
        if (first.Count < EscapeDigits) {
            ++in_;
            CopyUpTo(in_ + 1 + first.Count);
            return;
        }
        const std::size_t behindFirst = in_ + 2 + EscapeDigits;
        if (!EscapeStartsAt(behindFirst)) {
            Emit(first.Unit, behindFirst);
            return;
        }
        const Digits second = ReadDigits(behindFirst + 2);
        if (second.Count < EscapeDigits) {
            throw std::runtime_error("Invalid code point for UTF-16 low surrogate pair!");
        }
        if (first.Unit < FirstHighSurrogate || first.Unit > LastHighSurrogate) {
            Emit(first.Unit, behindFirst);
            return;
        }
        if (second.Unit < FirstLowSurrogate || second.Unit > LastLowSurrogate) {
            throw std::runtime_error("Invalid code point range for UTF-16 low surrogate pair!");
        }
        Emit((first.Unit - FirstHighSurrogate) * 0x400 + (second.Unit - FirstLowSurrogate) +
                 0x10000,
             behindFirst + 2 + EscapeDigits);
    }

    void Emit(char32_t codePoint, std::size_t next) {
        const std::string bytes = EncodeUtf8(codePoint);
        bytes.copy(text_.data() + out_, bytes.size());
        out_ += bytes.size();
        in_ = next;
    }

    std::string& text_;
    std::size_t size_; // of the text as it was
    std::size_t in_ = 0;
    std::size_t out_ = 0;
    std::size_t lineStart_ = 0;
    std::vector<std::string_view> lines_;
};

} // namespace

std::vector<std::string_view> DecodeLines(std::string& text) { return LineDecoder(text).Decode(); }

} // namespace velINI::Internal
