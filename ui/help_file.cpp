#include "ui/help_file.h"

#include <Path.h>

namespace ui {

MSTR HelpFile(const MSTR& library) {
    MaxSDK::Util::Path path(library);
    path.RemoveLeaf();
    path.AddTrailingBackslash();
    return MSTR(path.GetCStr()) + _M("veltrane.chm");
}

}  // namespace ui
