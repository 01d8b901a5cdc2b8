// Which channels one pass over a file is to read, each of them once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "command/render_file.h"

namespace command {

class RowRequests {
  public:
    // The place of the channel's row among the rows that come.
    std::size_t Add(const ChannelRef& channel) {
        const auto found = std::find(channels.begin(), channels.end(), channel);
        if (found != channels.end()) return static_cast<std::size_t>(found - channels.begin());
        channels.push_back(channel);
        return channels.size() - 1;
    }
    const std::vector<ChannelRef>& Channels() const { return channels; }

  private:
    std::vector<ChannelRef> channels;
};

}  // namespace command
