#include "host/win32/parameter_map_control.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include <custcont.h>
#include <hold.h>
#include <maxapi.h>

#include "host/win32/spinner_control.h"

namespace host {
namespace {

constexpr const MCHAR* changeName = _M("Parameter Change");

template <class Value>
void ChangeParameter(IParamBlock2& block, ParamID id, Value value) {
    theHold.Begin();
    block.SetValue(id, GetCOREInterface()->GetTime(), value);
    theHold.Accept(changeName);
}

int ShownNumber(IParamBlock2& block, ParamID id) {
    return block.GetInt(id, GetCOREInterface()->GetTime());
}

void ChangeNumber(IParamBlock2& block, ParamID id, int value) {
    if (ShownNumber(block, id) != value) ChangeParameter(block, id, value);
}

// A disabled control can't keep the keyboard.
void EnableControl(HWND control, bool on) {
    if (!on && GetFocus() == control) SendMessageW(GetParent(control), WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(control, on);
}

bool IsClick(UINT message, WPARAM wParam) {
    return message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED;
}

class CheckBox final : public ParameterMapControl {
  public:
    CheckBox(const ParamDef& def, HWND control) : ParameterMapControl(def), control_(control) {}

    void Show(IParamBlock2& block) override {
        const bool on = ShownNumber(block, Def().ID) != 0;
        SendMessageW(control_, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    void Enable(bool on) override { EnableControl(control_, on); }
    void Take(UINT message, WPARAM wParam, IParamBlock2& block) override {
        if (!IsClick(message, wParam) || LOWORD(wParam) != GetDlgCtrlID(control_)) return;
        const bool on = SendMessageW(control_, BM_GETCHECK, 0, 0) == BST_CHECKED;
        ChangeNumber(block, Def().ID, on ? TRUE : FALSE);
    }

  private:
    HWND control_;
};

class RadioGroup final : public ParameterMapControl {
  public:
    struct Choice {
        HWND button;
        int value;
    };

    RadioGroup(const ParamDef& def, std::vector<Choice> choices)
        : ParameterMapControl(def), choices_(std::move(choices)) {}

    void Show(IParamBlock2& block) override {
        const int shown = ShownNumber(block, Def().ID);
        for (const Choice& choice : choices_) {
            const LRESULT wanted = choice.value == shown ? BST_CHECKED : BST_UNCHECKED;
            // A radio button that is checked walks through all of its dialog for the others.
            if (SendMessageW(choice.button, BM_GETCHECK, 0, 0) == wanted) continue;
            SendMessageW(choice.button, BM_SETCHECK, static_cast<WPARAM>(wanted), 0);
        }
    }
    void Enable(bool on) override {
        for (const Choice& choice : choices_)
            EnableControl(choice.button, on);
    }
    void Take(UINT message, WPARAM wParam, IParamBlock2& block) override {
        if (!IsClick(message, wParam)) return;
        const auto clicked = std::find_if(
            choices_.begin(), choices_.end(),
            [&](const Choice& choice) { return GetDlgCtrlID(choice.button) == LOWORD(wParam); });
        if (clicked != choices_.end()) ChangeNumber(block, Def().ID, clicked->value);
    }

  private:
    std::vector<Choice> choices_;
};

class ComboBox final : public ParameterMapControl {
  public:
    ComboBox(const ParamDef& def, HWND control, HINSTANCE strings)
        : ParameterMapControl(def), control_(control) {
        SendMessageW(control, CB_RESETCONTENT, 0, 0);
        for (std::size_t choice = 0; choice < def.control->values.size(); ++choice) {
            MCHAR text[PARAMETER_TEXT_UNITS] = {};
            LoadStringW(strings, static_cast<UINT>(def.control->texts[choice]), text,
                        PARAMETER_TEXT_UNITS);
            const LRESULT item =
                SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
            SendMessageW(control, CB_SETITEMDATA, static_cast<WPARAM>(item),
                         def.control->values[choice]);
        }
    }

    // A value that is no choice shows none.
    void Show(IParamBlock2& block) override {
        const int shown = ShownNumber(block, Def().ID);
        const LRESULT count = SendMessageW(control_, CB_GETCOUNT, 0, 0);
        LRESULT item = 0;
        while (item < count && ValueOf(item) != shown)
            ++item;
        SendMessageW(control_, CB_SETCURSEL, static_cast<WPARAM>(item < count ? item : CB_ERR), 0);
    }
    void Enable(bool on) override { EnableControl(control_, on); }
    void Take(UINT message, WPARAM wParam, IParamBlock2& block) override {
        if (message != WM_COMMAND || HIWORD(wParam) != CBN_SELCHANGE ||
            LOWORD(wParam) != GetDlgCtrlID(control_)) {
            return;
        }
        const LRESULT item = SendMessageW(control_, CB_GETCURSEL, 0, 0);
        if (item != CB_ERR) ChangeNumber(block, Def().ID, ValueOf(item));
    }

  private:
    int ValueOf(LRESULT item) const {
        return static_cast<int>(
            SendMessageW(control_, CB_GETITEMDATA, static_cast<WPARAM>(item), 0));
    }

    HWND control_;
};

class CheckButton final : public ParameterMapControl {
  public:
    CheckButton(const ParamDef& def, ICustButton* button)
        : ParameterMapControl(def), button_(button) {
        button->SetType(CBT_CHECK);
    }
    ~CheckButton() override { ReleaseICustButton(button_); }

    void Show(IParamBlock2& block) override {
        button_->SetCheck(ShownNumber(block, Def().ID) != 0);
    }
    void Enable(bool on) override { EnableControl(button_->GetHwnd(), on); }
    void Take(UINT message, WPARAM wParam, IParamBlock2& block) override {
        if (!IsClick(message, wParam) || LOWORD(wParam) != GetDlgCtrlID(button_->GetHwnd())) return;
        ChangeNumber(block, Def().ID, button_->IsChecked() ? TRUE : FALSE);
    }

  private:
    ICustButton* button_;
};

class EditBox final : public ParameterMapControl {
  public:
    EditBox(const ParamDef& def, ICustEdit* edit) : ParameterMapControl(def), edit_(edit) {}
    ~EditBox() override { ReleaseICustEdit(edit_); }

    // Whole, however long it is.
    void Show(IParamBlock2& block) override {
        edit_->SetText(block.GetStr(Def().ID, GetCOREInterface()->GetTime()));
    }
    void Enable(bool on) override { EnableControl(edit_->GetHwnd(), on); }
    void Take(UINT message, WPARAM wParam, IParamBlock2& block) override {
        const bool given =
            message == WM_CUSTEDIT_ENTER || (message == WM_COMMAND && HIWORD(wParam) == EN_CHANGE);
        if (!given || LOWORD(wParam) != GetDlgCtrlID(edit_->GetHwnd())) return;
        std::vector<MCHAR> text(static_cast<std::size_t>(edit_->GetTextLength()) + 1);
        edit_->GetText(text.data(), static_cast<int>(text.size()));
        const MSTR stored(block.GetStr(Def().ID, GetCOREInterface()->GetTime()));
        if (MSTR(text.data()) == stored) return;
        if (text.size() > PARAMETER_TEXT_UNITS) text[PARAMETER_TEXT_UNITS - 1] = 0;
        ChangeParameter(block, Def().ID, static_cast<const MCHAR*>(text.data()));
    }

  private:
    ICustEdit* edit_;
};

// What the mouse does from its press to its end is one step.
class SpinnerField final : public ParameterMapControl {
  public:
    SpinnerField(const ParamDef& def, Spinner* spinner)
        : ParameterMapControl(def), spinner_(spinner) {
        const ParamControl& control = *def.control;
        spinner->LinkToEdit(control.ids[0]);
        if (def.has_range && def.type == TYPE_INT) {
            spinner->SetRange(static_cast<float>(def.range_low.i),
                              static_cast<float>(def.range_high.i));
        } else if (def.has_range) {
            spinner->SetRange(def.range_low.f, def.range_high.f);
        } else {
            spinner->SetRange(0.0F, std::numeric_limits<float>::max());
        }
        spinner->SetStep(control.step);
    }
    ~SpinnerField() override {
        GiveUp();
        ReleaseSpinner(spinner_);
    }

    void Show(IParamBlock2& block) override { spinner_->SetValue(Stored(block)); }
    void Enable(bool on) override {
        EnableControl(GetDlgItem(GetParent(spinner_->GetHwnd()), Def().control->ids[0]), on);
        spinner_->Enable(on);
    }
    void Take(UINT message, WPARAM wParam, IParamBlock2& block) override {
        if (LOWORD(wParam) != GetDlgCtrlID(spinner_->GetHwnd())) return;
        if (message == spinnerButtonDown && !dragging_) {
            dragging_ = true;
            theHold.Begin();
        } else if (message == spinnerButtonUp && HIWORD(wParam) == 0) {
            GiveUp();
        } else if (message == spinnerButtonUp && dragging_) {
            dragging_ = false;
            theHold.Accept(changeName);
        } else if (message == spinnerChange) {
            Change(block);
        }
    }
    void GiveUp() override {
        if (!std::exchange(dragging_, false)) return;
        theHold.Cancel();
    }

  private:
    float Stored(IParamBlock2& block) const {
        return block.GetFloat(Def().ID, GetCOREInterface()->GetTime());
    }
    void Change(IParamBlock2& block) {
        const float value = spinner_->Value();
        if (Stored(block) == value) return;
        // The hold of the drag, if there is one, goes around this one.
        ChangeParameter(block, Def().ID, value);
    }

    Spinner* spinner_;
    bool dragging_ = false;
};

// Rows are the entries of a table of nodes, in its order. The user changes nothing here.
class NodeListBox final : public ParameterMapControl {
  public:
    NodeListBox(const ParamDef& def, HWND control) : ParameterMapControl(def), control_(control) {}

    // Rows that stay as they are keep their selection.
    void Show(IParamBlock2& block) override {
        const int count = block.Count(Def().ID);
        int start = 0;
        while (start < count && start < Rows() && ShowsEntry(start, Entry(block, start)))
            ++start;
        int oldEnd = Rows();
        int newEnd = count;
        while (oldEnd > start && newEnd > start &&
               ShowsEntry(oldEnd - 1, Entry(block, newEnd - 1))) {
            --oldEnd;
            --newEnd;
        }
        if (start == oldEnd && start == newEnd) return;
        StopDrawing();
        for (int row = oldEnd; row-- > start;)
            SendMessageW(control_, LB_DELETESTRING, Index(row), 0);
        shown_.erase(shown_.begin() + start, shown_.begin() + oldEnd);
        std::vector<Row> added;
        for (int row = start; row < newEnd; ++row)
            added.push_back(Added(row, Entry(block, row)));
        shown_.insert(shown_.begin() + start, added.begin(), added.end());
        StartDrawing();
    }
    void ShowEntry(IParamBlock2& block, int entry) override {
        INode* node = entry < block.Count(Def().ID) ? Entry(block, entry) : nullptr;
        // A node that has got another name may be in other rows too.
        if (block.Count(Def().ID) != Rows() || entry >= Rows() ||
            shown_[Index(entry)].node == node) {
            Show(block);
            return;
        }
        StopDrawing();
        SendMessageW(control_, LB_DELETESTRING, Index(entry), 0);
        shown_[Index(entry)] = Added(entry, node);
        StartDrawing();
    }
    void Enable(bool on) override { EnableControl(control_, on); }
    void Take(UINT, WPARAM, IParamBlock2&) override {}

  private:
    struct Row {
        // To compare with: it may be destroyed.
        const INode* node;
        MSTR name;
    };

    static std::size_t Index(int row) { return static_cast<std::size_t>(row); }
    static const MCHAR* NameOf(INode* node) { return node ? node->GetName() : _M("<deleted>"); }
    INode* Entry(IParamBlock2& block, int entry) const {
        return block.GetINode(Def().ID, GetCOREInterface()->GetTime(), entry);
    }
    int Rows() const { return static_cast<int>(shown_.size()); }
    bool ShowsEntry(int row, INode* node) const {
        const Row& shown = shown_[Index(row)];
        return shown.node == node && std::wstring_view(shown.name.data()) == NameOf(node);
    }
    // The list draws its scroll bar anew for each row that comes or goes.
    void StopDrawing() { SendMessageW(control_, WM_SETREDRAW, FALSE, 0); }
    void StartDrawing() {
        SendMessageW(control_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(control_, nullptr, TRUE);
    }
    Row Added(int row, INode* node) {
        MSTR name(NameOf(node));
        SendMessageW(control_, LB_INSERTSTRING, Index(row), reinterpret_cast<LPARAM>(name.data()));
        return {node, std::move(name)};
    }

    HWND control_;
    std::vector<Row> shown_;
};

std::unique_ptr<ParameterMapControl> BindRadioGroup(HWND dialog, const ParamDef& def) {
    std::vector<RadioGroup::Choice> choices;
    for (std::size_t choice = 0; choice < def.control->ids.size(); ++choice) {
        HWND button = GetDlgItem(dialog, def.control->ids[choice]);
        if (button) choices.push_back({button, def.control->values[choice]});
    }
    if (choices.empty()) return nullptr;
    return std::make_unique<RadioGroup>(def, std::move(choices));
}

}  // namespace

std::unique_ptr<ParameterMapControl> BindParameter(HWND dialog, const ParamDef& def,
                                                   HINSTANCE strings) {
    const ParamControl& control = *def.control;
    if (control.type == TYPE_RADIO) return BindRadioGroup(dialog, def);
    // Of a spinner the arrows, which are behind its edit field.
    HWND window = GetDlgItem(dialog, control.ids[control.type == TYPE_SPINNER ? 1 : 0]);
    if (!window) return nullptr;
    switch (control.type) {
        case TYPE_SINGLECHEKBOX:
            return std::make_unique<CheckBox>(def, window);
        case TYPE_INT_COMBOBOX:
            return std::make_unique<ComboBox>(def, window, strings);
        case TYPE_NODELISTBOX:
            return std::make_unique<NodeListBox>(def, window);
        case TYPE_CHECKBUTTON:
            if (ICustButton* button = GetICustButton(window)) {
                return std::make_unique<CheckButton>(def, button);
            }
            return nullptr;
        case TYPE_EDITBOX:
            if (ICustEdit* edit = GetICustEdit(window)) return std::make_unique<EditBox>(def, edit);
            return nullptr;
        case TYPE_SPINNER:
            if (Spinner* spinner = GetSpinner(window)) {
                return std::make_unique<SpinnerField>(def, spinner);
            }
            return nullptr;
        default:
            return nullptr;
    }
}

}  // namespace host
