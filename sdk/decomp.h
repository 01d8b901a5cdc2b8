// A transform taken apart into translation, rotation and scale.
#pragma once

#include "matrix3.h"
#include "quat.h"

struct AffineParts {
    Point3 t;
    Quat q;
    // The axes that `k` stretches along.
    Quat u;
    // Factors, 0 or above. Of a transform that scales along its own axes they are in the order of
    // these, and `u` is no rotation.
    Point3 k;
    // -1 for a transform that mirrors, else 1.
    float f = 1.0F;
};

// The matrix is f * (u' k u) q, then t. One without three directions gives some rotation.
void decomp_affine(Matrix3 A, AffineParts* parts);
