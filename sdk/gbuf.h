// The G-Buffer: a list of fragments a pixel, front to back, each with the channels that an effect
// asked for.
#pragma once

#include "maxtypes.h"

constexpr DWORD BMM_CHAN_MTL_ID = 0x0002;
constexpr DWORD BMM_CHAN_NODE_ID = 0x0004;
constexpr DWORD BMM_CHAN_REALPIX = 0x0020;
constexpr DWORD BMM_CHAN_COVERAGE = 0x0040;
constexpr DWORD BMM_CHAN_NODE_RENDER_ID = 0x0100;
constexpr DWORD BMM_CHAN_TRANSP = 0x0400;
constexpr DWORD BMM_CHAN_WEIGHT = 0x1000;

// Indices of a fragment's data, and their types.
constexpr int GB_MTL_ID = 1;          // UBYTE
constexpr int GB_NODE_ID = 2;         // UWORD
constexpr int GB_NODE_RENDER_ID = 8;  // UWORD

// Walks one line at a time.
class GBufReader {
  public:
    // Rows from 0 at the top. False when the line can't be read.
    virtual BOOL StartLine(int y) = 0;
    // Stands before the first fragment of pixel x.
    virtual void StartPixel(int x) = 0;
    virtual void NextPixel() = 0;
    // Goes on to the pixel's next fragment; false when there is none.
    virtual BOOL StartNextLayer() = 0;
    // Copies the fragment's value of a GB_ index to `data`; false, with `data` as it was, when the
    // fragment has none.
    virtual BOOL ReadChannelData(int chanIndex, void* data) = 0;

  protected:
    virtual ~GBufReader() = default;
};

class GBuffer {
  public:
    // Null when out of memory; given back with DestroyReader.
    virtual GBufReader* CreateReader() = 0;
    virtual void DestroyReader(GBufReader* reader) = 0;

  protected:
    virtual ~GBuffer() = default;
};
