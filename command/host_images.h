// Reads the image files that effects ask the host for, and remembers why one was of no use.
#pragma once

#include <functional>
#include <string>

#include "command/render_file.h"
#include "host/image_bitmap.h"

namespace command {

// The picture's pixels move into the bitmap. Null when there is none such.
host::Owned<host::ImageBitmap> BitmapOf(Picture picture);

class HostImages {
  public:
    // `warnUser` takes one line, which names the file.
    explicit HostImages(std::function<void(const std::string& text)> warnUser);

    // Of any format that frames can have: its picture, linear. Null for a file that can't be read.
    // Warns once of images without alpha, which are opaque.
    host::Owned<host::ImageBitmap> Load(const std::string& path);

    // Why the image is none for a frame of this size, and what to do about it; without the path.
    std::string FaultOf(const std::string& path, int width, int height) const;

  private:
    struct LastImage {
        std::string path;
        // Empty for an image that was read.
        std::string fault;
        int width = 0;
        int height = 0;
    };

    std::function<void(const std::string& text)> warn;
    bool warnedOfAlpha = false;
    LastImage last;
};

}  // namespace command
