// The look of --lut: laid over the frames by V-Ray's frame buffer, and handed to the effect as a
// table in a folder of its own.
#pragma once

#include <string>

#include "command/look_table.h"
#include "command/temporary_folder.h"
#include "host/vray_frame_buffer.h"

namespace command {

class Look {
  public:
    // Throws InputError.
    explicit Look(const std::string& file);

    // This outlives it.
    host::VRayLook ForFrameBuffer();

    // For the host's settings; empty when there is none. Then no table is ever written: in the
    // folder that all share, those of several processes would meet.
    const std::string& Folder() const { return folder.Path(); }

    // Whether the table has been written since the last call.
    bool TakeWritten();
    // Why it hasn't, and what to do about it.
    std::string WhyNotWritten() const;

    const std::string& File() const { return file; }

  private:
    std::string file;
    LookTable table;
    TemporaryFolder folder;
    bool written = false;
};

}  // namespace command
