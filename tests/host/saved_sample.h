// Objects that files hold, for tests: with a block of each kind of parameter, a reference, and data
// of their own.
#pragma once

#include <maxapi.h>

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "host/application.h"
#include "host/saved_objects.h"
#include "host/target_lifetime.h"
#include "tests/host/sample_block.h"

class SavedSampleDesc;

class SavedSample : public SampleOwner {
  public:
    explicit SavedSample(SavedSampleDesc& desc);

    Class_ID ClassID() override;
    SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
    IOResult Save(ISave* isave) override;
    IOResult Load(ILoad* iload) override;
    RefTargetHandle Clone(RemapDir& remap) override;

    // Goes into a chunk with the id 0x20, when there is any.
    std::vector<std::uint8_t> data;

  protected:
    ~SavedSample() override;

  private:
    SavedSampleDesc& desc_;
};

class SavedSampleDesc : public SampleClassDesc {
  public:
    explicit SavedSampleDesc(PBAccessor* accessor = nullptr, Class_ID id = {7, 8})
        : SampleClassDesc(accessor), id_(id) {}
    void* Create(BOOL loading) override {
        lastLoading = loading;
        return makesNone ? nullptr : new SavedSample(*this);
    }
    Class_ID ClassID() override { return id_; }

    std::function<void(SavedSample&)> onMake;
    std::function<IOResult(SavedSample&, ISave*)> onSave;
    std::function<IOResult(SavedSample&, ILoad*)> onLoad;
    bool makesNone = false;
    BOOL lastLoading = FALSE;
    int living = 0;

  private:
    Class_ID id_;
};

inline SavedSample::SavedSample(SavedSampleDesc& desc) : SampleOwner(desc), desc_(desc) {
    ++desc_.living;
    if (desc_.onMake) desc_.onMake(*this);
}

inline SavedSample::~SavedSample() {
    --desc_.living;
}

inline Class_ID SavedSample::ClassID() {
    return desc_.ClassID();
}

inline IOResult SavedSample::Save(ISave* isave) {
    if (desc_.onSave) return desc_.onSave(*this, isave);
    if (data.empty()) return IO_OK;
    isave->BeginChunk(0x20);
    ULONG written = 0;
    const IOResult result = isave->Write(data.data(), static_cast<ULONG>(data.size()), &written);
    isave->EndChunk();
    return result;
}

inline IOResult SavedSample::Load(ILoad* iload) {
    if (desc_.onLoad) return desc_.onLoad(*this, iload);
    while (iload->OpenChunk() == IO_OK) {
        data.resize(iload->CurChunkLength());
        ULONG read = 0;
        iload->Read(data.data(), static_cast<ULONG>(data.size()), &read);
        iload->CloseChunk();
    }
    return IO_OK;
}

inline RefTargetHandle SavedSample::Clone(RemapDir& remap) {
    auto* copy = new SavedSample(desc_);
    copy->data = data;
    copy->ReplaceReference(0, remap.CloneRef(block));
    copy->ReplaceReference(1, remap.CloneRef(target));
    BaseClone(this, copy, remap);
    return copy;
}

// As the host makes targets for a plug-in: nobody owns it. The class must be the application's.
inline SavedSample* MakeSample(Class_ID id = {7, 8}) {
    void* made = GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, id);
    return static_cast<SavedSample*>(static_cast<ReferenceTarget*>(made));
}

// What a file says of a sample without any settings.
inline host::SavedObject SavedSampleObject(host::Handle handle) {
    host::SavedObject saved;
    saved.handle = handle;
    saved.superClass = REF_TARGET_CLASS_ID;
    saved.classID = Class_ID(7, 8);
    saved.references = {host::SavedBlock{3, 2, {}}, host::SavedReference{}};
    return saved;
}

inline host::SavedBlock& SampleBlockOf(host::SavedObject& object) {
    return std::get<host::SavedBlock>(object.references[0]);
}
