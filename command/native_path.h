// Paths as the system takes them, and as the command speaks of them (UTF-8).
#pragma once

#include <filesystem>
#include <string>

namespace command {

inline std::filesystem::path Native(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

inline std::string Utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace command
