/* Stroke text and markers: turns a line of printable ASCII, or a marker symbol, into polylines in
 * the caller's coordinates and hands each of them to a function of the caller.
 *
 * Glyphs stand in cells 1.0 wide; capitals are 1.0 high, descenders reach -0.429, the baseline is
 * y = 0 and the origin of a character its left end. Attributes are set beforehand, belong to the
 * whole process and are not locked: any number of threads may draw while no thread sets them.
 * Nothing is allocated. All arithmetic is in single precision. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_STROKE_H
#define KORBASE_GEOMETRY_STROKE_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Takes one polyline: `count` points, 1 to 260, as consecutive pairs x, y that are valid only
 * during the call, and the user value that was given with the function. Its result is ignored. It
 * may call any function of this header; attributes that it sets count from the next plot call. */
typedef int (*stroke_draw_t)(int count, float const* xy, void* user);

/* Stores the text attributes, which start as (0, 0, 1, 0.01, 1, 0).
 *   path           where the next character goes: 0 right, 1 left, 2 up, 3 down; others count as 0
 *   up_x, up_y     the direction that is up for the characters; its length does not matter. Kept:
 *                  (0, 0) is no direction, and every coordinate becomes NaN
 *   height         the height of capitals, in the caller's units
 *   expansion      the width of characters relative to their height; below 0 they are mirrored
 *   spacing        added to the advance of 1.0, in cells
 * Where y points down, the direction (0, -1) with the expansion -1 draws upright text. */
KORBASE_API void stroke_set_text_attributes(int path, float up_x, float up_y, float height,
                                            float expansion, float spacing);

/* Draws `count` bytes, terminated or not, with the baseline of the first one starting at (x, y):
 * one call of `draw` for each stroke. Bytes outside 32 to 126 draw nothing and advance like any
 * other, also a zero byte. Nothing happens when `count` is not positive or a pointer is null;
 * `user` may be. */
KORBASE_API void stroke_plot_string(char const* chars, int count, stroke_draw_t draw, void* user,
                                    float x, float y);

/* Writes the corners of the box around a line of `count` characters at (x, y) as four pairs x, y:
 * bottom left, bottom right, top right and top left as the text is read. `chars` is not read and
 * may be null. Kept: the box is that of path 0 without spacing, and its bottom at -0.421 cuts off
 * the tips of descenders. */
KORBASE_API void stroke_inq_textstring_extent(char const* chars, int count, float out[8], float x,
                                              float y);

/* Stores which marker is drawn, and its size in the caller's units; they start as 1 and 0.7.
 * Returns `kind`, of which the low 16 bits count:
 *   0 dot    1 plus    2 large plus    3 asterisk    4 octagon    5 cross    6 square    7 diamond
 *   8, 9 square, diamond with a dot    10 square with a diamond    11 cross, square and diamond
 *   12 large plus with a diamond       others: nothing is drawn
 * A marker reaches three sevenths of the size to each side of its centre, the plus two. Kept: only
 * the right corners of the octagon are cut, and its left side stands nearer to the centre. */
KORBASE_API int stroke_set_marker_attributes(int kind, float size);

/* Draws the marker centred at (x, y); a dot is a call of `draw` with one point. */
KORBASE_API void stroke_plot_marker(stroke_draw_t draw, void* user, float x, float y);

#ifdef __cplusplus
}
#endif

#endif
