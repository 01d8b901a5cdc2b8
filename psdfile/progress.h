// How a writer tells how far it is, counted in channels.
#pragma once

namespace psdfile {

// Called on the thread that writes, between channels. done goes from 0 to total.
class PSDWriteProgressCallback {
  public:
    PSDWriteProgressCallback() = default;
    PSDWriteProgressCallback(const PSDWriteProgressCallback&) = default;
    PSDWriteProgressCallback& operator=(const PSDWriteProgressCallback&) = default;
    virtual ~PSDWriteProgressCallback() = default;

    virtual void LayerProgress(int done, int total) = 0;  // channels of all layers
    virtual void ImageProgress(int done, int total) = 0;  // channels of the merged image
};

// Adds the two counts up into one.
class PSDWriteTotalProgressCallback : public PSDWriteProgressCallback {
  public:
    void LayerProgress(int done, int total) override;
    void ImageProgress(int done, int total) override;
    virtual void TotalProgress(int done, int total) = 0;

    int layerDone = 0;
    int layerTotal = 0;
    int imageDone = 0;
    int imageTotal = 0;
};

}  // namespace psdfile
