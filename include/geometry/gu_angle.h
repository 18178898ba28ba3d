/* Radians and degrees. The functions keep no state: any thread may call them. C11 and C++17. */
#ifndef KORBASE_GEOMETRY_GU_ANGLE_H
#define KORBASE_GEOMETRY_GU_ANGLE_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The angle in degrees, and in radians; computed in double and narrowed. */
KORBASE_API float gu_rad2deg(float radians);
KORBASE_API float gu_deg2rad(float degrees);

#ifdef __cplusplus
}
#endif

#endif
