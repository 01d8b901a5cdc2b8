#include "host/edit_undo.h"

#include "host/target_lifetime.h"

namespace host {
namespace {

void DetachTarget(Presence& what) {
    if (ReferenceTarget* target = what.Target()) Detach(*target);
    what.Left();
}

class Coming final : public RestoreObj {
  public:
    explicit Coming(std::shared_ptr<Presence> what) : what_(std::move(what)) {}

    void Restore(int /*isUndo*/) override {
        what_->Leave();
        DetachTarget(*what_);
    }
    void Redo() override { what_->Enter(); }

  private:
    std::shared_ptr<Presence> what_;
};

// What goes is out of the scene when its dependents are told, and back in it before they get their
// references back. So there is one object in the hold before theirs and one after them.
class BeforeGoing final : public RestoreObj {
  public:
    explicit BeforeGoing(std::shared_ptr<Presence> what) : what_(std::move(what)) {}

    void Restore(int /*isUndo*/) override {}
    void Redo() override { what_->Leave(); }

  private:
    std::shared_ptr<Presence> what_;
};

class AfterGoing final : public RestoreObj {
  public:
    explicit AfterGoing(std::shared_ptr<Presence> what) : what_(std::move(what)) {}

    void Restore(int /*isUndo*/) override { what_->Enter(); }
    // References that came since the undo.
    void Redo() override { DetachTarget(*what_); }

  private:
    std::shared_ptr<Presence> what_;
};

}  // namespace

void PutComing(std::shared_ptr<Presence> what) {
    theHold.Put(new Coming(std::move(what)));
}

void Go(const std::shared_ptr<Presence>& what, bool recorded) {
    recorded = recorded && theHold.Holding();
    if (recorded) theHold.Put(new BeforeGoing(what));
    what->Leave();
    DetachTarget(*what);
    if (recorded) theHold.Put(new AfterGoing(what));
}

}  // namespace host
