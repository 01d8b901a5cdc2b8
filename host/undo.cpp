#include "host/undo.h"

#include <iterator>
#include <utility>

#include "host/application.h"

namespace host {
namespace {

constexpr std::size_t mostSteps = 200;

// What the SDK's hold is: the running application's.
class ApplicationHold final : public Hold {
  public:
    void Begin() override { App().undo.Begin(); }
    void Accept(const MCHAR* name) override { App().undo.Accept(name); }
    void Cancel() override { App().undo.Cancel(); }
    int Holding() override { return App().undo.Holding(); }
    int RestoreOrRedoing() override { return App().undo.Restoring(); }
    void Put(RestoreObj* change) override { App().undo.Put(std::unique_ptr<RestoreObj>(change)); }
};

ApplicationHold applicationHold;

}  // namespace

UndoStack::Pause::Pause(UndoStack& stack) : Pause(stack.restoring_) {}

UndoStack::Pause::Pause(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}

void UndoStack::Begin() {
    if (!restoring_) {
        marks_.push_back(pending_.size());
    }
}

void UndoStack::Accept(const MCHAR* name) {
    if (restoring_ || marks_.empty()) {
        return;
    }
    marks_.pop_back();
    if (marks_.empty() && !pending_.empty()) {
        done_.push_back({MSTR(name), std::move(pending_)});
        pending_.clear();
        undone_.clear();
        if (done_.size() > mostSteps) done_.erase(done_.begin());
    }
}

void UndoStack::Cancel() {
    if (restoring_ || marks_.empty()) {
        return;
    }
    const auto mark = static_cast<std::ptrdiff_t>(marks_.back());
    marks_.pop_back();
    Changes cancelled(std::make_move_iterator(pending_.begin() + mark),
                      std::make_move_iterator(pending_.end()));
    pending_.erase(pending_.begin() + mark, pending_.end());
    const Pause restoring(*this);
    const Pause exchanging(exchanging_);
    for (auto change = cancelled.rbegin(); change != cancelled.rend(); ++change) {
        (*change)->Restore(0);
    }
}

void UndoStack::Put(std::unique_ptr<RestoreObj> change) {
    if (Holding()) {
        pending_.push_back(std::move(change));
    }
}

RestoreObj* UndoStack::LastChange() const {
    if (!Holding() || pending_.size() == marks_.back()) return nullptr;
    return pending_.back().get();
}

bool UndoStack::Undo() {
    if (done_.empty() || !marks_.empty() || restoring_) {
        return false;
    }
    Step step = std::move(done_.back());
    done_.pop_back();
    {
        const Pause restoring(*this);
        const Pause exchanging(exchanging_);
        for (auto change = step.changes.rbegin(); change != step.changes.rend(); ++change) {
            (*change)->Restore(1);
        }
    }
    undone_.push_back(std::move(step));
    return true;
}

bool UndoStack::Redo() {
    if (undone_.empty() || !marks_.empty() || restoring_) {
        return false;
    }
    Step step = std::move(undone_.back());
    undone_.pop_back();
    {
        const Pause restoring(*this);
        const Pause exchanging(exchanging_);
        for (const auto& change : step.changes) {
            change->Redo();
        }
    }
    done_.push_back(std::move(step));
    return true;
}

void UndoStack::Clear() {
    marks_.clear();
    pending_.clear();
    done_.clear();
    undone_.clear();
}

}  // namespace host

Hold& theHold = host::applicationHold;
