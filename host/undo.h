// The steps that the user can take back, and the hold in which the next one grows.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <hold.h>
#include <strclass.h>

namespace host {

// While a step is taken back or done again nothing is recorded: Begin, Accept and Cancel do
// nothing, and what is Put is destroyed.
class UndoStack {
  public:
    // A Begin inside another joins the outer hold: the changes become part of the outer step, under
    // the outer name. Cancel takes back what came since its own Begin.
    void Begin();
    void Accept(const MCHAR* name);
    void Cancel();
    bool Holding() const { return !marks_.empty() && !restoring_; }
    // A step, or what a hold has so far, is being taken back or done again.
    bool Restoring() const { return exchanging_; }
    // Destroys the change when nothing holds.
    void Put(std::unique_ptr<RestoreObj> change);
    // What the latest Begin's hold was given last; null when that is nothing yet.
    RestoreObj* LastChange() const;

    // The latest step, backwards or forwards; false when there is none, or while holding. A hold
    // that is accepted with changes in it ends what could be done again, and the oldest of more
    // than 200 steps.
    bool Undo();
    bool Redo();
    bool CanUndo() const { return !done_.empty(); }
    bool CanRedo() const { return !undone_.empty(); }
    // Empty when there is no such step.
    MSTR UndoName() const { return done_.empty() ? MSTR() : done_.back().name; }
    MSTR RedoName() const { return undone_.empty() ? MSTR() : undone_.back().name; }
    // While one of these lives nothing is recorded, as while a step is taken back.
    class Pause {
      public:
        explicit Pause(UndoStack& stack);
        ~Pause() { flag_ = before_; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

      private:
        friend class UndoStack;
        explicit Pause(bool& flag);

        bool& flag_;
        bool before_;
    };
    // Forgets all steps, and ends a hold without taking anything back.
    void Clear();

  private:
    using Changes = std::vector<std::unique_ptr<RestoreObj>>;
    struct Step {
        MSTR name;
        Changes changes;
    };
    Changes pending_;
    // For each Begin that is open, the size of pending_ at its time.
    std::vector<std::size_t> marks_;
    std::vector<Step> done_;
    std::vector<Step> undone_;
    bool restoring_ = false;
    bool exchanging_ = false;
};

}  // namespace host
