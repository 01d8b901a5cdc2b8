// Transforms, and what they are made of.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include <Imath/ImathMatrix.h>
#include <Imath/ImathMatrixAlgo.h>
#include <Imath/ImathQuat.h>
#include <Imath/ImathVec.h>
#include <decomp.h>
#include <euler.h>

namespace {

// Rows are the images of the axes, and points stand before them: in Imath as here.
using Linear = Imath::M33d;

// Cosine of the angle between two axes that counts as square: what is left of a right angle after
// some products of transforms in floats.
constexpr double SQUARE = 1e-6;

// Cosine of the second angle below which the first and the third turn about the same axis.
constexpr double LOCKED = 1e-6;

Imath::V3d Row(const Linear& matrix, int row) {
    return {matrix[row][0], matrix[row][1], matrix[row][2]};
}

bool ScalesAlongItsAxes(const Linear& matrix) {
    const auto square = [&](int i, int j) {
        const Imath::V3d left = Row(matrix, i);
        const Imath::V3d right = Row(matrix, j);
        return std::abs(left.dot(right)) <= SQUARE * left.length() * right.length();
    };
    return square(0, 1) && square(0, 2) && square(1, 2);
}

struct Polar {
    // The axes that are stretched, as columns.
    Linear axes;
    Imath::V3d factors;
    Linear rotation;
};

// Of a matrix that doesn't mirror.
Polar PolarParts(const Linear& matrix) {
    // matrix = u s v', so it is the stretch u s u', then the rotation u v'.
    Linear u;
    Linear v;
    Imath::V3d s;
    Imath::jacobiSVD(matrix, u, s, v, std::numeric_limits<double>::epsilon(), true);
    return {u, {std::abs(s.x), std::abs(s.y), std::abs(s.z)}, u * v.transposed()};
}

// Puts the axes, which may change places and directions, as near to the world's as they go.
void SortAxes(Polar& polar) {
    std::array<int, 3> order{0, 1, 2};
    std::array<int, 3> best = order;
    double bestSum = -1.0;
    do {
        double sum = 0.0;
        for (int axis = 0; axis < 3; ++axis) {
            sum += std::abs(polar.axes[axis][order[static_cast<std::size_t>(axis)]]);
        }
        if (sum > bestSum) {
            bestSum = sum;
            best = order;
        }
    } while (std::next_permutation(order.begin(), order.end()));

    const Polar old = polar;
    for (int axis = 0; axis < 3; ++axis) {
        const int from = best[static_cast<std::size_t>(axis)];
        const double sign = old.axes[axis][from] < 0.0 ? -1.0 : 1.0;
        polar.factors[axis] = old.factors[from];
        for (int row = 0; row < 3; ++row) {
            polar.axes[row][axis] = sign * old.axes[row][from];
        }
    }
    if (polar.axes.determinant() < 0.0) {
        // The column whose direction says least.
        int least = 0;
        for (int axis = 1; axis < 3; ++axis) {
            least = std::abs(polar.axes[axis][axis]) < std::abs(polar.axes[least][least]) ? axis
                                                                                          : least;
        }
        for (int row = 0; row < 3; ++row) {
            polar.axes[row][least] = -polar.axes[row][least];
        }
    }
}

Quat ToQuat(const Linear& rotation) {
    const Imath::M44d matrix(rotation, Imath::V3d(0.0));
    Imath::Quatd quat = Imath::extractQuat(matrix).normalized();
    if (quat.r < 0.0) {
        quat = -quat;
    }
    Quat result;
    result.x = static_cast<float>(quat.v.x);
    result.y = static_cast<float>(quat.v.y);
    result.z = static_cast<float>(quat.v.z);
    result.w = static_cast<float>(quat.r);
    return result;
}

Point3 ToPoint3(const Imath::V3d& vector) {
    return {static_cast<float>(vector.x), static_cast<float>(vector.y),
            static_cast<float>(vector.z)};
}

}  // namespace

void Matrix3::RotateX(float angle) {
    const double c = std::cos(static_cast<double>(angle));
    const double s = std::sin(static_cast<double>(angle));
    for (Point3& row : rows_) {
        const Point3 old = row;
        row.y = static_cast<float>(c * old.y - s * old.z);
        row.z = static_cast<float>(s * old.y + c * old.z);
    }
}

void decomp_affine(Matrix3 A, AffineParts* parts) {
    *parts = AffineParts{};
    parts->t = A.GetTrans();
    parts->k = Point3(1.0F, 1.0F, 1.0F);
    Linear matrix;
    bool finite = true;
    for (int row = 0; row < 3; ++row) {
        const Point3 axis = A.GetRow(row);
        for (int column = 0; column < 3; ++column) {
            matrix[row][column] = axis[column];
            finite = finite && std::isfinite(axis[column]);
        }
    }
    if (!finite) {
        return;
    }
    if (matrix.determinant() < 0.0) {
        matrix *= -1.0;
        parts->f = -1.0F;
    }
    if (ScalesAlongItsAxes(matrix)) {
        Imath::V3d factors;
        for (int row = 0; row < 3; ++row) {
            factors[row] = Row(matrix, row).length();
            for (int column = 0; column < 3 && factors[row] > 0.0; ++column) {
                matrix[row][column] /= factors[row];
            }
        }
        parts->k = ToPoint3(factors);
        parts->q = ToQuat(PolarParts(matrix).rotation);
        return;
    }
    Polar polar = PolarParts(matrix);
    SortAxes(polar);
    parts->k = ToPoint3(polar.factors);
    parts->u = ToQuat(polar.axes.transposed());
    parts->q = ToQuat(polar.rotation);
}

void QuatToEuler(const Quat& q, float* ang, int /*type*/, bool /*flag*/) {
    std::fill_n(ang, 3, 0.0F);
    const Imath::Quatd quat(q.w, q.x, q.y, q.z);
    const double length = quat.length();
    if (!(length > 0.0) || !std::isfinite(length)) {
        return;
    }
    const Linear m = quat.normalized().toMatrix33();
    // What the three turns make: the first row is cy cz, cy sz, -sy, and the third column goes on
    // with sx cy and cx cy.
    const double cosY = std::hypot(m[1][2], m[2][2]);
    const double x = cosY > LOCKED ? std::atan2(m[1][2], m[2][2]) : 0.0;
    // The second row, with the turn about X taken back.
    const double c = std::cos(x);
    const double s = std::sin(x);
    const double y = std::atan2(-m[0][2], cosY);
    const double z = std::atan2(s * m[2][0] - c * m[1][0], c * m[1][1] - s * m[2][1]);
    // No turn is 0 and not -0.
    ang[0] = static_cast<float>(x + 0.0);
    ang[1] = static_cast<float>(y + 0.0);
    ang[2] = static_cast<float>(z + 0.0);
}
