#include "geometry/stroke.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "geometry/stroke_font.h"

using korbase_detail::Glyph;
using korbase_detail::GlyphPoint;
using korbase_detail::kFontCharacters;
using korbase_detail::kFontGlyphs;
using korbase_detail::kFontMarkers;
using korbase_detail::kFontPoints;
using korbase_detail::kMaxStrokePoints;
using korbase_detail::kStrokeFont;
using korbase_detail::Stroke;

namespace {

struct {
    int path = 0;
    float up_x = 0.0F, up_y = 1.0F;
    float height = 0.01F, expansion = 1.0F, spacing = 0.0F;
} text_attributes;

struct {
    int kind = 1;
    float scale = 0.1F;
} marker_attributes;

// The linear part of the map from glyph units to the caller's.
struct Matrix {
    float xx, xy, yx, yy;

    GlyphPoint operator*(GlyphPoint const& p) const {
        return {std::fma(xx, p.x, xy * p.y), std::fma(yx, p.x, yy * p.y)};
    }
};

// Kept: no direction has no unit vector, as if 0 were divided by 0.
float UnitPart(float part, float length) {
    return length == 0.0F ? std::numeric_limits<float>::quiet_NaN() : part / length;
}

Matrix TextMatrix() {
    auto const& a = text_attributes;
    double const x = a.up_x;
    double const y = a.up_y;
    auto const length = static_cast<float>(std::hypot(x, y));
    float const unit_x = UnitPart(a.up_x, length);
    float const unit_y = UnitPart(a.up_y, length);
    return {a.expansion * a.height * unit_y, a.height * unit_x, -a.expansion * a.height * unit_x,
            a.height * unit_y};
}

// From one character to the next, in glyph units.
GlyphPoint Advance() {
    float const advance = 1.0F + text_attributes.spacing;
    switch (text_attributes.path) {
        case 1: return {-advance, 0.0F};
        case 2: return {0.0F, advance};
        case 3: return {0.0F, -advance};
        default: return {advance, 0.0F};
    }
}

void DrawMoved(GlyphPoint const* points, int count, GlyphPoint const& origin, stroke_draw_t draw,
               void* user) {
    float buffer[2 * kMaxStrokePoints];
    for (int i = 0; i < count; ++i) {
        buffer[2 * i] = points[i].x + origin.x;
        buffer[2 * i + 1] = points[i].y + origin.y;
    }
    draw(count, buffer, user);
}

// The font under one matrix. A glyph is mapped when it is first drawn, at the place that its points
// have in the table; from then on, drawing it is one addition per coordinate.
class MappedFont {
public:
    explicit MappedFont(Matrix const& matrix) : matrix(matrix) {}

    // Draws the strokes of `kStrokeFont[index]` that have at least `min_points` points.
    void Draw(unsigned index, int min_points, GlyphPoint const& origin, stroke_draw_t draw,
              void* user) {
        auto const& glyph = kStrokeFont[index];
        if (!mapped[index]) Map(glyph);
        mapped[index] = true;
        for (int i = 0; i < glyph.count; ++i) {
            auto const& stroke = glyph.strokes[i];
            if (stroke.count >= min_points)
                DrawMoved(Place(stroke), stroke.count, origin, draw, user);
        }
    }

private:
    GlyphPoint* Place(Stroke const& stroke) {
        return points + (stroke.points - kStrokeFont[0].strokes[0].points);
    }

    void Map(Glyph const& glyph) {
        for (int i = 0; i < glyph.count; ++i) {
            auto const& stroke = glyph.strokes[i];
            GlyphPoint* out = Place(stroke);
            for (int k = 0; k < stroke.count; ++k) *out++ = matrix * stroke.points[k];
        }
    }

    Matrix matrix;
    bool mapped[kFontGlyphs] = {};
    GlyphPoint points[kFontPoints];
};

}  // namespace

void stroke_set_text_attributes(int path, float up_x, float up_y, float height, float expansion,
                                float spacing) {
    text_attributes = {path, up_x, up_y, height, expansion, spacing};
}

void stroke_plot_string(char const* chars, int count, stroke_draw_t draw, void* user, float x,
                        float y) {
    if (chars == nullptr || draw == nullptr) return;

    auto const matrix = TextMatrix();
    auto const step = matrix * Advance();
    MappedFont font(matrix);
    GlyphPoint origin = {x, y};
    for (int i = 0; i < count; ++i) {
        auto const glyph = static_cast<unsigned char>(chars[i] - ' ');
        if (glyph < kFontCharacters) font.Draw(glyph, 2, origin, draw, user);
        origin.x += step.x;
        origin.y += step.y;
    }
}

void stroke_inq_textstring_extent(char const* /*chars*/, int count, float out[8], float x,
                                  float y) {
    if (out == nullptr) return;

    auto const matrix = TextMatrix();
    auto const width = static_cast<float>(count);
    float const bottom = -0.421F;
    GlyphPoint const corners[] = {{0.0F, bottom}, {width, bottom}, {width, 1.0F}, {0.0F, 1.0F}};
    for (auto const& corner : corners) {
        auto const p = matrix * corner;
        *out++ = p.x + x;
        *out++ = p.y + y;
    }
}

int stroke_set_marker_attributes(int kind, float size) {
    marker_attributes = {kind, size / 7.0F};
    return kind;
}

void stroke_plot_marker(stroke_draw_t draw, void* user, float x, float y) {
    auto const kind = static_cast<std::uint16_t>(marker_attributes.kind);
    if (kind >= kFontMarkers || draw == nullptr) return;

    float const scale = marker_attributes.scale;
    MappedFont font({scale, 0.0F, 0.0F, scale});
    font.Draw(kFontCharacters + kind, 1, {x, y}, draw, user);
}
