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

static void check(int ok, char const* what) {
    if (ok) return;
    printf("differs: %s\n", what);
    ++differences;
}

static int is_comma(int c) { return c == ','; }

static int compare_ints(void const* a, void const* b) { return *(int const*)a - *(int const*)b; }

static char listing[64];
static void print_int(void* element) { sprintf(strchr(listing, 0), "%d ", *(int*)element); }
static void end_row(void) { strcat(listing, "| "); }

static void check_text(void) {
    char text[] = "met1,,via,poly";
    char* tokens[5];
    check(str_split(text, is_comma, tokens) == 3 && strcmp(tokens[2], "poly") == 0, "str_split");
    check(str_cmp(NULL, "a") == -1 && str_icmp("Met1", "mET1") == 0, "str_cmp, str_icmp");

    char* const copy = str_save("layer");
    check(strcmp(copy, "layer") == 0, "str_save");
    str_free(copy);

    int numbers[] = {5, 3, 1, 4, 2};
    str_fmt_mul_cols(numbers, 5, sizeof numbers[0], compare_ints, 2, print_int, end_row);
    check(strcmp(listing, "1 4 | 2 5 | 3 | ") == 0, "str_fmt_mul_cols");

    str_arr_t words;
    str_arr_init(&words);
    str_arr_cat(&words, "one ");
    check(strcmp(str_arr_cat(&words, "two"), "one two") == 0, "str_arr_cat");
    str_arr_delete(&words);
}

static void check_numbers(void) {
    double value = 0;
    char buffer[16];
    check(str_ctodouble("4.7k", &value) == 4 && value == 4700, "str_ctodouble");
    check(strcmp(str_tosc_r(buffer, 12345), "12K3") == 0, "str_tosc_r");
    check(strcmp(str_int2str10(buffer, sizeof buffer, -42, 5, '0'), "00-42") == 0, "str_int2str10");
    check(mth_round(-2.5) == -3 && gcd(12, 18) == 6, "mth_round, gcd");

    unsigned capacity = 0;
    int* const block = SBalloc(&capacity, NULL, 1, sizeof(int));
    check(block != NULL && capacity == 256, "SBalloc");
    free(block);
}

static void check_geometry(void) {
    gu_point_t const square[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    gu_rect_t const box = gu_bounding_box(4, square);
    check(gu_polygon_area(4, square) == 100 && gu_polygon_orientationi(4, square) == 1, "measures");
    check(box.x1 == 0 && box.y1 == 0 && box.x2 == 10 && box.y2 == 10, "gu_bounding_box");

    gu_point_t crossing;
    check(gu_intersection(&square[0], &square[2], &square[1], &square[3], &crossing) == 1 &&
              crossing.x == 5 && crossing.y == 5,
          "gu_intersection");

    gu_point_t reference = {0, 0};
    gu_point_t const point = {10, 3};
    check(gu_snap_ortho(point, &reference, 0) == (((uint64_t)10 << 32) | 3) && reference.y == 3,
          "gu_snap_ortho");
}

static void check_system(void) {
    char date[19];
    struct tm const fields = {.tm_mday = 5, .tm_mon = 10, .tm_year = 126};
    check(CreateDateStr(date, &fields) == 9 && strcmp(date, "05-NOV-26") == 0, "CreateDateStr");

    shl_t library = shl_load("libm.so.6", 0);
    void* address = NULL;
    check(library && shl_findsym(&library, "cos", 0, &address) == 0 && address, "shl_findsym");
    check(library && shl_unload(library) == 0, "shl_unload");
}

int main(void) {
    check_text();
    check_numbers();
    check_geometry();
    check_system();
    return differences;
}
