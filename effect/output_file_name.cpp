// Which file a frame's document goes to.
#include <Path.h>
#include <maxapi.h>

#include "effect/numbered_name.h"
#include "effect/psd_output.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

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

}  // namespace

bool PSDOutput::ResolveOutputFileName(MSTR& name, bool numbered, TimeValue t) {
    if (!pblock) return false;
    if (pblock->GetInt("matchRenderOutputFilename"_param)) {
        name = NameFromRenderOutput(pblock->GetInt("fileFormat"_param) != 0);
    } else {
        name = MSTR(pblock->GetStr("filename"_param));
    }
    if (name.isNull()) return false;
    return MakeAbsolute(name) && (!numbered || AddFrameNumber(name, t));
}

}  // namespace effect
