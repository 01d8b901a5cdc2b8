#include "host/bitmap_output.h"

#include <Path.h>
#include <gamma.h>

#include "host/application.h"
#include "host/text.h"

namespace host {
namespace {

// `extension` has its dot.
bool Writes(BitmapIO& format, const MSTR& extension) {
    if ((format.Capability() & BMMIO_WRITER) == 0) {
        return false;
    }
    for (int i = 0; i < format.ExtCount(); ++i) {
        if (EqualIgnoringAsciiCase(extension.data(), (MSTR(_M(".")) + format.Ext(i)).data())) {
            return true;
        }
    }
    return false;
}

MSTR NameOfFrame(const RenderSettings& render, int frame) {
    MSTR name(render.output.Name());
    if (render.timeType == REND_TIMESINGLE) {
        return name;
    }
    const bool isSpan = render.timeType == REND_TIMESEGMENT || render.timeType == REND_TIMERANGE;
    constexpr std::size_t longestNumber = 16;
    std::vector<MCHAR> numbered(static_cast<std::size_t>(name.Length()) + longestNumber);
    BMMCreateNumberedFilename(name, frame + (isSpan ? render.fileNumberBase : 0), numbered.data(),
                              numbered.size());
    return {numbered.data()};
}

}  // namespace

std::unique_ptr<BitmapIO> MakeBitmapWriter(const ClassDirectory& classes, const MSTR& name) {
    MSTR extension;
    SplitFilename(name, nullptr, nullptr, &extension);
    for (ClassDesc* desc : classes.OfSuperClass(BMM_IO_CLASS_ID)) {
        std::unique_ptr<BitmapIO> format(static_cast<BitmapIO*>(desc->Create()));
        if (Writes(*format, extension)) {
            return format;
        }
    }
    return nullptr;
}

BMMRES WriteRenderOutput(Bitmap& bitmap, int frame) {
    BitmapInfo output(NameOfFrame(App().settings.render, frame));
    output.SetGamma(gammaMgr.enable ? gammaMgr.fileOutGamma : 1.0F);
    const std::unique_ptr<BitmapIO> writer = MakeBitmapWriter(App().classes, output.Name());
    if (!writer) {
        return BMMRES_NODRIVER;
    }
    BMMRES result = writer->OpenOutput(&output, &bitmap);
    if (result == BMMRES_SUCCESS) {
        result = writer->Write(frame);
        writer->Close(BMM_CLOSE_COMPLETE);
    }
    return result;
}

}  // namespace host
