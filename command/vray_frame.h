// A frame of a render file as V-Ray's frame buffer holds it: the picture, its alpha, and a channel
// for each render element.
#pragma once

#include <span>
#include <string>

#include <plugapi.h>

#include "host/image_bitmap.h"
#include "host/vray_frame_buffer.h"

namespace command {

class VRayFrame {
  public:
    // Begins the frame. The picture outlives it in the buffer, and both outlive this.
    VRayFrame(host::VRayFrameBuffer& frameBuffer, host::ImageBitmap& picture);

    // `alpha` may be null: then the picture's own stands in. Elements are found by their channels'
    // names, so a name among `taken` is none of the picture's.
    void AddPicture(host::Owned<host::ImageBitmap> alpha, std::span<const std::string> taken);
    // Behind the picture. `name` is the element's (UTF-8). `sharesAlpha` as of host::VRayChannel.
    void AddElement(const Class_ID& classID, const std::string& name,
                    host::Owned<host::ImageBitmap> image, bool sharesAlpha = true);

  private:
    host::VRayFrameBuffer& buffer;
    host::ImageBitmap& frame;
};

}  // namespace command
