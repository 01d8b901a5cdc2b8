// Transforms taken apart and put together again.
#include <decomp.h>
#include <euler.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr auto QUARTER = static_cast<float>(PI / 2);

using Vector = std::array<double, 3>;
// The images of the axes.
using Axes = std::array<Vector, 3>;

constexpr Axes IDENTITY{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Vector Sum(const Vector& a, double factor, const Vector& b) {
    return {a[0] + factor * b[0], a[1] + factor * b[1], a[2] + factor * b[2]};
}

// Rodrigues: what a turn about `axis` (0 to 2) by an angle makes of a vector. x goes towards y, y
// towards z and z towards x.
Vector Turned(const Vector& vector, int axis, double angle) {
    const std::size_t from = (static_cast<std::size_t>(axis) + 1) % 3;
    const std::size_t to = (static_cast<std::size_t>(axis) + 2) % 3;
    Vector turned = vector;
    turned[from] = std::cos(angle) * vector[from] - std::sin(angle) * vector[to];
    turned[to] = std::sin(angle) * vector[from] + std::cos(angle) * vector[to];
    return turned;
}

Vector Turned(const Vector& vector, const Quat& q) {
    const Vector axis{q.x, q.y, q.z};
    const Vector once = Cross(axis, vector);
    return Sum(Sum(vector, 2.0 * q.w, once), 2.0, Cross(axis, once));
}

Vector TurnedByEuler(const Vector& vector, const float* angles) {
    return Turned(Turned(Turned(vector, 0, angles[0]), 1, angles[1]), 2, angles[2]);
}

Axes EulerAxes(double x, double y, double z) {
    Axes axes{};
    for (std::size_t i = 0; i < 3; ++i) {
        axes[i] = Turned(Turned(Turned(IDENTITY[i], 0, x), 1, y), 2, z);
    }
    return axes;
}

Axes Scaled(Axes axes, const Vector& factors) {
    for (std::size_t i = 0; i < 3; ++i) {
        axes[i] = Sum({}, factors[i], axes[i]);
    }
    return axes;
}

Point3 ToPoint3(const Vector& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

AffineParts Parts(const Axes& axes, const Point3& translation = {}) {
    AffineParts parts;
    decomp_affine(Matrix3(ToPoint3(axes[0]), ToPoint3(axes[1]), ToPoint3(axes[2]), translation),
                  &parts);
    return parts;
}

// The stretch along the axes of u, then the turn, then the sign.
Axes Composed(const AffineParts& parts) {
    Axes composed{};
    for (std::size_t i = 0; i < 3; ++i) {
        Vector stretched{};
        for (int axis = 0; axis < 3; ++axis) {
            const Vector along = Turned(IDENTITY[static_cast<std::size_t>(axis)], parts.u);
            stretched = Sum(stretched, parts.k[axis] * Dot(IDENTITY[i], along), along);
        }
        composed[i] = Sum({}, parts.f, Turned(stretched, parts.q));
    }
    return composed;
}

// The largest difference of two components, as a part of the largest component of `expected`.
double Distance(const Axes& actual, const Axes& expected) {
    double distance = 0.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            distance = std::max(distance, std::abs(actual[i][j] - expected[i][j]));
            largest = std::max(largest, std::abs(expected[i][j]));
        }
    }
    return largest > 0.0 ? distance / largest : distance;
}

void ExpectNear(const Point3& actual, const Vector& expected, double tolerance = 1e-6) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(actual[i], expected[static_cast<std::size_t>(i)], tolerance) << i;
    }
}

void ExpectNear(const Quat& actual, double x, double y, double z, double w) {
    EXPECT_NEAR(actual.x, x, 1e-6);
    EXPECT_NEAR(actual.y, y, 1e-6);
    EXPECT_NEAR(actual.z, z, 1e-6);
    EXPECT_NEAR(actual.w, w, 1e-6);
}

std::array<float, 3> Euler(const Quat& q) {
    std::array<float, 3> angles{9.0F, 9.0F, 9.0F};
    QuatToEuler(q, angles.data(), EULERTYPE_XYZ);
    return angles;
}

void ExpectEuler(const Axes& axes, double x, double y, double z) {
    const std::array<float, 3> angles = Euler(Parts(axes).q);
    EXPECT_NEAR(angles[0], x, 1e-6);
    EXPECT_NEAR(angles[1], y, 1e-6);
    EXPECT_NEAR(angles[2], z, 1e-6);
}

TEST(RotateX, TurnsTheAxesAndTheTranslation) {
    Matrix3 matrix;
    matrix.SetRow(3, {1.0F, 2.0F, 3.0F});
    matrix.RotateX(QUARTER);
    ExpectNear(matrix.GetRow(0), {1, 0, 0});
    ExpectNear(matrix.GetRow(1), {0, 0, 1});
    ExpectNear(matrix.GetRow(2), {0, -1, 0});
    ExpectNear(matrix.GetTrans(), {1, -3, 2});
}

TEST(RotateX, ComesAfterWhatTheMatrixDoes) {
    // x to y, y to -x; a turn about the world's X then lifts what came to y.
    Matrix3 matrix({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {});
    matrix.RotateX(static_cast<float>(PI / 6));
    ExpectNear(matrix.GetRow(0), {0, std::sqrt(0.75), 0.5});
    ExpectNear(matrix.GetRow(1), {-1, 0, 0});
    ExpectNear(matrix.GetRow(2), {0, -0.5, std::sqrt(0.75)});
}

TEST(DecompAffine, OfTheIdentityIsNoChange) {
    const AffineParts parts = Parts(IDENTITY, {1.0F, -2.0F, 3.0F});
    EXPECT_EQ(parts.t, Point3(1.0F, -2.0F, 3.0F));
    EXPECT_EQ(parts.k, Point3(1.0F, 1.0F, 1.0F));
    EXPECT_EQ(parts.f, 1.0F);
    ExpectNear(parts.q, 0, 0, 0, 1);
    ExpectNear(parts.u, 0, 0, 0, 1);
}

TEST(DecompAffine, QuarterTurnsAreRotations) {
    const double half = std::sqrt(0.5);
    const AffineParts aboutX = Parts({{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}});
    ExpectNear(aboutX.q, half, 0, 0, half);
    const AffineParts aboutY = Parts({{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}});
    ExpectNear(aboutY.q, 0, half, 0, half);
    const AffineParts aboutZ = Parts({{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}});
    ExpectNear(aboutZ.q, 0, 0, half, half);
    for (const AffineParts& parts : {aboutX, aboutY, aboutZ}) {
        EXPECT_EQ(parts.k, Point3(1.0F, 1.0F, 1.0F));
        EXPECT_EQ(parts.f, 1.0F);
    }
}

TEST(DecompAffine, FactorsAreInTheOrderOfTheAxesThatAreScaled) {
    // Scaled by 2, 5 and 3, then turned about Z by a quarter.
    const AffineParts parts = Parts({{{0, 2, 0}, {-5, 0, 0}, {0, 0, 3}}});
    EXPECT_EQ(parts.k, Point3(2.0F, 5.0F, 3.0F));
    ExpectNear(parts.u, 0, 0, 0, 1);
    ExpectNear(parts.q, 0, 0, std::sqrt(0.5), std::sqrt(0.5));
}

TEST(DecompAffine, EqualFactorsNeedNoAxesOfTheirOwn) {
    const Axes turned = EulerAxes(0.3, -0.8, 2.1);
    for (const Vector& factors : {Vector{2, 2, 2}, Vector{2, 2, 1}, Vector{1, 2, 2}}) {
        const AffineParts parts = Parts(Scaled(turned, factors));
        ExpectNear(parts.k, factors);
        ExpectNear(parts.u, 0, 0, 0, 1);
        EXPECT_LT(Distance(Composed(parts), Scaled(turned, factors)), 1e-6);
    }
}

TEST(DecompAffine, AMirroredTransformHasTheSign) {
    const AffineParts mirror = Parts({{{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}}});
    EXPECT_EQ(mirror.f, -1.0F);
    EXPECT_EQ(mirror.k, Point3(1.0F, 1.0F, 1.0F));
    ExpectNear(mirror.q, 1, 0, 0, 0);
    const AffineParts all = Parts({{{-2, 0, 0}, {0, -3, 0}, {0, 0, -4}}});
    EXPECT_EQ(all.f, -1.0F);
    EXPECT_EQ(all.k, Point3(2.0F, 3.0F, 4.0F));
    ExpectNear(all.q, 0, 0, 0, 1);
    const AffineParts two = Parts({{{-2, 0, 0}, {0, -3, 0}, {0, 0, 4}}});
    EXPECT_EQ(two.f, 1.0F) << "two mirrors are a turn";
    ExpectNear(two.q, 0, 0, 1, 0);
}

TEST(DecompAffine, AStretchAlongOtherAxesHasThem) {
    // 3 along (1, 1, 0), 1 along (-1, 1, 0), 2 along z: symmetric, so there is no turn.
    const Axes stretch{{{2, 1, 0}, {1, 2, 0}, {0, 0, 2}}};
    const AffineParts parts = Parts(stretch);
    ExpectNear(parts.q, 0, 0, 0, 1);
    EXPECT_EQ(parts.f, 1.0F);
    std::array<float, 3> factors{parts.k.x, parts.k.y, parts.k.z};
    EXPECT_NEAR(factors[2], 2.0, 1e-6) << "the axis nearest to z is z";
    std::sort(factors.begin(), factors.end());
    EXPECT_NEAR(factors[0], 1.0, 1e-6);
    EXPECT_NEAR(factors[2], 3.0, 1e-6);
    EXPECT_LT(Distance(Composed(parts), stretch), 1e-6);
    // Half a quarter about z, one way or the other.
    EXPECT_NEAR(parts.u.w, std::cos(PI / 8), 1e-6);
    EXPECT_NEAR(std::abs(parts.u.z), std::sin(PI / 8), 1e-6);
}

TEST(DecompAffine, AShearIsATurnAndAStretch) {
    // y leans over x by as much as it is high: the turn is that of the golden ratio's shear,
    // tan(a) = 1/2 from y towards x.
    const Axes shear{{{1, 0, 0}, {1, 1, 0}, {0, 0, 1}}};
    const AffineParts parts = Parts(shear);
    EXPECT_LT(Distance(Composed(parts), shear), 1e-6);
    ExpectNear(parts.q, 0, 0, -std::sin(std::atan(0.5) / 2), std::cos(std::atan(0.5) / 2));
    std::array<float, 3> factors{parts.k.x, parts.k.y, parts.k.z};
    std::sort(factors.begin(), factors.end());
    EXPECT_NEAR(factors[0], (std::sqrt(5.0) - 1) / 2, 1e-6);
    EXPECT_NEAR(factors[1], 1.0, 1e-6);
    EXPECT_NEAR(factors[2], (std::sqrt(5.0) + 1) / 2, 1e-6);
}

TEST(DecompAffine, RandomTransformsComeTogetherAgain) {
    std::mt19937 random(20240601);
    std::normal_distribution<double> normal;
    for (int round = 0; round < 20000; ++round) {
        Axes axes{};
        for (Vector& axis : axes) {
            axis = {normal(random), normal(random), normal(random)};
        }
        const AffineParts parts = Parts(axes);
        ASSERT_LT(Distance(Composed(parts), axes), 2e-6) << round;
        ASSERT_EQ(parts.f, Dot(Cross(axes[0], axes[1]), axes[2]) < 0.0 ? -1.0F : 1.0F) << round;
        ASSERT_TRUE(parts.k.x >= 0.0F && parts.k.y >= 0.0F && parts.k.z >= 0.0F) << round;
    }
}

TEST(DecompAffine, RandomScalesOfRandomTurnsAreFound) {
    std::mt19937 random(20240602);
    std::uniform_real_distribution<double> angle(-PI, PI);
    std::uniform_real_distribution<double> exponent(-3.0, 3.0);
    for (int round = 0; round < 20000; ++round) {
        const Vector factors{std::pow(10.0, exponent(random)), std::pow(10.0, exponent(random)),
                             std::pow(10.0, exponent(random))};
        const double sign = round % 2 == 0 ? 1.0 : -1.0;
        const Axes turned = EulerAxes(angle(random), angle(random), angle(random));
        const Axes axes = Scaled(turned, {sign * factors[0], sign * factors[1], sign * factors[2]});
        const AffineParts parts = Parts(axes);
        for (int i = 0; i < 3; ++i) {
            const double factor = factors[static_cast<std::size_t>(i)];
            ASSERT_NEAR(parts.k[i], factor, factor * 1e-6) << round;
        }
        ASSERT_EQ(parts.f, static_cast<float>(sign)) << round;
        ASSERT_EQ(parts.u.w, 1.0F) << round;
        for (std::size_t i = 0; i < 3; ++i) {
            const Vector image = Turned(IDENTITY[i], parts.q);
            ASSERT_NEAR(Dot(image, turned[i]), 1.0, 1e-6) << round;
        }
    }
}

TEST(DecompAffine, AFlatTransformHasAFactorOfZeroAndATurn) {
    const Axes flat = Scaled(EulerAxes(0.4, 0.5, -2.0), {3, 0, 2});
    const AffineParts parts = Parts(flat);
    ExpectNear(parts.k, {3, 0, 2});
    EXPECT_LT(Distance(Composed(parts), flat), 1e-6);
    const std::array<float, 3> angles = Euler(parts.q);
    EXPECT_NEAR(angles[0], 0.4, 1e-6);
    EXPECT_NEAR(angles[1], 0.5, 1e-6);
    EXPECT_NEAR(angles[2], -2.0, 1e-6);
}

TEST(DecompAffine, OneWithoutThreeDirectionsGivesSomeRotation) {
    for (const Axes& axes :
         {Axes{}, Axes{{{1, 2, 3}, {}, {}}}, Axes{{{1, 2, 3}, {2, 4, 6}, {}}},
          Axes{{{1, 2, 3}, {-2, -4, -6}, {1, 2, 3}}}, Axes{{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}}}) {
        const AffineParts parts = Parts(axes);
        EXPECT_LT(Distance(Composed(parts), axes), 2e-6);
        for (const Quat& quat : {parts.q, parts.u}) {
            EXPECT_NEAR(std::hypot(std::hypot(quat.x, quat.y), std::hypot(quat.z, quat.w)), 1.0,
                        1e-6);
        }
    }
    EXPECT_EQ(Parts(Axes{}).k, Point3());
}

TEST(DecompAffine, VeryLargeAndVerySmallTransformsKeepTheirTurn) {
    const Axes turned = EulerAxes(0.4, 0.5, -2.0);
    for (const double size : {1e-30, 1e30}) {
        const AffineParts parts = Parts(Scaled(turned, {size, size, size}));
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(parts.k[i] / size, 1.0, 1e-6);
        }
        EXPECT_NEAR(Euler(parts.q)[2], -2.0, 1e-6);
    }
}

TEST(DecompAffine, OneWithNumbersThatAreNoneIsTakenForNoTurn) {
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity()}) {
        for (int place = 0; place < 9; ++place) {
            Matrix3 matrix({1, 2, 0}, {3, 1, 0}, {0, 0, 1}, {4, 5, 6});
            std::array<float, 3> row{1.0F, 2.0F, 3.0F};
            row[static_cast<std::size_t>(place % 3)] = bad;
            matrix.SetRow(place / 3, {row[0], row[1], row[2]});
            AffineParts parts;
            decomp_affine(matrix, &parts);
            EXPECT_EQ(parts.t, Point3(4.0F, 5.0F, 6.0F));
            EXPECT_EQ(parts.k, Point3(1.0F, 1.0F, 1.0F));
            EXPECT_EQ(parts.f, 1.0F);
            EXPECT_EQ(parts.q.w, 1.0F);
            EXPECT_EQ(parts.u.w, 1.0F);
        }
    }
}

TEST(DecompAffine, BitPatternsOfAllKindsComeToAnEnd) {
    std::mt19937 random(20240603);
    for (int round = 0; round < 20000; ++round) {
        Matrix3 matrix;
        for (int row = 0; row < 3; ++row) {
            std::array<float, 3> values{};
            for (float& value : values) {
                value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
            }
            matrix.SetRow(row, {values[0], values[1], values[2]});
        }
        AffineParts parts;
        decomp_affine(matrix, &parts);
        ASSERT_NEAR(std::hypot(std::hypot(parts.q.x, parts.q.y), std::hypot(parts.q.z, parts.q.w)),
                    1.0, 1e-5)
            << round;
        ASSERT_TRUE(parts.k.x >= 0.0F && parts.k.y >= 0.0F && parts.k.z >= 0.0F) << round;
        for (const float angle : Euler(parts.q)) {
            ASSERT_TRUE(std::isfinite(angle)) << round;
        }
    }
}

TEST(QuatToEuler, TurnsAboutOneAxisAreThatAngle) {
    const double angle = 0.7;
    ExpectEuler(EulerAxes(angle, 0, 0), angle, 0, 0);
    ExpectEuler(EulerAxes(0, angle, 0), 0, angle, 0);
    ExpectEuler(EulerAxes(0, 0, angle), 0, 0, angle);
    // Quarters, by their axes: y to z, z to x, x to y.
    ExpectEuler({{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}}, PI / 2, 0, 0);
    ExpectEuler({{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, 0, 0, PI / 2);
}

TEST(QuatToEuler, AQuarterAboutYLeavesNothingToTheFirstAngle) {
    ExpectEuler({{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}}, 0, PI / 2, 0);
    ExpectEuler({{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}, 0, -PI / 2, 0);
    ExpectEuler(EulerAxes(0, PI / 2, 0.5), 0, PI / 2, 0.5);
    ExpectEuler(EulerAxes(0.5, PI / 2, 0), 0, PI / 2, -0.5);
}

TEST(QuatToEuler, NoTurnIsZeroAndNotBelow) {
    for (const float angle : Euler(Quat())) {
        EXPECT_EQ(angle, 0.0F);
        EXPECT_FALSE(std::signbit(angle));
    }
}

TEST(QuatToEuler, RandomRotationsComeTogetherAgain) {
    std::mt19937 random(20240604);
    std::normal_distribution<float> normal;
    for (int round = 0; round < 20000; ++round) {
        Quat quat;
        quat.x = normal(random);
        quat.y = normal(random);
        quat.z = normal(random);
        quat.w = normal(random);
        const std::array<float, 3> angles = Euler(quat);
        ASSERT_LE(std::abs(angles[1]), QUARTER) << round;
        const float length = std::hypot(std::hypot(quat.x, quat.y), std::hypot(quat.z, quat.w));
        quat.x /= length;
        quat.y /= length;
        quat.z /= length;
        quat.w /= length;
        for (const Vector& axis : IDENTITY) {
            const Vector expected = Turned(axis, quat);
            const Vector actual = TurnedByEuler(axis, angles.data());
            for (std::size_t i = 0; i < 3; ++i) {
                ASSERT_NEAR(actual[i], expected[i], 2e-6) << round;
            }
        }
    }
}

TEST(QuatToEuler, TheAnglesOfATransformMakeItAgain) {
    std::mt19937 random(20240605);
    std::uniform_real_distribution<double> turn(-PI, PI);
    std::uniform_real_distribution<double> quarter(-1.57, 1.57);
    for (int round = 0; round < 20000; ++round) {
        const double x = turn(random);
        const double y = quarter(random);
        const double z = turn(random);
        const Axes axes = EulerAxes(x, y, z);
        const std::array<float, 3> angles = Euler(Parts(axes).q);
        for (std::size_t i = 0; i < 3; ++i) {
            const Vector image = TurnedByEuler(IDENTITY[i], angles.data());
            for (std::size_t j = 0; j < 3; ++j) {
                ASSERT_NEAR(image[j], axes[i][j], 2e-6) << round;
            }
        }
        // Where the second angle is no quarter the angles are the only ones.
        if (std::abs(y) < 1.5) {
            ASSERT_NEAR(angles[1], y, 1e-5) << round;
            ASSERT_NEAR(std::remainder(angles[0] - x, 2 * PI), 0.0, 1e-5) << round;
            ASSERT_NEAR(std::remainder(angles[2] - z, 2 * PI), 0.0, 1e-5) << round;
        }
    }
}

TEST(QuatToEuler, WhatIsNoRotationHasNoAngles) {
    Quat nothing;
    nothing.w = 0.0F;
    EXPECT_EQ(Euler(nothing), (std::array<float, 3>{}));
    Quat bad;
    bad.x = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Euler(bad), (std::array<float, 3>{}));
    bad.x = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Euler(bad), (std::array<float, 3>{}));
}

}  // namespace
