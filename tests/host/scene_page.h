// The scene files in the documentation, for tests.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace scene_page {

inline std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// 0: what people write; 1: what the application saves.
inline std::string Example(int number) {
    const std::string page = FileText(VELTRANE_SOURCE_DIR "/docs/scene-file.md");
    const std::string fence = "```json\n";
    std::size_t begin = 0;
    for (int i = 0; i <= number; ++i)
        begin = page.find(fence, begin) + fence.size();
    return page.substr(begin, page.find("```", begin) - begin);
}

}  // namespace scene_page
