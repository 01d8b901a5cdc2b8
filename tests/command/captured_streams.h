// Two streams whose text can be looked at.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

class CapturedStream {
  public:
    CapturedStream() : file(std::tmpfile(), std::fclose) {}

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
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
};
