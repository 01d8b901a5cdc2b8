#include "plugin/null_writer.h"

namespace plugin {

BMMRES NullWriter::OpenOutput(BitmapInfo* info, Bitmap* bitmap) {
    const bool ready = openMode == BMM_NOT_OPEN && info && bitmap;
    if (!ready) return ProcessImageIOError(&bi, BMMRES_INTERNALERROR);
    bi.CopyImageInfo(info);
    bi.SetGamma(info->Gamma());
    map = bitmap;
    openMode = BMM_OPEN_W;
    return BMMRES_SUCCESS;
}

BMMRES NullWriter::Write(int) {
    if (openMode != BMM_OPEN_W) return ProcessImageIOError(&bi, BMMRES_INTERNALERROR);
    return BMMRES_SUCCESS;
}

}  // namespace plugin
