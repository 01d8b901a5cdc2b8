// Manifests of Cryptomattes, valid JSON or not.
#include <cstdint>
#include <string>

#include "command/cryptomatte_id.h"
#include "command/cryptomatte_manifest.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const command::Manifest manifest = command::ReadManifest(text);
    if (manifest.index.Size() != manifest.entries.size()) __builtin_trap();
    for (std::size_t i = 0; i < manifest.entries.size(); ++i) {
        const command::ManifestEntry& entry = manifest.entries[i];
        const bool sound = !entry.name.empty() && command::PixelID(entry.id) == entry.id &&
                           manifest.index.Find(entry.id) == i &&
                           manifest.NameOf(entry.id) == entry.name;
        if (!sound) __builtin_trap();
    }
    return 0;
}
