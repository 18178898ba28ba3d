/* What a plug-in of the program `plugin` has to define. C and C++. */
#ifndef EXAMPLES_PLUGINS_MEASURE_H
#define EXAMPLES_PLUGINS_MEASURE_H

#include <geometry/gu_types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The name of what it measures, as "area". */
typedef char const* (*measure_name_t)(void);
__attribute__((visibility("default"))) char const* measure_name(void);

/* Measures a polygon of 3 to 65535 points. */
typedef double (*measure_polygon_t)(unsigned short count, gu_point_t const* points);
__attribute__((visibility("default"))) double measure_polygon(unsigned short count,
                                                              gu_point_t const* points);

#ifdef __cplusplus
}
#endif

#endif
