// A format of image files that writes down what is asked of it.
#pragma once

#include <bitmap.h>
#include <plugapi.h>

#include <string>
#include <vector>

#include "host/text.h"

// What all objects of one class were told, in turn.
struct FormatCalls {
    std::vector<std::string> calls;
    float gamma = 0.0F;
    BMMRES openResult = BMMRES_SUCCESS;
    BMMRES writeResult = BMMRES_SUCCESS;
};

class RecordingFormat final : public BitmapIO {
  public:
    RecordingFormat(FormatCalls& calls, DWORD capability)
        : record(calls), capabilityBits(capability) {}
    ~RecordingFormat() override {
        if (openMode == BMM_OPEN_W) record.calls.emplace_back("gone");
    }

    int ExtCount() override { return 2; }
    const MCHAR* Ext(int n) override { return n == 0 ? _M("rec") : _M("Tape"); }
    const MCHAR* LongDesc() override { return _M("Recording"); }
    const MCHAR* ShortDesc() override { return _M("Rec"); }
    const MCHAR* AuthorName() override { return _M(""); }
    const MCHAR* CopyrightMessage() override { return _M(""); }
    UINT Version() override { return 100; }
    DWORD Capability() override { return capabilityBits; }
    void ShowAbout(HWND) override {}

    BMMRES OpenOutput(BitmapInfo* info, Bitmap* bitmap) override {
        record.calls.push_back("open " + host::ToUtf8(info->Name()));
        record.gamma = info->Gamma();
        if (record.openResult != BMMRES_SUCCESS)
            return ProcessImageIOError(info, record.openResult);
        map = bitmap;
        openMode = BMM_OPEN_W;
        return BMMRES_SUCCESS;
    }
    BMMRES Write(int frame) override {
        record.calls.push_back("write " + std::to_string(frame) + " of width " +
                               std::to_string(map->Storage()->Width()));
        return record.writeResult;
    }
    int Close(int flag) override {
        record.calls.push_back("close " + std::to_string(flag));
        return 1;
    }

  private:
    FormatCalls& record;
    DWORD capabilityBits;
};

class RecordingFormatDesc final : public ClassDesc {
  public:
    explicit RecordingFormatDesc(DWORD capability = BMMIO_WRITER | BMMIO_EXTENSION, DWORD id = 1)
        : capabilityBits(capability), classID(id) {}

    int IsPublic() override { return 1; }
    void* Create(BOOL) override {
        return static_cast<BitmapIO*>(new RecordingFormat(record, capabilityBits));
    }
    const MCHAR* ClassName() override { return _M("Recording"); }
    SClass_ID SuperClassID() override { return BMM_IO_CLASS_ID; }
    Class_ID ClassID() override { return {classID, 0}; }
    const MCHAR* Category() override { return _M(""); }

    FormatCalls record;

  private:
    DWORD capabilityBits;
    DWORD classID;
};
