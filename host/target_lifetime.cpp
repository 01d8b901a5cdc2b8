#include "host/target_lifetime.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <hold.h>

#include "host/param_block.h"
#include "host/target_reference.h"

namespace host {
namespace {

// References of a maker to a target that left.
class DroppedReferences final : public RestoreObj {
  public:
    DroppedReferences(ReferenceTarget& maker, ReferenceTarget& target, std::vector<int> numbers)
        : maker_(&maker), target_(&target), numbers_(std::move(numbers)) {}

    void Restore(int /*isUndo*/) override { Replace(target_.Get()); }
    void Redo() override { Replace(nullptr); }

  private:
    void Replace(ReferenceTarget* target) {
        ReferenceTarget* maker = maker_.Get();
        if (!maker || !target_.Get()) return;
        for (const int number : numbers_)
            maker->ReplaceReference(number, target);
        maker->NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    }

    TargetReference maker_;
    TargetReference target_;
    std::vector<int> numbers_;
};

// Those who look after their own references are left out.
void PutUndo(ReferenceMaker& maker, ReferenceTarget& target) {
    auto* asTarget = dynamic_cast<ReferenceTarget*>(&maker);
    if (!asTarget || dynamic_cast<ParamBlock*>(asTarget)) return;
    std::vector<int> numbers;
    for (int number = 0; number < maker.NumRefs(); ++number) {
        if (maker.GetReference(number) == &target) numbers.push_back(number);
    }
    theHold.Put(new DroppedReferences(*asTarget, target, std::move(numbers)));
}

}  // namespace
}  // namespace host

void TargetLifetime::Detach(ReferenceTarget& target) {
    std::vector<ReferenceMaker*>& dependents = target.dependents_;
    const auto next = [&] {
        return std::find_if(dependents.begin(), dependents.end(), [](ReferenceMaker* maker) {
            return !dynamic_cast<host::TargetReference*>(maker);
        });
    };
    for (auto found = next(); found != dependents.end(); found = next()) {
        ReferenceMaker* maker = *found;
        if (theHold.Holding()) host::PutUndo(*maker, target);
        PartID part = PART_ALL;
        maker->NotifyRefChanged(FOREVER, &target, part, REFMSG_TARGET_DELETED, FALSE);
        if (std::find(dependents.begin(), dependents.end(), maker) == dependents.end()) continue;
        for (int number = 0; number < maker->NumRefs(); ++number) {
            if (maker->GetReference(number) == &target) maker->DeleteReference(number);
        }
        std::erase(dependents, maker);
    }
    // Nobody is left but those who hear of all.
    target.NotifyDependents(FOREVER, PART_ALL, REFMSG_TARGET_DELETED);
}
