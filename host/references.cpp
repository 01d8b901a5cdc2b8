// The references between objects: who depends on whom, and how a change travels up.
#include <algorithm>
#include <iterator>
#include <unordered_set>

#include <ref.h>

#include "host/param_block.h"
#include "host/target_lifetime.h"

namespace {

using Makers = std::vector<ReferenceMaker*>;

bool Holds(const Makers& makers, const ReferenceMaker* maker) {
    return std::find(makers.begin(), makers.end(), maker) != makers.end();
}

// The latest, so that a maker which drops many references, the last one first, needn't move the
// others.
void EraseOne(Makers& makers, const ReferenceMaker* maker) {
    const auto entry = std::find(makers.rbegin(), makers.rend(), maker);
    if (entry != makers.rend()) {
        makers.erase(std::next(entry).base());
    }
}

Makers WithoutRepetition(const Makers& makers) {
    Makers once;
    std::unordered_set<const ReferenceMaker*> met;
    for (ReferenceMaker* maker : makers) {
        if (met.insert(maker).second) {
            once.push_back(maker);
        }
    }
    return once;
}

// A NotifyDependents that is under way. A handler may destroy the target; the walk must then not
// look at it again.
class Walk {
  public:
    explicit Walk(const ReferenceTarget* target) : target_(target), outer_(innermost) {
        innermost = this;
    }
    ~Walk() { innermost = outer_; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    bool Ended() const { return ended_; }
    static void End(const ReferenceTarget* target) {
        for (Walk* walk = innermost; walk; walk = walk->outer_) {
            walk->ended_ = walk->ended_ || walk->target_ == target;
        }
    }

  private:
    static Walk* innermost;

    const ReferenceTarget* target_;
    Walk* outer_;
    bool ended_ = false;
};

Walk* Walk::innermost = nullptr;

// Never destroyed: objects that go at the very end of the process still tell it.
std::vector<GlobalReferenceMaker*>& GlobalMakers() {
    static auto* makers = new std::vector<GlobalReferenceMaker*>;
    return *makers;
}

// False when a maker destroyed the target, which `walk` is of.
bool TellGlobalMakers(const Walk& walk, const Interval& changeInt, ReferenceTarget* target,
                      PartID partID, RefMessage message, BOOL propagate) {
    const std::vector<GlobalReferenceMaker*> registered = GlobalMakers();
    for (GlobalReferenceMaker* maker : registered) {
        const auto& makers = GlobalMakers();
        if (std::find(makers.begin(), makers.end(), maker) == makers.end()) continue;
        PartID part = partID;
        maker->NotifyRefChanged(changeInt, target, part, message, propagate);
        if (walk.Ended()) return false;
    }
    return true;
}

}  // namespace

// Fails, and changes nothing, for a number out of range, for a maker that doesn't store the target,
// and for a reference that would close a circle.
RefResult ReferenceMaker::ReplaceReference(int which, RefTargetHandle target) {
    if (which < 0 || which >= NumRefs()) {
        return REF_FAIL;
    }
    ReferenceTarget* old = GetReference(which);
    if (old == target) {
        return REF_SUCCEED;
    }
    if (target) {
        // All who depend on this object; the target must not be one of them, nor the object itself.
        Makers dependents{this};
        for (std::size_t at = 0; at < dependents.size(); ++at) {
            auto* dependent = dynamic_cast<ReferenceTarget*>(dependents[at]);
            if (!dependent) {
                continue;
            }
            if (dependent == target) {
                return REF_FAIL;
            }
            for (ReferenceMaker* maker : dependent->dependents_) {
                if (!Holds(dependents, maker)) {
                    dependents.push_back(maker);
                }
            }
        }
    }
    SetReference(which, target);
    if (GetReference(which) != target) {
        return REF_FAIL;
    }
    if (target) {
        target->dependents_.push_back(this);
        if (auto* block = dynamic_cast<host::ParamBlock*>(target)) block->OfferOwner(*this);
    }
    if (old) {
        EraseOne(old->dependents_, this);
        auto* block = dynamic_cast<host::ParamBlock*>(old);
        const bool dropsItsBlock =
            block && block->GetOwner() == this && !Holds(old->dependents_, this);
        const bool dropsTheLast = old->livesByReferences_ && old->dependents_.empty() &&
                                  !old->TestAFlag(A_LOCK_TARGET) && !TargetLifetime::IsPaused();
        if (dropsItsBlock || dropsTheLast) {
            old->livesByReferences_ = false;
            old->DeleteThis();
        }
    }
    return REF_SUCCEED;
}

RefResult ReferenceMaker::DeleteAllRefsFromMe() {
    for (int which = NumRefs() - 1; which >= 0; --which) {
        DeleteReference(which);
    }
    return REF_SUCCEED;
}

// A maker hears of a change once, however many references it has. Makers that come while the list
// is walked aren't told, and those that go meanwhile neither. What a maker changes in `partID` is
// what its own dependents get; REF_STOP keeps them from hearing anything. Each target that the
// message comes through on its way up tells the global makers, the sender first: a maker that looks
// for render elements hears of an element whose block changed, though the block sent the message.
void ReferenceTarget::NotifyDependents(const Interval& changeInt, PartID partID,
                                       RefMessage message) {
    const Walk walk(this);
    if (!TellGlobalMakers(walk, changeInt, this, partID, message, TRUE)) {
        return;
    }
    for (ReferenceMaker* maker : WithoutRepetition(dependents_)) {
        if (!Holds(dependents_, maker)) {
            continue;
        }
        PartID part = partID;
        const RefResult result = maker->NotifyRefChanged(changeInt, this, part, message, TRUE);
        if (walk.Ended()) {
            return;
        }
        if (result == REF_STOP || !Holds(dependents_, maker)) {
            continue;
        }
        if (auto* next = dynamic_cast<ReferenceTarget*>(maker)) {
            next->NotifyDependents(changeInt, part, message);
            if (walk.Ended()) {
                return;
            }
        }
    }
}

RefResult ReferenceTarget::DeleteAllRefsToMe() {
    Walk::End(this);
    // It is about to be destroyed already.
    livesByReferences_ = false;
    while (!dependents_.empty()) {
        ReferenceMaker* maker = dependents_.front();
        PartID part = PART_ALL;
        maker->NotifyRefChanged(FOREVER, this, part, REFMSG_TARGET_DELETED, FALSE);
        if (!Holds(dependents_, maker)) {
            continue;
        }
        for (int which = 0; which < maker->NumRefs(); ++which) {
            if (maker->GetReference(which) == this) {
                maker->DeleteReference(which);
            }
        }
        std::erase(dependents_, maker);
    }
    TellGlobalMakers(Walk(this), FOREVER, this, PART_ALL, REFMSG_TARGET_DELETED, FALSE);
    return REF_SUCCEED;
}

BOOL RegisterGlobalReference(GlobalReferenceMaker* maker) {
    auto& makers = GlobalMakers();
    if (!maker || std::find(makers.begin(), makers.end(), maker) != makers.end()) return FALSE;
    makers.push_back(maker);
    return TRUE;
}

BOOL UnRegisterGlobalReference(GlobalReferenceMaker* maker) {
    return std::erase(GlobalMakers(), maker) != 0 ? TRUE : FALSE;
}
