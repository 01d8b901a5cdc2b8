// Takes a written document apart by its own reading of the format. It shares no code with the
// writer, and insists that every length leads exactly to where the next thing begins.
#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace psdfile {

struct WalkedResource {
    std::string signature;
    int id = 0;
    std::string name;
    std::string data;
};

struct WalkedChannel {
    int id = 0;
    int compression = 0;
    std::string pixels;  // big-endian samples, unpacked; empty if the channel has none
};

struct WalkedLayer {
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;
    std::vector<WalkedChannel> channels;
    std::string blendKey;
    int opacity = 0;
    int clipping = 0;
    int flags = 0;
    bool hasMask = false;
    int maskTop = 0;
    int maskLeft = 0;
    int maskBottom = 0;
    int maskRight = 0;
    int maskColor = 0;
    int maskFlags = 0;
    std::string name;
    std::vector<std::string> blockKeys;
    std::map<std::string, std::string> blocks;  // data by key
};

struct WalkedDocument {
    bool psb = false;
    int channelCount = 0;
    int height = 0;
    int width = 0;
    int depth = 0;
    std::string colorMode;
    std::vector<WalkedResource> resources;
    bool layersInTaggedBlock = false;
    bool mergedTransparency = false;
    std::vector<WalkedLayer> layers;  // bottom layer first
    int imageCompression = 0;
    std::vector<std::string> imageChannels;  // big-endian samples
};

// Throws std::runtime_error that says what is wrong and at which offset. psbLengths: the widths of
// the lengths, which must match the version in the header.
WalkedDocument WalkDocument(const std::string& file, bool psbLengths);

}  // namespace psdfile
