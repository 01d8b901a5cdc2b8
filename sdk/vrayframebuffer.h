// V-Ray's own frame buffer, as far as the effect reads it: the channels of a frame, each with the
// render element's pixels. Not part of the host: the renderer gives it to who asks.
#pragma once

#include <cstddef>

#include "plugapi.h"

// Types of a channel's values, as DescribeChannel tells them.
enum VRayChannelType : int {
    RDCT_FLOAT = 0,
    RDCT_3FLOAT = 1,
    RDCT_2FLOAT = 2,
    RDCT_INT = 3,
    RDCT_3FLOAT_SIGNED = 4,
    RDCT_LAST = 5,
};

// Aliases of the channels that every frame has.
constexpr int VRAY_CHANNEL_ALPHA = 125;
constexpr int VRAY_CHANNEL_RGB = 126;
// Above this, a channel is the renderer's own.
constexpr int VRAY_CHANNEL_LAST_ALIAS = 1000;

struct VRayChannelDescription {
    int alias = -1;
    VRayChannelType type = RDCT_LAST;
    // UTF-8; owned by the frame buffer.
    const char* name = "";
};

// What GetPixels is asked for: the pixels from (x, y) up to, but not including, (right, bottom);
// the buffer is `width` by `height`.
struct VRayRegion {
    int x, y, right, bottom, width, height, reserved0, reserved1;
};

// Formats of GetPixels: red, green, blue and alpha of each pixel.
constexpr int VRAY_PIXELS_16 = 301;     // as BMM_Color_64
constexpr int VRAY_PIXELS_FLOAT = 303;  // as BMM_Color_fl
// GetProperty: what is to be passed on as `colorMapped`.
constexpr int VRAY_PROPERTY_COLOR_MAPPED = 125;

class IVRayPixelBuffer {
  public:
    // Before the first read of a frame.
    virtual void Prepare() = 0;
    // Pixels.
    virtual int GetWidth() = 0;
    virtual int GetHeight() = 0;
    virtual int GetNumChannels() = 0;
    // False, with `description` as it was, for an index out of range.
    virtual bool DescribeChannel(int index, VRayChannelDescription& description) = 0;
    // The channel's index; -1 when no channel has the alias.
    virtual int FindChannel(int alias) = 0;
    virtual DWORD GetProperty(int number) = 0;
    // Linear pixels, premultiplied. A channel of one value gives it in all colours; the alpha of a
    // channel without its own is the picture's alpha, and 1 for a picture without. `readFlag` 0 has
    // the frame buffer's colour corrections applied, -1 doesn't. False, with the buffer as it was,
    // when the pixels can't be had.
    virtual bool GetPixels(int channelIndex, DWORD colorMapped, const VRayRegion& region,
                           int format, std::size_t bytes, void* buffer, int reserved0, int readFlag,
                           int reserved1) = 0;

  protected:
    ~IVRayPixelBuffer() = default;
};

// The colour corrections of the frame buffer's window.
constexpr int VRAY_COLOR_CORRECTIONS = 19;

class IVRayColorCorrections {
  public:
    // `index` from 0 to below VRAY_COLOR_CORRECTIONS. Some values are switches, on from 1. What is
    // read of the frame buffer from then on has the corrections that are set.
    virtual float GetValue(int index) = 0;
    virtual void SetValue(int index, float value) = 0;

  protected:
    ~IVRayColorCorrections() = default;
};

class IVRayImage {
  public:
    // Null for an interface that the image doesn't have.
    virtual void* GetInterface(DWORD id) = 0;

  protected:
    ~IVRayImage() = default;
};
// IVRayImage::GetInterface's id of IVRayPixelBuffer.
constexpr DWORD VRAY_PIXEL_BUFFER_INTERFACE = 0x7783b785;
// That of IVRayColorCorrections.
constexpr DWORD VRAY_COLOR_CORRECTIONS_INTERFACE = 0x77c074c6;

class IVRayFrameBuffer : public BaseInterface {
  public:
    // Null while there is no frame.
    virtual IVRayImage* GetImage() = 0;
};
// Renderer::GetInterface's id.
constexpr Interface_ID VRAY_FRAME_BUFFER_INTERFACE{0x08c17f84, 0x1747358c};

// What a render element answers that V-Ray puts into its frame buffer.
constexpr DWORD VRAY_RENDER_ELEMENT_INTERFACE = 1121660227;
