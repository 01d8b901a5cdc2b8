// The G-Buffer: a list of fragments a pixel, front to back, each with the channels that an effect
// asked for.
#pragma once

#include "maxtypes.h"
#include "point3.h"

// Bits of the channels.
constexpr DWORD BMM_CHAN_Z = 0x0001;
constexpr DWORD BMM_CHAN_MTL_ID = 0x0002;
constexpr DWORD BMM_CHAN_NODE_ID = 0x0004;
constexpr DWORD BMM_CHAN_NORMAL = 0x0010;
constexpr DWORD BMM_CHAN_REALPIX = 0x0020;
constexpr DWORD BMM_CHAN_COVERAGE = 0x0040;
constexpr DWORD BMM_CHAN_NODE_RENDER_ID = 0x0100;
constexpr DWORD BMM_CHAN_COLOR = 0x0200;
constexpr DWORD BMM_CHAN_TRANSP = 0x0400;
constexpr DWORD BMM_CHAN_WEIGHT = 0x1000;

// Indices of a fragment's data, and their types.
constexpr int GB_Z = 0;               // float, distance along the camera's axis; grows away from it
constexpr int GB_MTL_ID = 1;          // UBYTE
constexpr int GB_NODE_ID = 2;         // UWORD
constexpr int GB_NORMAL = 4;          // DWORD, see DeCompressNormal
constexpr int GB_REALPIX = 5;         // RealPixel
constexpr int GB_COVERAGE = 6;        // UBYTE, 255 covers the pixel
constexpr int GB_NODE_RENDER_ID = 8;  // UWORD; 65535 means no object
constexpr int GB_COLOR = 9;           // Color24
constexpr int GB_TRANSP = 10;         // Color24, 255 is wholly transparent
constexpr int GB_WEIGHT = 12;         // Color24, the fragment's part in the pixel's colour

// The channel's name for the user ("Z", "Material ID"); empty for an index that isn't there.
const MCHAR* GBChannelName(int index);

struct Color24 {
    UBYTE r, g, b;
};

// A colour of three mantissas and one exponent, so that values above 1 are kept.
struct RealPixel {
    UBYTE r, g, b, e;
};
RealPixel MakeRealPixel(float r, float g, float b);
void ExpandRealPixel(const RealPixel& pixel, float& r, float& g, float& b);

// A unit vector in the camera's space, x to the right, y up, z towards the camera, in 32 bits.
DWORD CompressNormal(const Point3& normal);
Point3 DeCompressNormal(DWORD normal);

// Walks one line at a time.
class GBufReader {
  public:
    // Rows from 0 at the top. False when the line can't be read. Stands before pixel 0.
    virtual int StartLine(int y) = 0;
    // Stands before the first fragment of pixel x. The number of the pixel's fragments, or -1 when
    // the line has no such pixel.
    virtual int StartPixel(int x) = 0;
    // The same for the pixel to the right.
    virtual int NextPixel() = 0;
    // Goes on to the pixel's next fragment; false when there is none.
    virtual BOOL StartNextLayer() = 0;
    // Copies the fragment's value of a GB_ index to `data`; false, with `data` as it was, when the
    // fragment has none.
    virtual BOOL ReadChannelData(int chan, void* data) = 0;

  protected:
    virtual ~GBufReader() = default;
};

class GBuffer {
  public:
    // BMM_CHAN_ bits.
    virtual ULONG ChannelsPresent() = 0;
    // Null when out of memory; given back with DestroyReader.
    virtual GBufReader* CreateReader() = 0;
    virtual void DestroyReader(GBufReader* reader) = 0;
    // The smallest and the largest value of all fragments, of the channel's type (GB_Z). False,
    // with `data` as it was, when there is none.
    virtual BOOL GetChannelMin(int chan, void* data) = 0;
    virtual BOOL GetChannelMax(int chan, void* data) = 0;

  protected:
    virtual ~GBuffer() = default;
};
