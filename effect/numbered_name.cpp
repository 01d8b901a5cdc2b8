#include "effect/numbered_name.h"

#include <Path.h>
#include <maxapi.h>

namespace effect {
namespace {

// Units with the terminator.
constexpr std::size_t numberedNameSize = 260;

// What is added to the frame number in the names of files.
int FileNumberBase(int timeType) {
    const bool isSpan = timeType == REND_TIMESEGMENT || timeType == REND_TIMERANGE;
    return isSpan ? GetCOREInterface()->GetRendFileNumberBase() : 0;
}

}  // namespace

bool MakeAbsolute(MSTR& name) {
    MaxSDK::Util::Path path(name);
    if (!path.ConvertToAbsolute()) return false;
    name = MSTR(path.GetCStr());
    return true;
}

bool AddFrameNumber(MSTR& name, TimeValue t) {
    const int timeType = GetCOREInterface()->GetRendTimeType();
    if (timeType == REND_TIMESINGLE) return true;
    const int number = t / GetTicksPerFrame() + FileNumberBase(timeType);
    if (number == BMM_FRAME_NUMBER_NONE) return true;
    MCHAR numbered[numberedNameSize] = {};
    if (!BMMCreateNumberedFilename(name, number, numbered, numberedNameSize)) return false;
    name = MSTR(numbered);
    return true;
}

}  // namespace effect
