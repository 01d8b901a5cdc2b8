// Rotations as three angles.
#pragma once

#include "quat.h"

constexpr int EULERTYPE_XYZ = 0;

// Radians. The rotation is a turn by ang[0] about X, then by ang[1] about the world's Y, then by
// ang[2] about its Z; ang[1] is within a quarter turn. `flag` is false, and `type` EULERTYPE_XYZ.
void QuatToEuler(const Quat& q, float* ang, int type, bool flag = false);
