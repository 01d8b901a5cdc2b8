#include "effect/scene_data.h"

#include <decomp.h>
#include <euler.h>
#include <inode.h>
#include <iparamb2.h>
#include <maxapi.h>

#include <algorithm>
#include <array>
#include <boost/make_shared.hpp>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include "effect/scene_walk.h"
#include "effect/text.h"
#include "plugin/parameters.h"
#include "psdfile/scene_data_blocks.h"

namespace effect {
namespace {

using Triple = std::array<double, 3>;

Triple TripleOf(const Point3& point) {
    return {point.x, point.y, point.z};
}

SceneDataValues Values(const Triple& first, const Triple& second, const Triple& third) {
    return {first[0],  first[1], first[2], second[0], second[1],
            second[2], third[0], third[1], third[2]};
}

// In the document's world, where y points down and z away from who looks.
Triple PositionOf(const Matrix3& transform) {
    const Point3 place = transform.GetTrans();
    return {place.x, -place.z, place.y};
}

struct Parts {
    // Radians.
    Triple rotation;
    Triple scale;
};

Parts PartsOf(Matrix3 transform) {
    // Y up.
    transform.RotateX(-std::numbers::pi_v<float> / 2.0F);
    AffineParts parts;
    decomp_affine(transform, &parts);
    float angles[3] = {};
    QuatToEuler(parts.q, angles, EULERTYPE_XYZ);
    return {{-angles[0], angles[1], angles[2]}, TripleOf(parts.k)};
}

// What the frame's width shows: an angle in radians, or for a parallel projection a width in the
// scene's units. 0 when it isn't known.
double WidthOfView(const SceneSnapshot& seen) {
    if (seen.xscale == 0.0F) return 0.0;
    const double width = seen.devWidth / std::fabs(static_cast<double>(seen.xscale));
    return seen.projType == PROJ_PARALLEL ? width : 2.0 * std::atan(width / 2.0);
}

void AddCamera(psdbuilder::PSDBuilder& builder, int index, const SceneSnapshot& seen) {
    builder.AddImageResource(boost::make_shared<PSDIRB_Camera>(
        index, static_cast<std::uint32_t>(seen.projType),
        Values(PositionOf(seen.camToWorld), PartsOf(seen.camToWorld).rotation,
               {WidthOfView(seen), seen.nearRange, seen.farRange})));
}

bool IsPointHelper(INode& node, TimeValue t) {
    Object* object = node.EvalWorldState(t).obj;
    return object && object->SuperClassID() == HELPER_CLASS_ID &&
           object->ClassID() == Class_ID(POINTHELP_CLASS_ID, 0);
}

}  // namespace

void AddCameraBlock(psdbuilder::PSDBuilder& builder, const SceneSnapshots& snapshots,
                    const Frame& frame) {
    const auto& [first, second] = snapshots;
    if (first.isTaken) AddCamera(builder, 0, first);
    // At the first field what is there of a second one is the frame before's.
    if (second.isTaken && FieldOf(frame.gc) == 1) AddCamera(builder, 1, second);
}

void AddHelperBlock(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    constexpr int largestIndex = std::numeric_limits<std::uint16_t>::max();
    const MSTR wildcard(frame.pblock.GetStr("embedHelpersWildcard"_param));
    const auto field = static_cast<std::uint32_t>(FieldOf(frame.gc));
    int index = 0;
    for (SceneWalk walk; INode* node = walk.Next();) {
        if (!MatchPattern(MSTR(node->GetName()), wildcard) || !IsPointHelper(*node, frame.time)) {
            continue;
        }
        const Matrix3 transform = node->GetNodeTM(frame.time);
        const Parts parts = PartsOf(transform);
        builder.AddImageResource(boost::make_shared<PSDIRB_Helper>(
            AnsiText(node->GetName()).c_str(), static_cast<std::uint16_t>(index), field,
            Values(PositionOf(transform), parts.scale, parts.rotation)));
        index = std::min(index + 1, largestIndex);
    }
}

}  // namespace effect
