// An effect for tests that writes down what it is asked to do.
#pragma once

#include <notify.h>
#include <sfx.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

using Journal = std::vector<std::string>;

class SampleEffect : public Effect8 {
  public:
    SampleEffect(Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}

    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }
    int RenderBegin(TimeValue t, ULONG flags) override {
        Write("begin " + std::to_string(t) + " flags " + std::to_string(flags));
        if (onBegin) {
            onBegin();
        }
        return 0;
    }
    int RenderEnd(TimeValue t) override {
        Write("end " + std::to_string(t));
        return 0;
    }
    bool SupportsBitmap(Bitmap& bitmap) override {
        Write("supports " + std::to_string(bitmap.Storage()->Width()));
        return supports;
    }
    void Apply(TimeValue t, Bitmap* bm, RenderGlobalContext* gc, CheckAbortCallback* cb) override {
        Write("apply " + std::to_string(t) + " " + std::to_string(bm->Storage()->Width()) + "x" +
              std::to_string(gc->devHeight));
        if (onApply) {
            onApply(gc, cb);
        }
    }

    bool supports = true;
    std::function<void()> onBegin;
    std::function<void(RenderGlobalContext*, CheckAbortCallback*)> onApply;

  private:
    void Write(const std::string& what) { journal_.push_back(name_ + " " + what); }

    Journal& journal_;
    std::string name_;
};
