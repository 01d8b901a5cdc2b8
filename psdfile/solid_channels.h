// Channels of one value are alike wherever they stand in a document: their ZIP stream is made once.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace psdfile {

class SolidChannels {
  public:
    // Width and height in samples, and the file's bytes of the one sample.
    using Key = std::tuple<std::uint32_t, std::uint32_t, std::vector<std::uint8_t>>;

    // Null when it isn't there; valid as long as this object.
    [[nodiscard]] const std::string* Find(const Key& key) const {
        const auto found = streams.find(key);
        return found == streams.end() ? nullptr : &found->second;
    }
    void Keep(Key key, std::string stream) { streams.emplace(std::move(key), std::move(stream)); }

  private:
    std::map<Key, std::string> streams;
};

}  // namespace psdfile
