#include "effect/write_progress.h"

#include <log.h>

namespace effect {

int psdChannelsDone = 0;

void PSDOutputWriteProgressCallback::TotalProgress(int done, int total) {
    psdChannelsDone = done;
    if (callback) callback->Progress(done, total);
    DebugPrint(_M("PSDChannelsDone = %d PSDChannelsToDo = %d\n"), done, total);
}

}  // namespace effect
