// The host's reader of image files, as effects call it.
#include <exception>

#include <bitmap.h>

#include "host/application.h"
#include "host/text.h"

namespace host {
namespace {

class FileBitmaps final : public BitmapManager {
  public:
    Bitmap* Load(BitmapInfo* bi, BMMRES* status) override {
        Owned<ImageBitmap> bitmap;
        BMMRES result = BMMRES_SUCCESS;
        if (!BMMIsFile(bi->Name())) {
            result = BMMRES_FILENOTFOUND;
        } else if (bitmap = Read(ToUtf8(bi->Name())); !bitmap) {
            result = BMMRES_CORRUPTFILE;
        }
        if (status) {
            *status = result;
        }
        return bitmap.release();
    }

  private:
    static Owned<ImageBitmap> Read(const std::string& path) {
        try {
            return App().imageLoader ? App().imageLoader(path) : nullptr;
        } catch (const std::exception&) {
            return nullptr;
        }
    }
};

FileBitmaps fileBitmaps;

}  // namespace
}  // namespace host

BitmapManager* TheManager = &host::fileBitmaps;
