// Bitmaps of the host: pixels, names, and files on disk.
#pragma once

#include <cstddef>

#include "gbuf.h"
#include "maxtypes.h"
#include "strclass.h"

// Red, green, blue, alpha in 16 bits.
struct BMM_Color_64 {
    UWORD r, g, b, a;
};

// Red, green, blue, alpha as floats; 1.0 is white and values above it are kept.
struct BMM_Color_fl {
    float r, g, b, a;
};

// Bits of BitmapStorage::Flags.
constexpr DWORD MAP_HAS_ALPHA = 1U << 1;

// Where a bitmap's pixels are. Rows are numbered from 0 at the top.
class BitmapStorage {
  public:
    virtual ~BitmapStorage() = default;

    virtual int Width() = 0;
    virtual int Height() = 0;
    // Width of a pixel over its height.
    virtual float Aspect() = 0;
    virtual DWORD Flags() = 0;
    int HasAlpha() { return (Flags() & MAP_HAS_ALPHA) != 0; }

    // `pixels` linear pixels from (x, y) on, premultiplied by alpha as the renderer left them. The
    // 16-bit form clamps to 0..1 and rounds. Returns 1, or 0 when the row can't be had, and then
    // leaves `ptr` as it was. A row gives the same pixels however often it is read.
    virtual int GetLinearPixels(int x, int y, int pixels, BMM_Color_64* ptr) = 0;
    virtual int GetLinearPixels(int x, int y, int pixels, BMM_Color_fl* ptr) = 0;

    // BMM_CHAN_ bits of the G-Buffer channels that are there.
    virtual DWORD ChannelsPresent() { return 0; }
    // Null when the bitmap has none. Owned by the storage.
    virtual GBuffer* GetGBuffer() { return nullptr; }
    // The values of one G-Buffer channel (a BMM_CHAN_ bit) for the first fragment of each pixel,
    // rows from the top without gaps, in the channel's type; its BMM_CHAN_ bit goes to `chanType`.
    // A pixel without fragments has 0, and 65535 as node render id. Owned by the storage. Null when
    // the channel isn't there or isn't kept so.
    virtual void* GetChannel(ULONG channelID, ULONG& chanType) {
        chanType = channelID;
        return nullptr;
    }
};

class Bitmap {
  public:
    // Owned by the bitmap; null for a bitmap whose pixels are not there.
    virtual BitmapStorage* Storage() = 0;
    virtual void DeleteThis() = 0;

  protected:
    virtual ~Bitmap() = default;
};

// What the host knows of an image file.
class BitmapInfo {
  public:
    BitmapInfo() = default;
    explicit BitmapInfo(const MCHAR* name) : name_(name) {}

    // Path and name; empty when none is assigned. Valid until the name changes.
    const MCHAR* Name() const { return name_.data(); }
    BOOL SetName(const MCHAR* name) {
        name_ = MSTR(name);
        return TRUE;
    }

  private:
    MSTR name_;
};

enum BMMRES : int {
    BMMRES_SUCCESS = 0,
    BMMRES_ERRORTAKENCARE = 1,
    BMMRES_FILENOTFOUND = 2,
    BMMRES_INTERNALERROR = 5,
    BMMRES_BADFILE = 6,
};

class BitmapManager {
  public:
    // Reads the image file. The bitmap is the caller's, to be destroyed with DeleteThis. Null, with
    // the reason in `status` when that is given, for a file that can't be read.
    virtual Bitmap* Load(BitmapInfo* bi, BMMRES* status = nullptr) = 0;

  protected:
    ~BitmapManager() = default;
};

// The host's own; lives as long as the process.
extern BitmapManager* TheManager;

constexpr int BMM_FRAME_NUMBER_NONE = -2000000;

// True when the file exists.
BOOL BMMIsFile(const MCHAR* filename);

// Puts the frame number before the extension, with at least four digits ("a.psd", 7: "a0007.psd").
// `nameout` holds `size` units. False, with `nameout` empty, when the name doesn't fit.
bool BMMCreateNumberedFilename(const MCHAR* namein, int frame, MCHAR* nameout, std::size_t size);
