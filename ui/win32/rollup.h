// One rollup of the effect while the panel is open: its controls beyond those that the host binds.
// The rules say what is shown and what a click writes; a rollup puts the one onto its controls and
// asks the other from its messages.
#pragma once

#include <iparamm2.h>

namespace effect {
class PSDOutput;
}

namespace ui {

class Rollup {
  public:
    Rollup() = default;
    Rollup(const Rollup&) = delete;
    Rollup& operator=(const Rollup&) = delete;
    virtual ~Rollup() = default;

    // WM_INITDIALOG of the map's dialog, whose bound controls show their values.
    void Open(IParamMap2& openedMap, effect::PSDOutput& editedEffect);
    // WM_DESTROY. Nothing for a rollup that has no dialog.
    void Close();
    bool HasDialog() const { return map != nullptr; }
    bool HasDialogOf(const IParamMap2& other) const { return map == &other; }
    // There is a dialog, and in it the effect's own block: the host may delete the effect first, or
    // give it another block, and a new effect may come to lie where the deleted one did.
    bool IsOpen() const;
    bool Shows(const effect::PSDOutput& effect) const { return IsOpen() && editing == &effect; }
    // The same rollup for another effect; also while it is closed.
    void Edit(effect::PSDOutput& editedEffect);

    // WM_COMMAND: a control's number and its notification's code.
    virtual void Command(int /*control*/, int /*code*/) {}
    // WM_CUSTEDIT_ENTER: the text of an edit field was given.
    virtual void Entered(int /*control*/) {}
    // WM_NOTIFY. The result is the message's.
    virtual LRESULT Notify(NMHDR& /*notification*/) { return 0; }
    // WM_CONTEXTMENU by the keyboard; not each system sends it for the key of its own, which a list
    // tells of. False for a control without a menu.
    virtual bool ContextMenu(HWND /*control*/) { return false; }
    virtual void Tick(UINT_PTR /*timer*/) {}
    // WM_SYSCOLORCHANGE
    virtual void ColorsChanged() {}
    // WM_MEASUREITEM and WM_DRAWITEM of owner-drawn controls. The former also comes before Open.
    virtual void Measure(MEASUREITEMSTRUCT& /*item*/) {}
    virtual void Draw(const DRAWITEMSTRUCT& /*item*/) {}

  protected:
    virtual void Opened() {}
    // The windows are still there; the effect may be gone.
    virtual void Closing() {}
    virtual void OtherEffect() {}

    // While the rollup is open.
    effect::PSDOutput& Effect() const { return *editing; }
    IParamMap2& Map() const { return *map; }
    HWND Dialog() const { return map->GetHWnd(); }
    HWND Control(int id) const { return GetDlgItem(Dialog(), id); }

  private:
    effect::PSDOutput* editing = nullptr;
    // Null while the rollup has no dialog.
    IParamMap2* map = nullptr;
};

}  // namespace ui
