#include "effect/shadows_group.h"

#include <iparamb2.h>
#include <log.h>
#include <maxapi.h>

#include <boost/make_shared.hpp>

#include "effect/layer_name.h"
#include "effect/numbered_name.h"
#include "effect/psd_output.h"
#include "effect/solid_fill.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"
#include "psdfile/four_char_code.h"
#include "sources/bitmap_channel.h"
#include "sources/bitmap_parts.h"
#include "sources/pixel_rows.h"

namespace effect {
namespace {

constexpr std::uint32_t blendKeyMultiply = psdfile::FourCharCode("mul ");

bool IsOfSize(Bitmap* bitmap, const Frame& frame) {
    return frame.HasSize(sources::WidthOf(bitmap), sources::HeightOf(bitmap));
}

// Null for an image that is of no use. `name` becomes the one that was tried.
OwnedBitmap LoadShadowPass(MSTR& name, const Frame& frame) {
    if (!MakeAbsolute(name) || !AddFrameNumber(name, frame.time) || !BMMIsFile(name)) return {};
    BitmapInfo info(name);
    BMMRES status = BMMRES_SUCCESS;
    OwnedBitmap bitmap(TheManager->Load(&info, &status));
    if (!bitmap || status != BMMRES_SUCCESS || !IsOfSize(bitmap.get(), frame)) return {};
    return bitmap;
}

}  // namespace

void AddShadowsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    MSTR file(frame.pblock.GetStr("shadowPassSource"_param));
    if (file.isNull()) return;
    OwnedBitmap& bitmap = *frame.temporaryBitmap;
    bitmap = LoadShadowPass(file, frame);
    if (!bitmap) {
        GetCOREInterface()->Log()->LogEntry(SYSLOG_ERROR, DISPLAY_DIALOG, messageTitle,
                                            _M("Error loading shadow pass image file: %s!"),
                                            file.data());
        return;
    }
    const LayerName name = NameOr(frame.pblock.GetStr("shadowPassLayerName"_param), _M("Shadows"));
    constexpr bool gammaCorrect = false;
    const auto shadow = boost::make_shared<sources::BitmapToPSDChannel>(
        bitmap.get(), sources::selectAlpha, frame.premultiply, gammaCorrect);
    if (frame.pblock.GetInt("shadowPassLayerStyle"_param) == 0) {
        AddSolidFill(builder, name, blendKeyMultiply, blackLevel, shadow);
        return;
    }
    constexpr std::uint8_t visible = 0;
    constexpr bool maskEnabled = true;
    constexpr bool clipping = false;
    builder.AddRGBLayer(name.Ansi(), name.Wide(), psdfile::blendKeyNormal, visible,
                        frame.blackSource, frame.blackSource, frame.blackSource, shadow, nullptr,
                        maskEnabled, clipping);
}

}  // namespace effect
