// The document's file on disk: a seekable stream with one large buffer, so that a document of
// millions of short rows reaches the system in few large writes.
#pragma once

#include <maxtypes.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <streambuf>

namespace effect {

// The one seam to the system's files, so that tests can make every call fail in turn. Positions and
// sizes in bytes.
class FileAccess {
  public:
    FileAccess() = default;
    FileAccess(const FileAccess&) = delete;
    FileAccess& operator=(const FileAccess&) = delete;
    virtual ~FileAccess() = default;

    // Creates the file or empties it; others may read and write it meanwhile. False with the
    // system's reason in errno.
    virtual bool Open(const MCHAR* name) = 0;
    // All bytes or failure.
    virtual bool WriteAt(std::int64_t position, const char* bytes, std::size_t size) = 0;
    virtual bool Close() = 0;
};

std::unique_ptr<FileAccess> SystemFileAccess();

// Writes behind the buffer when it is full, when the position leaves what it holds, and on sync.
class OutputFileBuffer : public std::streambuf {
  public:
    explicit OutputFileBuffer(std::unique_ptr<FileAccess> access);
    ~OutputFileBuffer() override;

    bool Open(const MCHAR* name);
    // Writes what is left. False when that, any write before it or the system's close failed; the
    // file is closed in any case.
    bool Close();

  protected:
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(const char* bytes, std::streamsize size) override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;
    int sync() override;

  private:
    std::int64_t Position() const { return start + (pptr() - pbase()); }
    // Bytes from the buffer's start that must be written.
    std::int64_t Held() const;
    // At `start`.
    bool Write(const char* bytes, std::int64_t count);
    bool WriteHeld();
    bool MoveTo(std::int64_t position);

    std::unique_ptr<FileAccess> file;
    std::unique_ptr<char[]> buffer;
    // Position in the file of the buffer's first byte.
    std::int64_t start = 0;
    // Highest end of the bytes held, from the buffer's start: seeking back leaves it.
    std::int64_t held = 0;
    // Length of the file so far.
    std::int64_t size = 0;
    bool open = false;
    // A write failed since Open: what the file holds can't be trusted.
    bool failed = false;
};

class OutputFile : public std::ostream {
  public:
    explicit OutputFile(std::unique_ptr<FileAccess> access = SystemFileAccess());

    // False, with failbit set, when the file can't be created. Clears the state of an earlier file.
    bool Open(const MCHAR* name);
    // Sets badbit when the last bytes can't be written.
    void Close();

  private:
    OutputFileBuffer buffer;
};

}  // namespace effect
