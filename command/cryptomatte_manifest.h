// The manifest of a Cryptomatte: which name has which id.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "command/id_index.h"

namespace command {

struct ManifestEntry {
    // UTF-8 as a rule, but from outside: it can hold anything but nothing.
    std::string name;
    // As pixels hold it.
    std::uint32_t id = 0;

    friend bool operator==(const ManifestEntry&, const ManifestEntry&) = default;
};

struct Manifest {
    // In the order of the text. No id is there twice: the first name keeps it.
    std::vector<ManifestEntry> entries{};
    // Number of an id: its place in `entries`.
    IdIndex index{};
    // One line each, without saying whose manifest it is.
    std::vector<std::string> warnings{};

    // The id's hexadecimal digits where no name has it.
    [[nodiscard]] std::string NameOf(std::uint32_t id) const;
};

// A JSON object of names with ids of up to 8 hexadecimal digits. Of text that isn't valid JSON
// (names with bare quotation marks are the rule there, cut text the exception) it keeps what it
// understands. Never throws for what the text holds.
Manifest ReadManifest(std::string_view text);

}  // namespace command
