// Objects of a scene for tests: they keep their references and write down what they are told.
#pragma once

#include <ref.h>

#include <functional>
#include <vector>

struct Message {
    ReferenceTarget* target;
    RefMessage message;
    PartID part;
    bool operator==(const Message&) const = default;
};

class SampleTarget : public ReferenceTarget {
  public:
    explicit SampleTarget(int references = 1) : references_(static_cast<std::size_t>(references)) {}
    ~SampleTarget() override { DeleteAllRefsFromMe(); }

    int NumRefs() override { return static_cast<int>(references_.size()); }
    RefTargetHandle GetReference(int which) override {
        return references_[static_cast<std::size_t>(which)];
    }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL) override {
        messages.push_back({hTarget, message, partID});
        return onMessage ? onMessage(hTarget, partID, message) : REF_SUCCEED;
    }

    std::vector<Message> messages;
    std::function<RefResult(ReferenceTarget*, PartID&, RefMessage)> onMessage;

  private:
    void SetReference(int which, RefTargetHandle target) override {
        references_[static_cast<std::size_t>(which)] = target;
    }

    std::vector<ReferenceTarget*> references_;
};
