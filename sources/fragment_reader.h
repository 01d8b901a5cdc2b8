// A reader of a G-Buffer that is given back whatever happens, and its walk over a row's fragments.
#pragma once

#include <gbuf.h>

namespace sources {

class FragmentReader {
  public:
    // `gbuffer` may be null and must outlive the reader.
    explicit FragmentReader(GBuffer* gbuffer)
        : owner(gbuffer), reader(gbuffer ? gbuffer->CreateReader() : nullptr) {}
    FragmentReader(const FragmentReader&) = delete;
    FragmentReader& operator=(const FragmentReader&) = delete;
    ~FragmentReader() {
        if (reader) owner->DestroyReader(reader);
    }

    // Calls `pixel(x, fragments)` for the pixels of row `y` from `left` to `right`, both included,
    // as far as the line goes; for none when there is no G-Buffer, no memory or no such line.
    // `fragments(read)` calls `read(GBufReader*)` at each of the pixel's fragments.
    template <class Pixel>
    void ForEachPixel(int y, int left, int right, Pixel pixel) {
        if (!reader || left > right || !reader->StartLine(y)) return;
        int count = reader->StartPixel(left);
        for (int x = left; count >= 0; count = reader->NextPixel()) {
            pixel(x, [this, count](auto read) {
                for (int rest = count; rest > 0 && reader->StartNextLayer(); --rest)
                    read(reader);
            });
            if (++x > right) return;
        }
    }

  private:
    GBuffer* owner;
    GBufReader* reader;
};

}  // namespace sources
