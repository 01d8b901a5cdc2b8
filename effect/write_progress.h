// Shows the user how far the document's write is, in channels.
#pragma once

#include <render.h>

#include "psdfile/progress.h"

namespace effect {

// Channels done in the write in hand, or in the last one. Process-wide.
extern int psdChannelsDone;

class PSDOutputWriteProgressCallback : public psdfile::PSDWriteTotalProgressCallback {
  public:
    // May be null. Not owned.
    explicit PSDOutputWriteProgressCallback(CheckAbortCallback* abortCallback)
        : callback(abortCallback) {}

    void TotalProgress(int done, int total) override;

  private:
    CheckAbortCallback* callback;
};

}  // namespace effect
