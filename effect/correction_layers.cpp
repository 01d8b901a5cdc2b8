#include "effect/correction_layers.h"

#include <gamma.h>
#include <iparamb2.h>

#include <boost/make_shared.hpp>
#include <locale>
#include <sstream>
#include <string>

#include "effect/adjustment_layer.h"
#include "effect/corrections_table.h"
#include "effect/layer_name.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"
#include "psdfile/color_lookup_adjustment_layer.h"
#include "psdfile/curves_adjustment_layer.h"

namespace effect {
namespace {

using Adjustment = boost::shared_ptr<psdfile::PSDLayerRecordExtraDataResourceBlock>;

// Colours go through the table, if it has points, and then to the power of `gamma`.
Adjustment ColorLookup(const psdfile::CubeLUT& table, double gamma) {
    auto lookup = boost::make_shared<psdfile::PSDColorLookupAdjustmentLayer>();
    lookup->lookupKind = psdfile::lookupDeviceLinkProfile;
    lookup->profile.SetTable(table);
    lookup->profile.gamma = gamma;
    return lookup;
}

std::string GammaLayerName() {
    std::ostringstream name;
    name.imbue(std::locale::classic());
    name << "Gamma Correction (" << gammaMgr.fileOutGamma << ')';
    return name.str();
}

}  // namespace

void AddGammaCorrectionLayer(psdbuilder::PSDBuilder& builder) {
    const double gamma = 1.0 / static_cast<double>(gammaMgr.fileOutGamma);
    AddAdjustment(builder, GammaLayerName().c_str(), nullptr, psdfile::blendKeyNormal,
                  ColorLookup(psdfile::CubeLUT(), gamma));
}

int AddColorCorrectionLayer(psdbuilder::PSDBuilder& builder) {
    const std::optional<psdfile::CubeLUT> table = ReadCorrectionsTable();
    if (!table) return 0;
    AddAdjustment(builder, "Color Corrections", nullptr, psdfile::blendKeyNormal,
                  ColorLookup(*table, 1.0));
    return 1;
}

bool HasCurvesLayer(const Frame& frame) {
    return frame.pblock.GetInt("createCurvesAdjustmentLayer"_param) &&
           frame.pblock.GetInt("bitDepth"_param) != 32;
}

void AddCurvesLayer(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    const LayerName name =
        NameOr(frame.pblock.GetStr("curvesAdjustmentLayerName"_param), _M("Curves"));
    AddAdjustment(builder, name.Ansi(), name.Wide(), psdfile::blendKeyNormal,
                  boost::make_shared<psdfile::PSDCurvesAdjustmentLayer>());
}

}  // namespace effect
