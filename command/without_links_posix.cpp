#include "command/without_links.h"

namespace command {

std::filesystem::path WithoutLinks(const std::filesystem::path& path, std::error_code& fault) {
    return std::filesystem::canonical(path, fault);
}

}  // namespace command
