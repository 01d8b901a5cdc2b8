// Formats of image files that write nothing: a render wants a file output, and the effect saves the
// frame by itself.
#pragma once

#include <bitmap.h>

namespace plugin {

// What one such format calls itself.
struct NullFormat {
    const MCHAR* extension;
    const MCHAR* longDescription;
    const MCHAR* shortDescription;
};

constexpr NullFormat nullExport{_M("xxx"), _M("Don't Save File"), _M("Don't Save File")};
constexpr NullFormat psdExportBitmapIO{_M("PSD"), _M("Photoshop Document (veltrane)"), _M("PSD")};

// One object takes one output: Close doesn't make it ready for another.
class NullWriter : public BitmapIO {
  public:
    // `nullFormat` must outlive the object.
    explicit NullWriter(const NullFormat& nullFormat) : format(nullFormat) {}

    int ExtCount() override { return 1; }
    const MCHAR* Ext(int) override { return format.extension; }
    const MCHAR* LongDesc() override { return format.longDescription; }
    const MCHAR* ShortDesc() override { return format.shortDescription; }
    const MCHAR* AuthorName() override { return _M("veltrane"); }
    const MCHAR* CopyrightMessage() override { return _M("Copyright the authors of veltrane"); }
    UINT Version() override { return 100; }
    DWORD Capability() override {
        return BMMIO_CONTROLWRITE | BMMIO_RANDOM_ACCESS | BMMIO_EXTENSION | BMMIO_WRITER;
    }
    void ShowAbout(HWND) override {}
    BOOL ShowControl(HWND, DWORD) override { return TRUE; }
    DWORD EvaluateConfigure() override { return 0; }
    BOOL LoadConfigure(void*) override { return TRUE; }
    BOOL SaveConfigure(void*) override { return TRUE; }
    BitmapStorage* Load(BitmapInfo*, Bitmap*, BMMRES*) override { return nullptr; }

    // BMMRES_INTERNALERROR for an object that was opened before, and without its arguments. The
    // object then is as it was.
    BMMRES OpenOutput(BitmapInfo* info, Bitmap* bitmap) override;
    // BMMRES_INTERNALERROR before OpenOutput.
    BMMRES Write(int frame) override;
    int Close(int) override { return 1; }

  private:
    const NullFormat& format;
};

}  // namespace plugin
