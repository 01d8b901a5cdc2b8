// A folder for the files of a test; it goes with the object.
#pragma once

#include <filesystem>
#include <random>
#include <string>

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::random_device random;
        path = std::filesystem::temp_directory_path() /
               ("veltrane-" + std::to_string(random()) + "-" + std::to_string(random()));
        std::filesystem::create_directories(path);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path path;
};
