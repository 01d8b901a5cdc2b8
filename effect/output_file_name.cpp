// Which file a frame's document goes to.
#include <Path.h>
#include <maxapi.h>

#include "effect/psd_output.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

constexpr std::size_t numberedNameSize = 260;

// The render output's path with the document's extension; empty when the host has none.
MSTR NameFromRenderOutput(bool largeFormat) {
    MSTR folder;
    MSTR base;
    MSTR extension;
    SplitFilename(MSTR(GetCOREInterface()->GetRendFileBI().Name()), &folder, &base, &extension);
    if (base.isNull() || extension.isNull()) return {};
    MaxSDK::Util::Path path(folder);
    if (!path.IsEmpty()) path.AddTrailingBackslash();
    return MSTR(path.GetCStr()) + base + (largeFormat ? _M(".psb") : _M(".psd"));
}

// What is added to the frame number in the names of files.
int FileNumberBase(int timeType) {
    const bool isSpan = timeType == REND_TIMESEGMENT || timeType == REND_TIMERANGE;
    return isSpan ? GetCOREInterface()->GetRendFileNumberBase() : 0;
}

bool AddFrameNumber(MSTR& name, int frame) {
    MCHAR numbered[numberedNameSize] = {};
    if (!BMMCreateNumberedFilename(name, frame, numbered, numberedNameSize)) return false;
    name = MSTR(numbered);
    return true;
}

}  // namespace

bool PSDOutput::ResolveOutputFileName(MSTR& name, bool numbered, TimeValue t) {
    const int frame = t / GetTicksPerFrame();
    if (pblock->GetInt("matchRenderOutputFilename"_param)) {
        name = NameFromRenderOutput(pblock->GetInt("fileFormat"_param) != 0);
    } else {
        name = MSTR(pblock->GetStr("filename"_param));
    }
    if (name.isNull()) return false;
    MaxSDK::Util::Path path(name);
    if (!path.ConvertToAbsolute()) return false;
    name = MSTR(path.GetCStr());
    const int timeType = GetCOREInterface()->GetRendTimeType();
    if (!numbered || timeType == REND_TIMESINGLE) return true;
    const int number = frame + FileNumberBase(timeType);
    return number == BMM_FRAME_NUMBER_NONE || AddFrameNumber(name, number);
}

}  // namespace effect
