// An effect for tests that only refers to one target, and its class.
#pragma once

#include <sfx.h>

class ReferringEffect : public Effect {
  public:
    explicit ReferringEffect(Class_ID id) : id_(id) {}

    Class_ID ClassID() override { return id_; }
    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int) override { return target; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }
    void Apply(TimeValue, Bitmap*, RenderGlobalContext*, CheckAbortCallback*) override {}

    ReferenceTarget* target = nullptr;

  protected:
    ~ReferringEffect() override { DeleteAllRefsFromMe(); }

  private:
    void SetReference(int, RefTargetHandle to) override { target = to; }

    Class_ID id_;
};

class ReferringEffectDesc : public ClassDesc {
  public:
    int IsPublic() override { return 1; }
    void* Create(BOOL) override { return new ReferringEffect(ClassID()); }
    const MCHAR* ClassName() override { return _M("Referring"); }
    SClass_ID SuperClassID() override { return RENDER_EFFECT_CLASS_ID; }
    Class_ID ClassID() override { return {21, 22}; }
    const MCHAR* Category() override { return _M(""); }
};
