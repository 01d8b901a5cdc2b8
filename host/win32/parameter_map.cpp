#include "host/win32/parameter_map.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/win32/spinner_control.h"

namespace host {
namespace {

// The map whose dialog is being made.
ParameterMap* openingMap = nullptr;

std::wstring LibraryString(HINSTANCE library, StringResID id) {
    MCHAR text[PARAMETER_TEXT_UNITS] = {};
    LoadStringW(library, static_cast<UINT>(id), text, PARAMETER_TEXT_UNITS);
    return text;
}

// What a dialog procedure answers is then the message's result; of all others it says whether they
// were handled.
bool AnswersByItself(UINT message) {
    switch (message) {
        case WM_CHARTOITEM:
        case WM_COMPAREITEM:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORSCROLLBAR:
        case WM_CTLCOLORSTATIC:
        case WM_INITDIALOG:
        case WM_QUERYDRAGICON:
        case WM_VKEYTOITEM:
            return true;
        default:
            return false;
    }
}

// A map's dialog keeps the map. A property would be looked up for each message, of which a list
// sends some for each of its rows.
INT_PTR CALLBACK ParameterMapProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* map = reinterpret_cast<ParameterMap*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!map && message == WM_INITDIALOG) {
        map = reinterpret_cast<ParameterMap*>(lParam);
        openingMap = nullptr;
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        map->Bind(dialog);
    }
    // Owner-drawn controls are measured when they are made, which is before WM_INITDIALOG.
    if (!map && message == WM_MEASUREITEM) map = openingMap;
    if (!map) return FALSE;
    const INT_PTR result = map->OnMessage(dialog, message, wParam, lParam);
    if (result && !AnswersByItself(message)) SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
    return result;
}

bool EnabledBy(const ParamDef& switching, ParamID id) {
    return std::find(switching.enables.begin(), switching.enables.end(), id) !=
           switching.enables.end();
}

}  // namespace

// Hears of the block's changes.
class ParameterMap::BlockReference final : public ReferenceMaker {
  public:
    BlockReference(ParameterMap& map, IParamBlock2* block) : map_(map) {
        ReplaceReference(0, block);
    }
    ~BlockReference() override { ReplaceReference(0, nullptr); }

    IParamBlock2* Get() const { return block_; }

    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int) override { return block_; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage message,
                               BOOL) override {
        if (message != REFMSG_CHANGE || !block_) return REF_SUCCEED;
        int tabIndex = -1;
        const ParamID id = block_->LastNotifyParamID(tabIndex);
        if (id >= 0) map_.Invalidate(id, tabIndex);
        return REF_SUCCEED;
    }

  private:
    void SetReference(int, RefTargetHandle target) override {
        block_ = static_cast<IParamBlock2*>(target);
    }

    ParameterMap& map_;
    IParamBlock2* block_ = nullptr;
};

ParameterMap::ParameterMap(IParamBlock2& block, const ParamBlockDesc2::map_spec& spec,
                           IRendParams& place)
    : desc_(*block.GetDesc()),
      spec_(spec),
      place_(place),
      block_(std::make_unique<BlockReference>(*this, &block)) {}

ParameterMap::~ParameterMap() {
    if (dialog_) place_.DeleteRollupPage(dialog_);
    if (dialog_) DestroyWindow(dialog_);
    *living_ = false;
    if (spec_.dlgProc) spec_.dlgProc->DeleteThis();
}

void ParameterMap::Open() {
    HINSTANCE library = desc_.cd->HInstance();
    ParameterMap* outer = std::exchange(openingMap, this);
    place_.AddRollupPage(library, MAKEINTRESOURCEW(spec_.dlg_template), ParameterMapProcedure,
                         LibraryString(library, spec_.title).c_str(),
                         reinterpret_cast<LPARAM>(this),
                         spec_.rollup_flags & 1 ? APPENDROLL_CLOSED : 0);
    openingMap = outer;
}

void ParameterMap::GiveText() {
    if (dialog_ && IsChild(dialog_, GetFocus())) SetFocus(GetParent(dialog_));
}

IParamBlock2* ParameterMap::GetParamBlock() {
    return block_->Get();
}

bool ParameterMap::IsOpen() const {
    IRollupWindow* rollups = dialog_ ? place_.GetRollupWindow() : nullptr;
    return rollups ? rollups->IsPanelOpen(rollups->GetPanelIndex(dialog_)) != FALSE : wasOpen_;
}

void ParameterMap::SetOpen(bool open) {
    IRollupWindow* rollups = dialog_ ? place_.GetRollupWindow() : nullptr;
    if (rollups) rollups->SetPanelOpen(rollups->GetPanelIndex(dialog_), open);
}

void ParameterMap::Bind(HWND dialog) {
    dialog_ = dialog;
    for (int index = 0; index < desc_.Count(); ++index) {
        const ParamDef& def = desc_.GetParamDefByIndex(index);
        if (!def.control || def.control->map != spec_.map_id) continue;
        Binding binding;
        binding.control = BindParameter(dialog, def, desc_.cd->HInstance());
        if (binding.control) bindings_.push_back(std::move(binding));
    }
    UpdateUI(Now());
    ShowAllEnabling();
}

void ParameterMap::UpdateUI(TimeValue) {
    IParamBlock2* block = GetParamBlock();
    if (!block) return;
    for (const Binding& binding : bindings_)
        binding.control->Show(*block);
}

void ParameterMap::Invalidate(ParamID id, int tabIndex) {
    IParamBlock2* block = GetParamBlock();
    const int index = desc_.IDtoIndex(id);
    if (!block || index < 0) return;
    const ParamDef& changed = desc_.GetParamDefByIndex(index);
    for (Binding& binding : bindings_) {
        const ParamID bound = binding.control->Def().ID;
        if (bound == id && tabIndex < 0) binding.control->Show(*block);
        if (bound == id && tabIndex >= 0) binding.control->ShowEntry(*block, tabIndex);
        if (EnabledBy(changed, bound)) ShowEnabling(binding);
    }
}

void ParameterMap::Enable(ParamID id, BOOL onOff, int /*tabIndex*/) {
    for (Binding& binding : bindings_) {
        if (binding.control->Def().ID != id) continue;
        binding.wanted = onOff != FALSE;
        ShowEnabling(binding);
    }
}

void ParameterMap::ShowEnabling(Binding& binding) {
    IParamBlock2* block = GetParamBlock();
    bool on = binding.wanted && block;
    for (int index = 0; on && index < desc_.Count(); ++index) {
        const ParamDef& switching = desc_.GetParamDefByIndex(index);
        if (EnabledBy(switching, binding.control->Def().ID)) {
            on = block->GetInt(switching.ID, Now()) != 0;
        }
    }
    // A control that someone else enabled or disabled stays so until this would change.
    if (std::exchange(binding.enabled, on) != on) binding.control->Enable(on);
}

void ParameterMap::ShowAllEnabling() {
    for (Binding& binding : bindings_)
        ShowEnabling(binding);
}

void ParameterMap::SetParamBlock(IParamBlock2* block) {
    for (const Binding& binding : bindings_)
        binding.control->GiveUp();
    block_ = std::make_unique<BlockReference>(*this, block);
    UpdateUI(Now());
    ShowAllEnabling();
}

void ParameterMap::OnUserChange(UINT message, WPARAM wParam) {
    const std::shared_ptr<bool> living = living_;
    for (std::size_t i = 0; *living && i < bindings_.size(); ++i) {
        IParamBlock2* block = GetParamBlock();
        if (!block) return;
        bindings_[i].control->Take(message, wParam, *block);
    }
}

void ParameterMap::OwnPart(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
        case WM_CUSTEDIT_ENTER:
        case spinnerChange:
        case spinnerButtonDown:
        case spinnerButtonUp:
            OnUserChange(message, wParam);
            break;
        case WM_LBUTTONDOWN:
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
            place_.RollupMouseMessage(dialog_, message, wParam, lParam);
            break;
        case WM_DESTROY:
            wasOpen_ = IsOpen();
            for (const Binding& binding : bindings_)
                binding.control->GiveUp();
            break;
        default:
            break;
    }
}

INT_PTR ParameterMap::OnMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<bool> living = living_;
    OwnPart(message, wParam, lParam);
    if (!*living) return FALSE;
    INT_PTR result = FALSE;
    if (spec_.dlgProc) {
        result = spec_.dlgProc->DlgProc(Now(), this, dialog, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY && *living) {
        SetWindowLongPtrW(dialog, DWLP_USER, 0);
        bindings_.clear();
        dialog_ = nullptr;
    }
    return result;
}

}  // namespace host
