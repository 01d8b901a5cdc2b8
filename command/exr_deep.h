// Rows of one deep part of an OpenEXR file.
#pragma once

#include <OpenEXR/ImfDeepFrameBuffer.h>
#include <OpenEXR/ImfForward.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "command/deep_samples.h"
#include "command/render_file.h"

namespace command {

// Scanlines or tiles of full size. What is in memory is the asked channels' samples of one row, or
// of one row of tiles.
class ExrDeepRows {
  public:
    // Throws InputError when a channel isn't there.
    ExrDeepRows(Imf::MultiPartInputFile& file, const std::string& path, std::uint64_t fileBytes,
                const Window& frame, const DeepChannels& channels);
    ~ExrDeepRows();
    ExrDeepRows(const ExrDeepRows&) = delete;
    ExrDeepRows& operator=(const ExrDeepRows&) = delete;

    // Goes to row `y` of the frame. Throws InputError when the samples are more than the file can
    // hold or than memory should, and what the library throws.
    void Load(int y);
    // The row in hand, until the next Load.
    DeepRow Row() const { return {samples, starts}; }

    // How the library reads a part, a band of rows at a time.
    class Bands {
      public:
        Bands() = default;
        Bands(const Bands&) = delete;
        Bands& operator=(const Bands&) = delete;
        virtual ~Bands() = default;
        // Rows of the band with the row `row`.
        virtual Window BandOf(int row) const = 0;
        virtual void SetFrameBuffer(const Imf::DeepFrameBuffer& buffer) = 0;
        virtual void ReadCounts(const Window& band) = 0;
        virtual void ReadSamples(const Window& band) = 0;
    };

  private:
    // The samples of one channel in the band: numbers, or the bits of floats.
    struct Plane {
        std::string name;
        bool isUnsigned = false;
        std::vector<std::uint32_t> samples;
        // For each pixel where its samples are.
        std::vector<std::uint32_t*> places;
    };
    static constexpr int none = -1;

    int PlaneOf(const Imf::Header& header, const std::string& name);
    void ReadBand(int row);
    void CheckSamples(std::uint64_t count, int row) const;
    float Value(int plane, std::size_t sample, float otherwise) const;
    void ReadPixel(std::size_t pixel);

    std::string path;
    Window frame;
    Window data;
    std::unique_ptr<Bands> bands;
    // The most samples that the whole file can hold when it is compressed as well as can be.
    std::uint64_t mostInFile = 0;
    std::vector<Plane> planes;
    // Places in planes, or none.
    int color[3] = {none, none, none};
    int alpha = none;
    int z = none;
    int zBack = none;
    std::vector<int> ids;

    Window band;
    // Of the band's pixels.
    std::vector<unsigned> counts;
    std::vector<std::size_t> offsets;

    DeepTidier tidier;
    std::vector<DeepSample> pixelSamples;
    std::vector<DeepSample> samples;
    std::vector<std::size_t> starts;
};

}  // namespace command
