// A profile file of a test's own.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "plugin/profile_file.h"
#include "tests/host/temporary_folder.h"

class ProfileFolder {
  public:
    void Write(const std::string& bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
    // Empty without a file.
    [[nodiscard]] std::string Bytes() const {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void Remove() const { std::filesystem::remove(file); }

    // Section "S", key "K".
    [[nodiscard]] plugin::ProfilePlace Place() const { return {name.c_str(), _M("S"), _M("K")}; }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path / u8"\u00E4 \u65E5.cfg";
    std::basic_string<MCHAR> name = file.string<MCHAR>();
};
