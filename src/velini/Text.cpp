#include "velini/Text.h"

#include <array>
#include <cstddef>
#include <stdexcept>

namespace velINI {
namespace {

constexpr char32_t LastCodePoint = 0x10FFFF;

// What becomes of an ASCII byte: the letter behind the backslash, or one of the two below.
constexpr char Itself = 0;
constexpr char AsDigits = 1;

constexpr std::array<char, 128> MakeEscapes() {
    std::array<char, 128> escapes{};
    for (std::size_t byte = 0; byte <= 30; ++byte) {
        escapes[byte] = AsDigits;
    }
    escapes['\b'] = 'b';
    escapes['\t'] = 't';
    escapes['\n'] = 'n';
    escapes['\v'] = 'v';
    escapes['\f'] = 'f';
    escapes['\r'] = 'r';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    return escapes;
}

constexpr std::array<char, 128> Escapes = MakeEscapes();

// The forms of the first byte of a longer sequence.
struct SequenceForm {
    unsigned Mask;
    unsigned Lead;
    std::size_t Followers;
};

constexpr std::array<SequenceForm, 3> SequenceForms = {{
    {0xE0, 0xC0, 1},
    {0xF0, 0xE0, 2},
    {0xF8, 0xF0, 3},
}};

[[noreturn]] void RaiseInvalidSequence() { throw std::runtime_error("Invalid UTF-8 sequence!"); }

// Decodes the sequence at `position` and moves behind it.
char32_t DecodeSequence(std::string_view text, std::size_t& position) {
    const unsigned lead = static_cast<unsigned char>(text[position]);
    for (const SequenceForm& form : SequenceForms) {
        if ((lead & form.Mask) != form.Lead) {
            continue;
        }
        if (text.size() - position <= form.Followers) {
            RaiseInvalidSequence();
        }
        char32_t codePoint = lead & ~form.Mask;
        for (std::size_t i = 1; i <= form.Followers; ++i) {
            const unsigned follower = static_cast<unsigned char>(text[position + i]);
            if ((follower & 0xC0U) != 0x80U) {
                RaiseInvalidSequence();
            }
            codePoint = codePoint << 6 | (follower & 0x3FU);
        }
        position += form.Followers + 1;
        return codePoint;
    }
    RaiseInvalidSequence();
}

// `\x` and the value in lower case: four digits, or the six of what is more than a code point.
void AppendDigits(std::string& out, char32_t value) {
    out += "\\x";
    for (int shift = value > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) {
        out += "0123456789abcdef"[value >> shift & 0xF];
    }
}

void AppendCodePoint(std::string& out, char32_t codePoint) {
    if (codePoint < 0x10000 || codePoint > LastCodePoint) {
        AppendDigits(out, codePoint);
        return;
    }
    AppendDigits(out, 0xD800 + ((codePoint - 0x10000) >> 10));
    AppendDigits(out, 0xDC00 + ((codePoint - 0x10000) & 0x3FF));
}

} // namespace

std::vector<std::string> SplitTokens(std::string_view text, std::string_view delimiters) {
    std::vector<std::string> tokens;
    std::size_t begin = text.find_first_not_of(delimiters);
    while (begin != std::string_view::npos) {
        const std::size_t end = text.find_first_of(delimiters, begin);
        tokens.emplace_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(delimiters, end);
    }
    if (tokens.empty()) {
        tokens.emplace_back(text);
    }
    return tokens;
}

std::string EncodeUtf8(char32_t codePoint) {
    const auto follower = [codePoint](unsigned shift) {
        return static_cast<char>(0x80 | (codePoint >> shift & 0x3F));
    };
    if (codePoint < 0x80) {
        return {static_cast<char>(codePoint)};
    }
    if (codePoint < 0x800) {
        return {static_cast<char>(0xC0 | codePoint >> 6), follower(0)};
    }
    if (codePoint < 0x10000) {
        return {static_cast<char>(0xE0 | codePoint >> 12), follower(6), follower(0)};
    }
    if (codePoint <= LastCodePoint) {
        return {static_cast<char>(0xF0 | codePoint >> 18), follower(12), follower(6), follower(0)};
    }
    return {};
}

std::string EscapeText(std::string_view text) {
    std::string escaped;
    AppendEscaped(escaped, text);
    return escaped;
}

void AppendEscaped(std::string& out, std::string_view text) {
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t run = position;
        const auto isPlain = [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < Escapes.size() && Escapes[byte] == Itself;
        };
        while (position < text.size() && isPlain(text[position])) {
            ++position;
        }
        out.append(text, run, position - run);
        if (position == text.size()) {
            break;
        }
        const auto byte = static_cast<unsigned char>(text[position]);
        if (byte >= Escapes.size()) {
            AppendCodePoint(out, DecodeSequence(text, position));
            continue;
        }
        if (Escapes[byte] == AsDigits) {
            AppendDigits(out, byte);
        } else {
            out += '\\';
            out += Escapes[byte];
        }
        ++position;
    }
}

} // namespace velINI
