// Two streams whose text can be looked at.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#ifdef _WIN32
#include <filesystem>
#include <random>
#endif

class CapturedStream {
  public:
    CapturedStream() : file(Open(), std::fclose) {}

    std::FILE* Get() const { return file.get(); }

    // All that was written so far.
    std::string Text() const {
        std::fflush(file.get());
        std::rewind(file.get());
        std::string text;
        for (int letter = std::fgetc(file.get()); letter != EOF; letter = std::fgetc(file.get())) {
            text += static_cast<char>(letter);
        }
        return text;
    }

  private:
    static std::FILE* Open() {
#ifdef _WIN32
        // The system's own is in a folder that users can't write to. This goes when it is closed.
        const auto path = place / ("veltrane_stream_" + std::to_string(std::random_device()()));
        return _wfopen(path.c_str(), L"w+bTD");
#else
        return std::tmpfile();
#endif
    }

#ifdef _WIN32
    // As the program began: tests let the variable for it lead nowhere.
    inline static const std::filesystem::path place = std::filesystem::temp_directory_path();
#endif
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
};
