/* Calls the plain functions from C11; prints what differs and ends with the number of differences.
 */
#include <geometry/gu_intersection.h>
#include <geometry/gu_measure.h>
#include <geometry/gu_outline.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <system/datestr.h>
#include <system/shl.h>
#include <text/memory.h>
#include <text/numeric.h>
#include <text/str.h>

static int differences;

#define CHECK(ok) ((ok) ? 0 : (++differences, puts("differs: " #ok)))

static int is_comma(int c) { return c == ','; }

static void check_text(void) {
    char text[] = "met1,,via,poly";
    char* tokens[5];
    CHECK(str_split(text, is_comma, tokens) == 3 && strcmp(tokens[2], "poly") == 0);
    CHECK(str_cmp(NULL, "a") == -1 && str_icmp("Met1", "mET1") == 0);

    char* const copy = str_save("layer");
    CHECK(strcmp(copy, "layer") == 0);
    str_free(copy);

    str_arr_t words;
    str_arr_init(&words);
    str_arr_cat(&words, "one ");
    CHECK(strcmp(str_arr_cat(&words, "two"), "one two") == 0);
    str_arr_delete(&words);
}

static void check_numbers(void) {
    double value = 0;
    char buffer[16];
    CHECK(str_ctodouble("4.7k", &value) == 4 && value == 4700);
    CHECK(strcmp(str_int2str10(buffer, sizeof buffer, -42, 5, '0'), "00-42") == 0);
    CHECK(mth_round(-2.5) == -3 && gcd(12, 18) == 6);

    unsigned capacity = 0;
    int* const block = SBalloc(&capacity, NULL, 1, sizeof(int));
    CHECK(block != NULL && capacity == 256);
    free(block);
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
    check_numbers();
    check_geometry();
    check_system();
    return differences;
}
