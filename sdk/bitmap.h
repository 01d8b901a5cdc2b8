// Bitmaps of the host: pixels, names, and files on disk.
#pragma once

#include <cstddef>

#include "gbuf.h"
#include "maxheap.h"
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
    // The exponent that the file's values were raised to; 1.0 is linear.
    float Gamma() const { return gamma_; }
    void SetGamma(float gamma) { gamma_ = gamma; }

    // All that tells what the image is: its name here, and not its gamma.
    void CopyImageInfo(const BitmapInfo* from) { name_ = from->name_; }

  private:
    MSTR name_;
    float gamma_ = 1.0F;
};

enum BMMRES : int {
    BMMRES_SUCCESS = 0,
    BMMRES_ERRORTAKENCARE = 1,
    BMMRES_FILENOTFOUND = 2,
    // No class is there for files of this kind.
    BMMRES_NODRIVER = 4,
    BMMRES_CORRUPTFILE = 7,
    // Called in the wrong state.
    BMMRES_INTERNALERROR = 12,
};

// Values of BitmapIO::OpenMode.
constexpr int BMM_NOT_OPEN = 0;
constexpr int BMM_OPEN_W = 2;

// BitmapIO::Close's flag: all was written.
constexpr int BMM_CLOSE_COMPLETE = 1;

// Bits of BitmapIO::Capability.
constexpr DWORD BMMIO_WRITER = 1U << 1;
// Chosen by the extension of a file's name.
constexpr DWORD BMMIO_EXTENSION = 1U << 2;
// Takes frames in any order.
constexpr DWORD BMMIO_RANDOM_ACCESS = 1U << 5;
// Has settings for writing, which ShowControl shows.
constexpr DWORD BMMIO_CONTROLWRITE = 1U << 30;

// A format of image files. The host makes one object an output, through a class descriptor of
// BMM_IO_CLASS_ID, and deletes it after Close. Texts are the object's and stay valid as long.
class BitmapIO : public MaxHeapOperators {
  public:
    BitmapIO() = default;
    BitmapIO(const BitmapIO&) = delete;
    BitmapIO& operator=(const BitmapIO&) = delete;
    virtual ~BitmapIO() = default;

    // Extensions without the point.
    virtual int ExtCount() = 0;
    virtual const MCHAR* Ext(int n) = 0;

    // As the user reads them where a format is chosen.
    virtual const MCHAR* LongDesc() = 0;
    virtual const MCHAR* ShortDesc() = 0;
    virtual const MCHAR* AuthorName() = 0;
    virtual const MCHAR* CopyrightMessage() = 0;
    // Times 100.
    virtual UINT Version() = 0;

    // BMMIO_ bits.
    virtual DWORD Capability() = 0;

    virtual void ShowAbout(HWND parent) = 0;
    // Shows the settings. FALSE when the user cancelled.
    virtual BOOL ShowControl(HWND /*parent*/, DWORD /*flag*/) { return FALSE; }

    // The settings as a record that the host keeps: its bytes, and what reads and fills it.
    virtual DWORD EvaluateConfigure() { return 0; }
    virtual BOOL LoadConfigure(void* /*record*/) { return FALSE; }
    virtual BOOL SaveConfigure(void* /*record*/) { return FALSE; }

    // Null for a format that isn't read.
    virtual BitmapStorage* Load(BitmapInfo* /*bi*/, Bitmap* /*map*/, BMMRES* /*status*/) {
        return nullptr;
    }

    // `map` is what Write takes the pixels from; it must outlive the output.
    virtual BMMRES OpenOutput(BitmapInfo* bi, Bitmap* map) = 0;
    virtual BMMRES Write(int frame) = 0;
    virtual int Close(int flag) = 0;

    // BMM_NOT_OPEN or BMM_OPEN_W.
    int OpenMode() const { return openMode; }
    // What OpenOutput was given; null before.
    Bitmap* Map() const { return map; }

    // Tells the user of an error with the file that `info` names; null for none. Never
    // BMMRES_SUCCESS: the code that it was given, or another when the host asked the user.
    BMMRES ProcessImageIOError(BitmapInfo* info, BMMRES code);

  protected:
    BitmapInfo bi;
    Bitmap* map = nullptr;
    int openMode = BMM_NOT_OPEN;
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
