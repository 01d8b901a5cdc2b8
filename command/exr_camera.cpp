#include "command/exr_camera.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <string_view>
#include <utility>

namespace command {
namespace {

using Vector = std::array<double, 3>;
// Row by row; a point is a row vector that stands before it.
using Matrix = std::array<double, 16>;

constexpr double radian = 180.0 / std::numbers::pi;
// What 32 bits leave of a 0 or a 1 in a matrix.
constexpr double rounding = 1e-5;
// Of axes as long as 1; what is flatter has no inverse worth having.
constexpr double leastVolume = 1e-4;
// V-Ray's way to say that the surroundings have no end.
constexpr double endless = 1e18;
// What a warning ends with.
constexpr std::string_view noCamera = ", and no camera is taken from it";
constexpr std::string_view noLens = ", and the field of view isn't known";

// By so much another axis must fit better than the usual one to be taken for the world's up.
constexpr double clearlyBetter = 0.01;

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Times(const Vector& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

double Length(const Vector& a) {
    return std::hypot(a[0], a[1], a[2]);
}

Vector Row(const Matrix& matrix, std::size_t row) {
    return {matrix[row * 4], matrix[row * 4 + 1], matrix[row * 4 + 2]};
}

bool IsFinite(const Matrix& matrix) {
    return std::all_of(matrix.begin(), matrix.end(), [](double each) {
        return std::abs(each) <= double{std::numeric_limits<float>::max()};
    });
}

Matrix Transposed(const Matrix& matrix) {
    Matrix turned{};
    for (std::size_t i = 0; i < turned.size(); ++i)
        turned[i] = matrix[i % 4 * 4 + i / 4];
    return turned;
}

Matrix Product(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t i = 0; i < product.size(); ++i) {
        for (std::size_t k = 0; k < 4; ++k)
            product[i] += a[i / 4 * 4 + k] * b[k * 4 + i % 4];
    }
    return product;
}

// Keeps points apart from directions.
bool IsAffine(const Matrix& matrix) {
    const auto isNear = [&](std::size_t i, double value) {
        return std::abs(matrix[i] - value) <= rounding;
    };
    return isNear(3, 0.0) && isNear(7, 0.0) && isNear(11, 0.0) && isNear(15, 1.0);
}

// Of the axes made as long as 1: 1 when they are at right angles and right-handed, -1 when they are
// left-handed, 0 when they lie in a plane or one has no length.
double Volume(const Matrix& matrix) {
    const Vector x = Row(matrix, 0);
    const Vector y = Row(matrix, 1);
    const Vector z = Row(matrix, 2);
    const double lengths = Length(x) * Length(y) * Length(z);
    return lengths > 0.0 ? Dot(Cross(x, y), z) / lengths : 0.0;
}

// Of an affine matrix whose volume isn't 0.
Matrix Inverse(const Matrix& matrix) {
    const Vector x = Row(matrix, 0);
    const Vector y = Row(matrix, 1);
    const Vector z = Row(matrix, 2);
    const double scale = 1.0 / Dot(Cross(x, y), z);
    const Vector columns[] = {Times(Cross(y, z), scale), Times(Cross(z, x), scale),
                              Times(Cross(x, y), scale)};
    Matrix inverse{};
    for (std::size_t column = 0; column < 3; ++column) {
        for (std::size_t row = 0; row < 3; ++row)
            inverse[row * 4 + column] = columns[column][row];
    }
    for (std::size_t column = 0; column < 3; ++column) {
        inverse[12 + column] = -(matrix[12] * inverse[column] + matrix[13] * inverse[4 + column] +
                                 matrix[14] * inverse[8 + column]);
    }
    inverse[15] = 1.0;
    return inverse;
}

// In a world that has its own way up.
struct Pose {
    Vector right{};
    Vector up{};
    Vector back{};
    Vector position{};
};

// How well an axis of the world does for the camera's up: 1 for a camera that stands level, less
// the more it looks up or down, and less still the more it rolls.
double Uprightness(const Pose& pose, std::size_t axis) {
    return pose.up[axis] / Length(pose.up) - std::abs(pose.right[axis]) / Length(pose.right);
}

RenderCamera MakeCamera(const Pose& pose, UpAxis up) {
    const auto standing = [&](const Vector& given) {
        return up == UpAxis::Y ? Vector{given[0], -given[2], given[1]} : given;
    };
    const Vector columns[] = {standing(Times(pose.right, 1.0 / Length(pose.right))),
                              standing(Times(pose.up, 1.0 / Length(pose.up))),
                              standing(Times(pose.back, 1.0 / Length(pose.back))),
                              standing(pose.position)};
    RenderCamera camera;
    camera.up = up;
    camera.transform[15] = 1.0;
    for (std::size_t column = 0; column < 4; ++column) {
        // Adding 0 takes the sign from a zero.
        for (std::size_t row = 0; row < 3; ++row)
            camera.transform[row * 4 + column] = columns[column][row] + 0.0;
    }
    return camera;
}

bool IsAngle(double degrees) {
    const auto shown = static_cast<float>(degrees);
    return shown > 0.0F && shown < 180.0F;
}

bool IsLength(double length) {
    const auto shown = static_cast<float>(length);
    return shown > 0.0F && std::isfinite(shown);
}

class CameraFinder {
  public:
    explicit CameraFinder(const std::vector<Attribute>& all) : attributes(all) {}

    CameraFinding Find() {
        finding.camera = FromStandard();
        if (!finding.camera) finding.camera = FromVRay();
        return std::move(finding);
    }

  private:
    // Some programs that pass attributes on put their format's name in front.
    const Attribute* Named(std::string_view name) const {
        const auto found =
            std::find_if(attributes.begin(), attributes.end(), [&](const Attribute& each) {
                std::string_view given = each.name;
                if (given.starts_with("exr/")) given.remove_prefix(4);
                return given == name;
            });
        return found == attributes.end() ? nullptr : &*found;
    }

    void Warn(std::string_view name, std::string_view fault, std::string_view loss) {
        std::string& warning = finding.warnings.emplace_back(name);
        warning.append(" ").append(fault).append(loss);
    }

    // Nothing, and a warning, for what is no matrix of finite numbers.
    std::optional<Matrix> MatrixOf(std::string_view name, std::string_view loss) {
        const Attribute* attribute = Named(name);
        if (!attribute) return std::nullopt;
        Matrix matrix{};
        const auto* numbers = std::get_if<std::vector<double>>(&attribute->value);
        if (!numbers || numbers->size() != matrix.size()) {
            Warn(name, "is no matrix of 4 by 4 numbers", loss);
            return std::nullopt;
        }
        std::copy(numbers->begin(), numbers->end(), matrix.begin());
        if (!IsFinite(matrix)) {
            Warn(name, "holds numbers that aren't finite", loss);
            return std::nullopt;
        }
        return matrix;
    }

    std::optional<double> NumberOf(std::string_view name) const {
        const Attribute* attribute = Named(name);
        const double* number = attribute ? std::get_if<double>(&attribute->value) : nullptr;
        return number ? std::optional(*number) : std::nullopt;
    }

    std::string_view TextOf(std::string_view name) const {
        const Attribute* attribute = Named(name);
        const auto* text = attribute ? std::get_if<std::string>(&attribute->value) : nullptr;
        return text ? std::string_view(*text) : std::string_view();
    }

    std::optional<RenderCamera> FromStandard() {
        constexpr std::string_view name = "worldToCamera";
        const auto toCamera = MatrixOf(name, noCamera);
        if (!toCamera) return std::nullopt;
        // The camera's space is left-handed in a right-handed world.
        if (!IsAffine(*toCamera) || Volume(*toCamera) > -leastVolume) {
            Warn(name, "is no transform to the left-handed space of a camera", noCamera);
            return std::nullopt;
        }
        const Matrix toWorld = Inverse(*toCamera);
        if (!IsFinite(toWorld)) {
            Warn(name, "puts the camera out of all bounds", noCamera);
            return std::nullopt;
        }
        const Pose pose{Row(toWorld, 0), Row(toWorld, 1), Times(Row(toWorld, 2), -1.0),
                        Row(toWorld, 3)};
        const bool zUp = Uprightness(pose, 2) > Uprightness(pose, 1) + clearlyBetter;
        RenderCamera camera = MakeCamera(pose, zUp ? UpAxis::Z : UpAxis::Y);
        camera.attribute = name;
        ReadProjection(toWorld, camera.lens);
        return camera;
    }

    // What of the world comes to the frame's two edges. The standard's own space of the frame goes
    // from 0 to 1, what most renderers write goes from -1 to 1.
    void ReadProjection(const Matrix& toWorld, CameraLens& lens) {
        constexpr std::string_view name = "worldToNDC";
        const auto toFrame = MatrixOf(name, noLens);
        if (!toFrame) return;
        const Matrix seen = Product(toWorld, *toFrame);
        const auto at = [&](std::size_t row, std::size_t column) { return seen[row * 4 + column]; };
        const bool parallel = (*toFrame)[3] == 0.0 && (*toFrame)[7] == 0.0 && (*toFrame)[11] == 0.0;
        // What x and y are divided by grows with z alone, or not at all.
        const double divisor = parallel ? at(3, 3) : at(2, 3);
        const std::size_t middle = parallel ? 3 : 2;
        const double slope = std::abs(at(0, 0) / divisor);
        const bool fits = std::abs(at(0, 3)) <= 1e-3 * std::abs(divisor) &&
                          std::abs(at(1, 3)) <= 1e-3 * std::abs(divisor) &&
                          std::abs(at(1, 0)) <= 1e-3 * std::abs(at(0, 0));
        const double across = (at(middle, 0) + at(middle, 1)) / divisor > 0.5 ? 1.0 : 2.0;
        const double unit = Length(Row(toWorld, 0));
        const double width = across / slope * unit;
        const double depth = Length(Row(toWorld, 2));
        const double angle = 2.0 * std::atan(width / depth / 2.0) * radian;
        if (!fits || !(parallel ? IsLength(width) : IsAngle(angle))) {
            Warn(name, "doesn't go with worldToCamera", noLens);
            return;
        }
        (parallel ? lens.width : lens.fieldOfView) = parallel ? width : angle;
    }

    std::optional<RenderCamera> FromVRay() {
        constexpr std::string_view name = "cameraTransform";
        auto toWorld = MatrixOf(name, noCamera);
        if (!toWorld) return std::nullopt;
        // Points are rows or columns, whichever the program that wrote the file calls its own.
        if (!IsAffine(*toWorld)) toWorld = Transposed(*toWorld);
        if (!IsAffine(*toWorld) || Volume(*toWorld) < leastVolume) {
            Warn(name, "is no transform of a camera", noCamera);
            return std::nullopt;
        }
        const Vector first = Row(*toWorld, 0);
        const Vector second = Row(*toWorld, 1);
        const Vector third = Row(*toWorld, 2);
        const Vector position = Row(*toWorld, 3);
        const Pose usual{first, second, third, position};
        // In Maya the camera's own axes are others too.
        const Pose maya{first, Times(third, -1.0), second, position};
        const bool isMaya =
            WrittenInMaya().value_or(Uprightness(maya, 1) > Uprightness(usual, 2) + clearlyBetter);
        RenderCamera camera = isMaya ? MakeCamera(maya, UpAxis::Y) : MakeCamera(usual, UpAxis::Z);
        camera.attribute = name;
        ReadLens(camera.lens);
        return camera;
    }

    // Nothing when the file doesn't tell.
    std::optional<bool> WrittenInMaya() const {
        const std::string_view version = TextOf("vrayInfo/vrayversion");
        const std::string_view scene = TextOf("vrayInfo/filename");
        if (version.find("Maya") != std::string_view::npos) return true;
        if (scene.ends_with(".ma") || scene.ends_with(".mb")) return true;
        if (scene.ends_with(".max")) return false;
        return std::nullopt;
    }

    void ReadLens(CameraLens& lens) {
        constexpr std::string_view fov = "cameraFov";
        // 0 is the ordinary camera; others are panoramas, fish eyes and the like.
        const bool ordinary = NumberOf("cameraProjection").value_or(0.0) == 0.0;
        const auto angle = NumberOf(fov);
        if (angle && ordinary) {
            if (IsAngle(*angle)) {
                lens.fieldOfView = *angle;
            } else {
                Warn(fov, "is no angle between 0 and 180 degrees", noLens);
            }
        }
        const auto range = [&](std::string_view name) {
            const double distance = NumberOf(name).value_or(0.0);
            return distance > 0.0 && distance < endless * (1.0 - rounding) ? distance : 0.0;
        };
        lens.nearRange = range("cameraNearRange");
        lens.farRange = range("cameraFarRange");
    }

    const std::vector<Attribute>& attributes;
    CameraFinding finding;
};

}  // namespace

CameraFinding FindCamera(const std::vector<Attribute>& attributes) {
    return CameraFinder(attributes).Find();
}

}  // namespace command
