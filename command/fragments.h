// Builds the G-Buffer of a frame from the planes of a render file: object and material ranks, whole
// numbers, depth, normals and the picture's colour become each pixel's fragments.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "command/rank_join.h"
#include "host/fragment_buffer.h"

namespace command {

// A depth from here on is the background's.
constexpr float backgroundDepth = 1e10F;

// One rank of a row: an id a pixel, by its bits (0: none), and what it covers.
struct RankRow {
    std::span<const std::uint32_t> ids;
    std::span<const float> coverages;
};

// One row of the planes that a file has, the others empty; those that are there have a value a
// pixel at least.
struct FragmentRow {
    std::span<const RankRow> objects{};
    std::span<const RankRow> materials{};
    // The numbers that the user gave to objects and materials, one a pixel. 0 is none, and so is
    // what the G-Buffer can't hold, above 65535 and 255.
    std::span<const std::uint32_t> objectIDs{};
    std::span<const std::uint32_t> materialIDs{};
    // Distance along the camera's axis, above 0.
    std::span<const float> depth{};
    // In the camera's space: x to the right, y up, z towards the camera. (0, 0, 0) is none.
    std::array<std::span<const float>, 3> normal{};
    // Red, green, blue, alpha; linear and premultiplied. All four or none.
    std::array<std::span<const float>, 4> color{};
};

// The same of one tidy sample of a deep pixel: none lies in another.
struct DeepFragment {
    float z = 0.0F;
    float alpha = 0.0F;
    // Ids by their bits.
    std::uint32_t object = 0;
    std::uint32_t material = 0;
    std::uint32_t objectID = 0;
    std::uint32_t materialID = 0;
    Point3 normal{};
    // Premultiplied with the sample's own alpha.
    std::array<float, 3> color{};
};

struct FragmentOptions {
    // The index of an id, or unknownObject for one without; and the material's, or noMaterial.
    // noObject leaves the id out. Needed for planes of ranks, and not called with 0.
    std::function<std::uint16_t(std::uint32_t bits)> objectIndex{};
    std::function<std::uint16_t(std::uint32_t bits)> materialIndex{};
    // The users' numbers by an object's index; other objects have the pixel's from the row.
    // Outlives the builder.
    std::span<const UWORD> objectIDs{};
};

class FragmentBuilder {
  public:
    // `buffer` outlives the builder; what it doesn't keep isn't worked out.
    FragmentBuilder(host::FragmentBuffer& buffer, FragmentOptions options);

    // The frame's next row, of the buffer's width. A row without planes has no fragments.
    //
    // With ranks, the fragments are what RankJoin finds; without material ranks they have the row's
    // number of the material. A pixel without ranks is one fragment of unknownObject that covers as
    // much as its alpha (all of it when there is no colour), if anything is known of it: a depth, a
    // number or a normal. All fragments of a pixel share its depth, its normal, and its colour
    // divided by their coverage.
    void AppendRow(const FragmentRow& row);

    // The frame's next pixel, of samples front to back. A fragment covers what is seen of its
    // sample behind those in front, rounded so that the fragments of each object sum to the
    // object's part of the pixel's alpha; samples that then cover nothing are left out.
    void AppendDeepPixel(std::span<const DeepFragment> samples);

  private:
    // The last id of a rank, which is most often the next pixel's too.
    struct Lookup {
        std::uint32_t bits = 0;
        std::uint16_t index = 0;
    };
    // What an object has got of a deep pixel.
    struct Account {
        std::uint64_t pixel = 0;
        double coverage = 0.0;
        int units = 0;
    };

    bool Keeps(DWORD channels) const { return (buffer.ChannelsPresent() & channels) != 0; }
    void FindCovered(const FragmentRow& row);
    void AppendRanks(const FragmentRow& row, std::size_t x);
    void AppendPlain(const FragmentRow& row, std::size_t x);
    host::Fragment Base(const FragmentRow& row, std::size_t x) const;
    std::optional<JoinedFragment> OnlyFragment(const FragmentRow& row, std::size_t x);
    void Add(const host::Fragment& base, const JoinedFragment& joined, const FragmentRow& row,
             std::size_t x);
    void SetColor(host::Fragment& fragment, float red, float green, float blue,
                  double coverage) const;
    std::uint16_t ObjectIndex(std::size_t rank, std::uint32_t bits);
    std::uint16_t MaterialIndex(std::size_t rank, std::uint32_t bits);
    UWORD NumberOf(std::uint16_t object, std::uint32_t ofPixel) const;
    int CoverMore(std::uint16_t object, UWORD number, double coverage);

    host::FragmentBuffer& buffer;
    FragmentOptions options;
    RankJoin join;
    // A pixel of the row: the largest coverage of all its ranks, and of all but the first of
    // objects and materials.
    std::vector<float> largest;
    std::vector<float> largestOfRest;
    std::vector<Rank> objects;
    std::vector<Rank> materials;
    std::vector<Lookup> objectLookups;
    std::vector<Lookup> materialLookups;
    std::vector<host::Fragment> fragments;
    // By an object's index, and behind those by the numbers of unknown objects.
    std::vector<Account> accounts;
    std::uint64_t deepPixels = 0;
};

}  // namespace command
