// The sum of layer and merged channels.

#include "psdfile/progress.h"

namespace psdfile {

void PSDWriteTotalProgressCallback::LayerProgress(int done, int total) {
    layerDone = done;
    layerTotal = total;
    TotalProgress(layerDone + imageDone, layerTotal + imageTotal);
}

void PSDWriteTotalProgressCallback::ImageProgress(int done, int total) {
    imageDone = done;
    imageTotal = total;
    TotalProgress(layerDone + imageDone, layerTotal + imageTotal);
}

}  // namespace psdfile
