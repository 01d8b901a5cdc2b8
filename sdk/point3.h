// A vector of three floats.
#pragma once

class Point3 {
  public:
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    Point3() = default;
    constexpr Point3(float px, float py, float pz) : x(px), y(py), z(pz) {}
    // 0 to 2.
    float operator[](int i) const {
        if (i == 0) return x;
        return i == 1 ? y : z;
    }
    friend bool operator==(const Point3&, const Point3&) = default;
};
