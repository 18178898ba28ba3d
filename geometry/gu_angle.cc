#include "geometry/gu_angle.h"

namespace {

constexpr double kPi = 3.141592653589793;

}  // namespace

float gu_rad2deg(float radians) {
    return static_cast<float>(static_cast<double>(radians) * 180.0 / kPi);
}

float gu_deg2rad(float degrees) {
    return static_cast<float>(static_cast<double>(degrees) * kPi / 180.0);
}
