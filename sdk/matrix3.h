// A transform of the host: three axes and a translation, the rows of a matrix of 4 by 3. A point is
// a row vector that stands before it.
#pragma once

#include "point3.h"

class Matrix3 {
  public:
    // The identity.
    Matrix3() = default;
    Matrix3(const Point3& x, const Point3& y, const Point3& z, const Point3& translation)
        : rows_{x, y, z, translation} {}

    // 0 to 2 are the axes, 3 is the translation.
    Point3 GetRow(int i) const { return rows_[i]; }
    void SetRow(int i, const Point3& row) { rows_[i] = row; }
    Point3 GetTrans() const { return rows_[3]; }
    // Turns what the matrix makes about the X axis through the origin: y goes towards z. Radians.
    void RotateX(float angle);

  private:
    Point3 rows_[4] = {{1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}, {0.0F, 0.0F, 1.0F}, {}};
};
