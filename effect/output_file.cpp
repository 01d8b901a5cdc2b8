#include "effect/output_file.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

#ifdef _WIN32
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#else
#include <unistd.h>
#endif

namespace effect {
namespace {

// Large enough that the cost of a system call doesn't show, small against a frame's memory.
constexpr std::size_t bufferSize = std::size_t{1} << 20;

#ifdef _WIN32

int OpenForWriting(const std::filesystem::path& path) {
    int descriptor = -1;
    if (_wsopen_s(&descriptor, path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY,
                  _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0) {
        return -1;
    }
    return descriptor;
}

std::int64_t WriteSome(int descriptor, std::int64_t position, const char* bytes, std::size_t size) {
    if (_lseeki64(descriptor, position, SEEK_SET) < 0) return -1;
    return _write(descriptor, bytes, static_cast<unsigned>(std::min<std::size_t>(size, 1 << 30)));
}

int CloseDescriptor(int descriptor) {
    return _close(descriptor);
}

#else

int OpenForWriting(const std::filesystem::path& path) {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

std::int64_t WriteSome(int descriptor, std::int64_t position, const char* bytes, std::size_t size) {
    return pwrite(descriptor, bytes, size, position);
}

int CloseDescriptor(int descriptor) {
    return close(descriptor);
}

#endif

class SystemFile : public FileAccess {
  public:
    ~SystemFile() override { SystemFile::Close(); }

    bool Open(const MCHAR* name) override {
        try {
            descriptor = OpenForWriting(std::filesystem::path(name));
        } catch (const std::exception&) {
            // The name is no valid UTF-16.
            errno = EINVAL;
            descriptor = -1;
        }
        return descriptor >= 0;
    }

    bool WriteAt(std::int64_t position, const char* bytes, std::size_t size) override {
        while (size > 0) {
            const std::int64_t written = WriteSome(descriptor, position, bytes, size);
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            bytes += written;
            position += written;
            size -= static_cast<std::size_t>(written);
        }
        return true;
    }

    bool Close() override {
        const int closed = std::exchange(descriptor, -1);
        return closed < 0 || CloseDescriptor(closed) == 0;
    }

  private:
    int descriptor = -1;
};

}  // namespace

std::unique_ptr<FileAccess> SystemFileAccess() {
    return std::make_unique<SystemFile>();
}

OutputFileBuffer::OutputFileBuffer(std::unique_ptr<FileAccess> access)
    : file(std::move(access)), buffer(std::make_unique<char[]>(bufferSize)) {}

OutputFileBuffer::~OutputFileBuffer() {
    Close();
}

bool OutputFileBuffer::Open(const MCHAR* name) {
    Close();
    start = 0;
    held = 0;
    size = 0;
    failed = false;
    open = file->Open(name);
    setp(buffer.get(), buffer.get() + (open ? bufferSize : 0));
    return open;
}

bool OutputFileBuffer::Close() {
    if (!open) return true;
    WriteHeld();
    open = false;
    setp(nullptr, nullptr);
    return file->Close() && !failed;
}

std::int64_t OutputFileBuffer::Held() const {
    return std::max<std::int64_t>(held, pptr() - pbase());
}

bool OutputFileBuffer::Write(const char* bytes, std::int64_t count) {
    if (!file->WriteAt(start, bytes, static_cast<std::size_t>(count))) {
        failed = true;
        return false;
    }
    size = std::max(size, start + count);
    return true;
}

bool OutputFileBuffer::WriteHeld() {
    const std::int64_t count = Held();
    const std::int64_t position = Position();
    if (count > 0 && !Write(pbase(), count)) return false;
    start = position;
    held = 0;
    setp(buffer.get(), buffer.get() + bufferSize);
    return true;
}

bool OutputFileBuffer::MoveTo(std::int64_t position) {
    if (!open || position < 0) return false;
    held = Held();
    if (position < start || position > start + held) {
        if (!WriteHeld()) return false;
        start = position;
        return true;
    }
    setp(buffer.get(), buffer.get() + bufferSize);
    pbump(static_cast<int>(position - start));
    return true;
}

OutputFileBuffer::int_type OutputFileBuffer::overflow(int_type byte) {
    if (!open || !WriteHeld()) return traits_type::eof();
    if (!traits_type::eq_int_type(byte, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(byte);
        pbump(1);
    }
    return traits_type::not_eof(byte);
}

std::streamsize OutputFileBuffer::xsputn(const char* bytes, std::streamsize count) {
    if (!open) return 0;
    if (count > epptr() - pptr()) {
        if (!WriteHeld()) return 0;
        if (count >= static_cast<std::streamsize>(bufferSize)) {
            if (!Write(bytes, count)) return 0;
            start += count;
            return count;
        }
    }
    std::copy_n(bytes, count, pptr());
    pbump(static_cast<int>(count));
    return count;
}

OutputFileBuffer::pos_type OutputFileBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                                     std::ios_base::openmode which) {
    if (!open) return pos_type(off_type(-1));
    std::int64_t origin = 0;
    if (from == std::ios_base::cur) {
        if (offset == 0) return pos_type(Position());
        origin = Position();
    } else if (from == std::ios_base::end) {
        origin = std::max(size, start + Held());
    }
    return seekpos(pos_type(origin + offset), which);
}

OutputFileBuffer::pos_type OutputFileBuffer::seekpos(pos_type position, std::ios_base::openmode) {
    return MoveTo(off_type(position)) ? position : pos_type(off_type(-1));
}

int OutputFileBuffer::sync() {
    return open && WriteHeld() ? 0 : -1;
}

OutputFile::OutputFile(std::unique_ptr<FileAccess> access)
    : std::ostream(nullptr), buffer(std::move(access)) {
    rdbuf(&buffer);
}

bool OutputFile::Open(const MCHAR* name) {
    clear();
    if (!buffer.Open(name)) setstate(failbit);
    return good();
}

void OutputFile::Close() {
    if (!buffer.Close()) setstate(badbit);
}

}  // namespace effect
