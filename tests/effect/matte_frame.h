// A small frame with a G-Buffer: three objects over a background.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "effect/id_bounds.h"
#include "host/fragment_buffer.h"
#include "host/scene.h"
#include "tests/effect/document_frame.h"
#include "tests/psdbuilder/tree_text.h"

class MatteFrameTest : public DocumentFrameTest {
  protected:
    static constexpr DWORD idChannels =
        BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID | BMM_CHAN_MTL_ID | BMM_CHAN_COVERAGE;
    static constexpr DWORD allChannels =
        idChannels | BMM_CHAN_COLOR | BMM_CHAN_NORMAL | BMM_CHAN_REALPIX;

    // Object ID, render ID and material ID of the three objects.
    static host::Fragment First(UBYTE coverage) {
        return {
            .color = {200, 100, 50}, .nodeID = 1, .renderID = 10, .mtlID = 4, .coverage = coverage};
    }
    static host::Fragment Second(UBYTE coverage) {
        return {
            .color = {40, 80, 120}, .nodeID = 3, .renderID = 11, .mtlID = 6, .coverage = coverage};
    }
    static host::Fragment Third(UBYTE coverage) {
        return {.color = {250, 240, 230},
                .nodeID = 7,
                .renderID = 12,
                .mtlID = 9,
                .coverage = coverage};
    }

    MatteFrameTest() { UseChannels(allChannels); }

    // What the renderer was asked for.
    void UseChannels(DWORD channels) {
        auto fragments = std::make_unique<host::FragmentBuffer>(width, height, channels);
        const host::Fragment background;
        const std::array both{First(128), Second(127)};
        fragments->AddPixel(std::array{First(255)});
        fragments->AddPixel(both);
        fragments->AddPixel({});
        fragments->AddPixel(std::array{background});
        fragments->AddPixel(std::array{Second(255)});
        fragments->AddPixel(std::array{Third(51)});
        image->SetGBuffer(std::move(fragments));
        effect::CollectIDBounds(image.get());
    }
    // The matte of each object.
    const std::vector<int> firstMatte{255, 128, 0, 0, 0, 0};
    const std::vector<int> secondMatte{0, 127, 0, 0, 255, 0};
    const std::vector<int> thirdMatte{0, 0, 0, 0, 0, 51};
    const std::vector<int> noMatte{0, 0, 0, 0, 0, 0};

    // A node of the scene that the fragments of render ID `renderID` belong to.
    host::Node& AddNode(const MSTR& name, USHORT renderID, host::Node* parent = nullptr) {
        host::Node& node = Host().scene.AddNode(name, parent);
        node.SetRenderID(renderID);
        return node;
    }

    static std::vector<int> Rows8(const psdfile::PSDChannelImageDataSourcePtr& source) {
        std::vector<int> samples;
        for (std::uint32_t y = 0; y < height; ++y) {
            const std::uint8_t* row = source->GetRow8(y);
            samples.insert(samples.end(), row, row + width);
        }
        return samples;
    }
    std::string Tree() { return psdbuilder::TreeText(Document()); }
    // The names of the spare channels.
    std::string Channels() {
        std::string text;
        for (const psdbuilder::PSDBuilderChannel& channel : Document().channels)
            text += (text.empty() ? "" : " | ") + channel.name;
        return text;
    }
    // The first child of the document, which is a set, and its layers.
    const psdbuilder::PSDBuilderLayerSet& Set0() {
        return dynamic_cast<const psdbuilder::PSDBuilderLayerSet&>(*Document().children.at(0));
    }
    const psdbuilder::PSDBuilderRGBLayer& InSet(std::size_t index) {
        return dynamic_cast<const psdbuilder::PSDBuilderRGBLayer&>(*Set0().children.at(index));
    }
};
