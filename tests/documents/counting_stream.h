// A stream as long as one likes that remembers nothing but its positions.
#pragma once

#include <algorithm>
#include <ostream>
#include <streambuf>

namespace psdfile {

class CountingBuffer : public std::streambuf {
  public:
    [[nodiscard]] std::streamoff Size() const { return size; }

  protected:
    std::streamsize xsputn(const char* /*bytes*/, std::streamsize count) override {
        Advance(count);
        return count;
    }
    int_type overflow(int_type character) override {
        Advance(1);
        return traits_type::not_eof(character);
    }
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode /*which*/) override {
        position = offset + (direction == std::ios_base::cur   ? position
                             : direction == std::ios_base::end ? size
                                                               : 0);
        return position;
    }
    pos_type seekpos(pos_type target, std::ios_base::openmode /*which*/) override {
        position = target;
        return target;
    }

  private:
    void Advance(std::streamoff count) {
        position += count;
        size = std::max(size, position);
    }

    std::streamoff position = 0;
    std::streamoff size = 0;
};

}  // namespace psdfile
