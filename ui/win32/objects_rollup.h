// The rollup "Objects & Materials Output": lists of IDs, and the list of objects.
#pragma once

#include <notify.h>

#include <optional>
#include <span>
#include <vector>

#include "ui/pick_callback.h"
#include "ui/win32/rollup.h"

namespace ui {

class ObjectsRollup final : public Rollup {
  public:
    // Nothing while the rollup is closed.
    void RefreshObjectIDControls();
    void RefreshMaterialIDControls();
    void RefreshObjectControls();
    std::optional<MSTR> TypedIDList(const effect::PSDOutput& effect, ParamID list) const;

    void Command(int control, int code) override;
    void Measure(MEASUREITEMSTRUCT& item) override;
    void Draw(const DRAWITEMSTRUCT& item) override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    static void Hear(void* rollup, NotifyInfo* info);
    std::vector<int> SelectedRows() const;
    void SelectRows(std::span<const int> rows);
    void RefreshButtons();
    void Move(int delta);
    bool Press(int button);

    PSDOutputPickModeCallback pickCallback;
    // A button's work is going on: the other buttons go by what is there when it is done.
    bool working = false;
};

}  // namespace ui
