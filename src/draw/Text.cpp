#include "draw/Text.h"

#include "base/Utf8.h"
#include "draw/Glyphs.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Wirefall {

namespace {

constexpr std::uint32_t Blank = U' ';
constexpr std::uint32_t CopyrightSign = 0xa9;
constexpr std::int32_t CharAdvance = 7;
constexpr std::int32_t CopyrightAdvance = 8;

constexpr std::string_view Ellipsis = "...";
constexpr std::string_view WhiteSpace = " \t\n\v\f\r";

constexpr std::int32_t AdvanceOf(std::uint32_t codePoint) {
    return codePoint == CopyrightSign ? CopyrightAdvance : CharAdvance;
}

// In font pixels.
std::int64_t AdvanceOfText(std::string_view text) {
    std::int64_t advance = 0;
    for (std::size_t at = 0; at < text.size();) {
        const auto [codePoint, length] = DecodeUtf8(text, at);
        advance += AdvanceOf(codePoint);
        at += length;
    }
    return advance;
}

// The two fit rules shrink alike; they differ in what they measure and in their limit.
std::int32_t ShrinkToFit(std::int64_t advance, float limit, std::int32_t wanted) {
    std::int32_t scale = std::max(wanted, 1);
    while (scale != 1 && static_cast<float>(advance * scale) > limit) {
        --scale;
    }
    return scale;
}

void AddGlyph(RectBatch& batch, const Glyph& glyph, float x, float y, float pixel) {
    for (std::int32_t row = 0; row < GlyphRows; ++row) {
        const std::uint32_t bits = glyph[static_cast<std::size_t>(row)];
        for (std::int32_t column = 0; column < GlyphColumns; ++column) {
            if ((bits >> static_cast<std::uint32_t>(GlyphColumns - 1 - column) & 1U) != 0) {
                batch.Add(x + static_cast<float>(column) * pixel,
                          y + static_cast<float>(row) * pixel, pixel, pixel);
            }
        }
    }
}

// The first and the last row in which any glyph of a text has something to show.
struct InkRows {
    std::int32_t Top = GlyphRows;
    std::int32_t Bottom = -1;

    bool Any() const { return Bottom >= Top; }

    void Include(const Glyph& glyph) {
        for (std::int32_t row = 0; row < GlyphRows; ++row) {
            if (glyph[static_cast<std::size_t>(row)] != 0) {
                Top = std::min(Top, row);
                Bottom = std::max(Bottom, row);
            }
        }
    }
};

InkRows InkRowsOf(std::string_view text) {
    InkRows ink;
    const Glyph* const fallback = FindGlyph(U'?');
    if (fallback == nullptr) {
        return ink;
    }
    for (std::size_t at = 0; at < text.size();) {
        const auto [codePoint, length] = DecodeUtf8(text, at);
        at += length;
        if (codePoint != Blank) {
            const Glyph* const glyph = FindGlyph(codePoint);
            ink.Include(glyph == nullptr ? *fallback : *glyph);
        }
    }
    return ink;
}

} // namespace

std::int32_t TextWidth(std::string_view text, std::int32_t scale) {
    constexpr std::int64_t Least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t Greatest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(AdvanceOfText(text) * scale, Least, Greatest));
}

float TextWidthPx(std::string_view text, std::int32_t scale) {
    return static_cast<float>(TextWidth(text, scale));
}

float TextHeight(std::int32_t scale) {
    return static_cast<float>(scale) * static_cast<float>(GlyphRows);
}

float ByteWidth(std::size_t bytes, std::int32_t scale) {
    return static_cast<float>(static_cast<std::int64_t>(bytes) * CharAdvance * scale);
}

std::int32_t FitScaleToWidth(std::string_view text, float maxWidth, std::int32_t wanted) {
    return ShrinkToFit(AdvanceOfText(text), maxWidth, wanted);
}

std::int32_t FitScaleToLength(std::size_t bytes, float maxWidth, std::int32_t wanted) {
    return ShrinkToFit(static_cast<std::int64_t>(bytes) * CharAdvance, std::max(maxWidth, 1.0F),
                       wanted);
}

void DrawText(SDL_Renderer* renderer, std::string_view text, float x, float y, std::int32_t scale,
              PackedColor color) {
    static RectBatch batch;
    AddText(batch, text, x, y, scale);
    batch.Flush(renderer, color);
}

void AddText(RectBatch& batch, std::string_view text, float x, float y, std::int32_t scale) {
    const Glyph* const fallback = FindGlyph(U'?');
    if (fallback == nullptr) {
        return;
    }
    const auto pixel = static_cast<float>(scale);
    float pen = x;
    for (std::size_t at = 0; at < text.size();) {
        const auto [codePoint, length] = DecodeUtf8(text, at);
        at += length;
        if (codePoint != Blank) {
            const Glyph* const glyph = FindGlyph(codePoint);
            AddGlyph(batch, glyph == nullptr ? *fallback : *glyph, pen, y, pixel);
        }
        pen += static_cast<float>(AdvanceOf(codePoint)) * pixel;
    }
}

void DrawTextCentered(SDL_Renderer* renderer, std::string_view text, float centerX, float y,
                      std::int32_t scale, PackedColor color) {
    DrawText(renderer, text, centerX - TextWidthPx(text, scale) / 2.0F, y, scale, color);
}

float InkCenteredY(std::string_view text, std::int32_t scale, float top, float height) {
    const InkRows ink = InkRowsOf(text);
    if (!ink.Any()) {
        return (height - TextHeight(scale)) / 2.0F + top;
    }
    const auto pixel = static_cast<float>(scale);
    const float inkHeight = static_cast<float>(ink.Bottom - ink.Top + 1) * pixel;
    return (height - inkHeight) / 2.0F + top - static_cast<float>(ink.Top) * pixel;
}

std::vector<std::string> WrapWords(std::int32_t scale, std::string_view text, float maxWidth) {
    const float limit = std::trunc(maxWidth);
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t at = text.find_first_not_of(WhiteSpace); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(WhiteSpace, at), text.size());
        const std::string_view word = text.substr(at, end - at);
        std::string candidate = line;
        if (!line.empty()) {
            candidate += ' ';
        }
        candidate += word;
        if (limit >= static_cast<float>(TextWidth(candidate, scale))) {
            line = std::move(candidate);
        } else if (line.empty()) {
            lines.emplace_back(word);
        } else {
            lines.push_back(std::move(line));
            line = word;
        }
        at = text.find_first_not_of(WhiteSpace, end);
    }
    if (!line.empty()) {
        lines.push_back(std::move(line));
    }
    if (lines.empty()) {
        lines.emplace_back(text);
    }
    return lines;
}

std::string Ellipsize(std::string_view text, float maxWidth, std::int32_t scale) {
    std::string cut = TrimBlanks(text);
    const float limit = std::max(maxWidth, 1.0F);
    if (limit >= ByteWidth(cut.size(), scale)) {
        return cut;
    }
    if (ByteWidth(Ellipsis.size(), scale) > limit) {
        return {};
    }
    while (!cut.empty() && ByteWidth(cut.size() + Ellipsis.size(), scale) > limit) {
        cut.pop_back();
        while (!cut.empty() && cut.back() == ' ') {
            cut.pop_back();
        }
    }
    cut += Ellipsis;
    return cut;
}

std::string TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

} // namespace Wirefall
