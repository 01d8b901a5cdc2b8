// How objects write themselves into a scene file, and read themselves back.
#pragma once

#include "maxtypes.h"

enum IOResult { IO_OK = 0, IO_END = 1, IO_ERROR = 2 };

// The chunks of one object. They may lie in each other. Bytes come back as they were written; what
// they mean is the object's.
class ISave {
  public:
    virtual void BeginChunk(USHORT id) = 0;
    virtual void EndChunk() = 0;
    // Only inside a chunk; IO_ERROR outside.
    virtual IOResult Write(const void* data, ULONG bytes, ULONG* written) = 0;

  protected:
    ~ISave() = default;
};

class ILoad;

// Called when the whole file is in, in the order of registration; deletes itself. The host deletes
// one that isn't called because the file was given up.
class PostLoadCallback {
  public:
    virtual ~PostLoadCallback() = default;
    virtual void proc(ILoad* iload) = 0;
};

// The chunks of one object, in the order in which they were written.
class ILoad {
  public:
    // IO_OK at the next chunk of the present level, IO_END behind the last.
    virtual IOResult OpenChunk() = 0;
    virtual USHORT CurChunkID() = 0;
    // Bytes of the open chunk's own data.
    virtual ULONG CurChunkLength() = 0;
    virtual IOResult CloseChunk() = 0;
    // IO_ERROR when fewer are left; `read` tells how many came.
    virtual IOResult Read(void* data, ULONG bytes, ULONG* read) = 0;
    virtual void RegisterPostLoadCallback(PostLoadCallback* callback) = 0;

  protected:
    ~ILoad() = default;
};
