#include "geometry/gu_types.h"

template class TVarr<gu_rect_t>;
template class TVarr<gu_trapezoid_t>;
