// The glyphs of the stroke font: 95 characters, from the space to the tilde, then the markers.
#ifndef KORBASE_GEOMETRY_STROKE_FONT_H
#define KORBASE_GEOMETRY_STROKE_FONT_H

#include <array>
#include <cstdint>

namespace korbase_detail {

// In cells for a character, in sevenths of the marker size for a marker.
struct GlyphPoint {
    float x, y;
};

struct Stroke {
    GlyphPoint const* points;
    std::int32_t count;
};

struct Glyph {
    Stroke const* strokes;
    std::int32_t count;
};

constexpr int kFontCharacters = 95;
constexpr int kFontMarkers = 13;
constexpr int kFontGlyphs = kFontCharacters + kFontMarkers;
constexpr int kFontPoints = 773;
constexpr int kMaxStrokePoints = 260;  // what a drawing buffer holds

// The points of all strokes stand in one row, in the order of the table.
extern std::array<Glyph, kFontGlyphs> const kStrokeFont;

}  // namespace korbase_detail

#endif
