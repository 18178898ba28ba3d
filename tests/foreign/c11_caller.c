/* Calls plain functions from C11, with callbacks, and records passed and returned by value; prints
 * what differs and ends with the number of differences.
 */
#include <geometry/gu_intersection.h>
#include <geometry/gu_measure.h>
#include <geometry/gu_outline.h>
#include <stdio.h>
#include <string.h>
#include <system/datestr.h>
#include <system/shl.h>
#include <text/numeric.h>
#include <text/str.h>

static int differences;

#define CHECK(ok) ((ok) ? 0 : (++differences, puts("differs: " #ok)))

static int is_comma(int c) { return c == ','; }

static void check_text(void) {
    char text[] = "met1,,via,poly";
    char* tokens[5];
    CHECK(str_split(text, is_comma, tokens) == 3 && strcmp(tokens[2], "poly") == 0);

    double value = 0;
    CHECK(str_ctodouble("4.7k", &value) == 4 && value == 4700 && mth_round(-2.5) == -3);

    str_arr_t words;
    str_arr_init(&words);
    str_arr_cat(&words, "one ");
    CHECK(strcmp(str_arr_cat(&words, "two"), "one two") == 0);
    str_arr_delete(&words);
}

static void check_geometry(void) {
    gu_point_t const square[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, point = {10, 3};
    gu_point_t crossing, reference = {0, 0};
    gu_rect_t const box = gu_bounding_box(4, square);
    CHECK(gu_polygon_area(4, square) == 100 && gu_polygon_orientationi(4, square) == 1);
    CHECK(box.x1 == 0 && box.y1 == 0 && box.x2 == 10 && box.y2 == 10);
    CHECK(gu_intersection(&square[0], &square[2], &square[1], &square[3], &crossing) == 1);
    CHECK(crossing.x == 5 && crossing.y == 5);
    CHECK(gu_snap_ortho(point, &reference, 0) == ((uint64_t)10 << 32 | 3) && reference.y == 3);
}

static void check_system(void) {
    char date[19];
    struct tm const fields = {.tm_mday = 5, .tm_mon = 10, .tm_year = 126};
    CHECK(CreateDateStr(date, &fields) == 9 && strcmp(date, "05-NOV-26") == 0);

    shl_t library = shl_load("libm.so.6", 0);
    void* address = NULL;
    CHECK(library && shl_findsym(&library, "cos", 0, &address) == 0 && address);
    CHECK(library && shl_unload(library) == 0);
}

int main(void) {
    check_text();
    check_geometry();
    check_system();
    return differences;
}
