#include "host/win32/spinner_control.h"

#include <windowsx.h>

#include <commctrl.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>
#include <optional>
#include <string>

#include "host/win32/control_look.h"
#include "host/win32/control_object.h"

namespace host {
namespace {

constexpr UINT_PTR REPEAT_TIMER = 1;
// Milliseconds.
constexpr UINT FIRST_REPEAT = 400;
constexpr UINT NEXT_REPEATS = 60;
constexpr int DIGITS = 3;
constexpr double FAST = 10.0;
constexpr double SLOW = 0.1;
// A text beyond this is no number.
constexpr int LONGEST_NUMBER = 64;

// Blanks around it are left out, and a comma is a point. Nothing for what isn't all one number.
std::optional<double> ParsedNumber(const std::wstring& text) {
    const std::size_t first = text.find_first_not_of(L" \t");
    if (first == std::wstring::npos) {
        return std::nullopt;
    }
    const std::size_t last = text.find_last_not_of(L" \t");
    std::string digits;
    for (const wchar_t unit : text.substr(first, last - first + 1)) {
        if (unit > 127) return std::nullopt;
        digits += unit == L',' ? '.' : static_cast<char>(unit);
    }
    const char* start = digits.data();
    const char* const end = start + digits.size();
    if (*start == '+' && digits.size() > 1 && digits[1] != '-') {
        ++start;
    }
    double number = 0.0;
    const auto [stop, error] = std::from_chars(start, end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

std::wstring NumberText(float number) {
    char digits[LONGEST_NUMBER] = {};
    const auto [stop, error] = std::to_chars(std::begin(digits), std::end(digits), number,
                                             std::chars_format::fixed, DIGITS);
    std::string text(digits, error == std::errc() ? stop : digits);
    while (text.ends_with('0') && !text.ends_with(".0"))
        text.pop_back();
    if (text == "-0.0") {
        text = "0.0";
    }
    return {text.begin(), text.end()};
}

std::wstring FieldText(HWND field) {
    wchar_t text[LONGEST_NUMBER + 1] = {};
    GetWindowTextW(field, text, LONGEST_NUMBER + 1);
    return text;
}

double StepFactor() {
    if (GetKeyState(VK_CONTROL) < 0) return FAST;
    return GetKeyState(VK_MENU) < 0 ? SLOW : 1.0;
}

// What a step is worth: up is positive.
enum class SpinnerArrow { None = 0, Up = 1, Down = -1 };

class SpinnerControl final : public CustomControl<Spinner> {
  public:
    using CustomControl::CustomControl;

    void SetRange(float low, float high) override {
        low_ = low;
        high_ = std::max(low, high);
        SetValue(value_);
    }
    void SetStep(float step) override {
        if (step > 0.0F) {
            step_ = step;
        }
    }
    float Value() override { return value_; }
    void SetValue(float value) override {
        if (!std::isnan(value)) {
            value_ = std::clamp(value, low_, high_);
            ShowValue();
        }
    }
    void LinkToEdit(int editId) override;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnFieldMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    void ShowValue();
    // The number from the field's text, if the user changed that.
    void TakeText();
    // False when the number stays. `during` a press of the mouse.
    bool Change(double value, bool during);
    void StepOnce(SpinnerArrow arrow, bool during) {
        Change(value_ + static_cast<int>(arrow) * StepFactor() * step_, during);
    }
    void Tell(UINT message, bool high) const {
        TellParent(message, high ? 1 : 0, reinterpret_cast<LPARAM>(Window()));
    }
    void Unlink();

    SpinnerArrow ArrowAt(LPARAM position) const;
    void BeginPress(LPARAM position);
    void MouseMove(LPARAM position);
    void EndPress(bool keep);
    void Paint(HDC dc, const RECT& client) const;
    void PaintArrow(HDC dc, const RECT& place, SpinnerArrow arrow) const;

    float low_ = std::numeric_limits<float>::lowest();
    float high_ = std::numeric_limits<float>::max();
    float step_ = 1.0F;
    float value_ = 0.0F;
    HWND field_ = nullptr;
    // What this control wrote into the field.
    std::wstring shown_;
    SpinnerArrow hot_ = SpinnerArrow::None;
    // Held with the mouse.
    SpinnerArrow pressed_ = SpinnerArrow::None;
    // The pointer is over the arrow that is held.
    bool inside_ = false;
    // The mouse went far enough from where it was pressed.
    bool dragging_ = false;
    int startY_ = 0;
    float startValue_ = 0.0F;
};

LRESULT CALLBACK ListenAtField(HWND /*field*/, UINT message, WPARAM wParam, LPARAM lParam,
                               UINT_PTR /*id*/, DWORD_PTR data) {
    auto* const spinner = reinterpret_cast<SpinnerControl*>(data);
    spinner->Hold();
    const LRESULT result = spinner->OnFieldMessage(message, wParam, lParam);
    spinner->Release();
    return result;
}

void SpinnerControl::LinkToEdit(int editId) {
    Unlink();
    field_ = GetDlgItem(GetParent(Window()), editId);
    if (!field_) {
        return;
    }
    SetWindowSubclass(field_, &ListenAtField, reinterpret_cast<UINT_PTR>(this),
                      reinterpret_cast<DWORD_PTR>(this));
    ShowValue();
}

void SpinnerControl::Unlink() {
    if (field_) {
        RemoveWindowSubclass(field_, &ListenAtField, reinterpret_cast<UINT_PTR>(this));
        field_ = nullptr;
    }
}

void SpinnerControl::ShowValue() {
    if (!field_) {
        return;
    }
    shown_ = NumberText(value_);
    if (FieldText(field_) == shown_) {
        return;
    }
    if (ICustEdit* const edit = GetICustEdit(field_)) {
        edit->SetText(shown_.c_str());
        ReleaseICustEdit(edit);
    } else {
        SetWindowTextW(field_, shown_.c_str());
    }
}

void SpinnerControl::TakeText() {
    const std::wstring text = FieldText(field_);
    if (text == shown_) {
        return;
    }
    const std::optional<double> number = ParsedNumber(text);
    if (!number || !Change(*number, false)) {
        ShowValue();
    }
}

bool SpinnerControl::Change(double value, bool during) {
    const auto wanted = static_cast<float>(
        std::clamp(value, static_cast<double>(low_), static_cast<double>(high_)));
    if (wanted == value_) {
        return false;
    }
    value_ = wanted;
    ShowValue();
    Tell(spinnerChange, during);
    return true;
}

LRESULT SpinnerControl::OnFieldMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    // The message may end the link.
    HWND field = field_;
    switch (message) {
        case WM_GETDLGCODE: {
            // The enter key is the field's and no default button's.
            const LRESULT result = DefSubclassProc(field, message, wParam, lParam);
            return wParam == VK_RETURN ? result | DLGC_WANTMESSAGE : result;
        }
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            if (wParam == VK_UP || wParam == VK_DOWN) {
                TakeText();
                StepOnce(wParam == VK_UP ? SpinnerArrow::Up : SpinnerArrow::Down, false);
                return 0;
            }
            if (wParam == VK_RETURN) {
                TakeText();
            }
            break;
        case WM_CHAR:
            if (wParam == L'\r') {
                return 0;
            }
            break;
        case WM_KILLFOCUS:
            TakeText();
            break;
        case WM_NCDESTROY:
            Unlink();
            break;
        default:
            break;
    }
    return DefSubclassProc(field, message, wParam, lParam);
}

SpinnerArrow SpinnerControl::ArrowAt(LPARAM position) const {
    RECT client;
    GetClientRect(Window(), &client);
    const POINT point{GET_X_LPARAM(position), GET_Y_LPARAM(position)};
    if (!PtInRect(&client, point)) {
        return SpinnerArrow::None;
    }
    return point.y < client.bottom / 2 ? SpinnerArrow::Up : SpinnerArrow::Down;
}

void SpinnerControl::BeginPress(LPARAM position) {
    const SpinnerArrow arrow = ArrowAt(position);
    if (!IsWindowEnabled(Window()) || pressed_ != SpinnerArrow::None ||
        arrow == SpinnerArrow::None) {
        return;
    }
    // What was typed before is what the steps start from.
    if (field_) {
        TakeText();
    }
    pressed_ = arrow;
    inside_ = true;
    dragging_ = false;
    startY_ = GET_Y_LPARAM(position);
    startValue_ = value_;
    SetCapture(Window());
    SetTimer(Window(), REPEAT_TIMER, FIRST_REPEAT, nullptr);
    Redraw();
    Tell(spinnerButtonDown, false);
    if (pressed_ != SpinnerArrow::None) {
        StepOnce(arrow, true);
    }
}

void SpinnerControl::MouseMove(LPARAM position) {
    const SpinnerArrow arrow = ArrowAt(position);
    if (arrow != hot_) {
        hot_ = arrow;
        Redraw();
    }
    if (pressed_ == SpinnerArrow::None) {
        TRACKMOUSEEVENT leaving{sizeof leaving, TME_LEAVE, Window(), 0};
        TrackMouseEvent(&leaving);
        return;
    }
    inside_ = arrow == pressed_;
    const int up = startY_ - GET_Y_LPARAM(position);
    if (!dragging_ && std::abs(up) >= GetSystemMetrics(SM_CYDRAG)) {
        dragging_ = true;
        KillTimer(Window(), REPEAT_TIMER);
        SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
    }
    if (dragging_) {
        Change(startValue_ + up * StepFactor() * step_, true);
    }
}

void SpinnerControl::EndPress(bool keep) {
    if (pressed_ == SpinnerArrow::None) {
        return;
    }
    // Before the parent hears of anything, and may end the press itself.
    pressed_ = SpinnerArrow::None;
    dragging_ = false;
    KillTimer(Window(), REPEAT_TIMER);
    if (GetCapture() == Window()) {
        ReleaseCapture();
    }
    Redraw();
    if (!keep) {
        Change(startValue_, true);
    }
    Tell(spinnerButtonUp, keep);
}

LRESULT SpinnerControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            BeginPress(lParam);
            return 0;
        case WM_MOUSEMOVE:
            MouseMove(lParam);
            return 0;
        case WM_MOUSELEAVE:
            hot_ = SpinnerArrow::None;
            Redraw();
            return 0;
        case WM_LBUTTONUP:
            EndPress(true);
            return 0;
        case WM_RBUTTONDOWN:
        case WM_CAPTURECHANGED:
        case WM_DESTROY:
            EndPress(false);
            return 0;
        case WM_TIMER:
            if (wParam == REPEAT_TIMER && pressed_ != SpinnerArrow::None) {
                SetTimer(Window(), REPEAT_TIMER, NEXT_REPEATS, nullptr);
                if (inside_) {
                    StepOnce(pressed_, true);
                }
            }
            return 0;
        case WM_ENABLE:
            if (!wParam) {
                EndPress(false);
                hot_ = SpinnerArrow::None;
            }
            EnableWindow(field_, wParam != 0);
            Redraw();
            return 0;
        case WM_SYSCOLORCHANGE:
            Redraw();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            PaintWindow(Window(), reinterpret_cast<HDC>(wParam),
                        [this](HDC dc, const RECT& client) { Paint(dc, client); });
            return 0;
        case WM_NCDESTROY:
            Unlink();
            break;
        default:
            break;
    }
    return DefWindowProcW(Window(), message, wParam, lParam);
}

void SpinnerControl::Paint(HDC dc, const RECT& client) const {
    PaintBackground(Window(), dc, client);
    // One line of frame between the two.
    const LONG middle = client.bottom / 2;
    PaintArrow(dc, {0, 0, client.right, middle + 1}, SpinnerArrow::Up);
    PaintArrow(dc, {0, middle, client.right, client.bottom}, SpinnerArrow::Down);
}

void SpinnerControl::PaintArrow(HDC dc, const RECT& place, SpinnerArrow arrow) const {
    const FaceState face{.enabled = IsWindowEnabled(Window()) != FALSE,
                         .hot = hot_ == arrow,
                         .pressed = pressed_ == arrow && (inside_ || dragging_)};
    PaintFace(dc, place, face);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    // Rows of a triangle whose sides rise by one pixel a pixel.
    const int rows = std::max(1, std::min(width / 4, (height - 2) / 2));
    const int top = place.top + (height - rows) / 2;
    const int middle = place.left + width / 2;
    SetDCBrushColor(dc, FaceTextColor(face));
    for (int row = 0; row < rows; ++row) {
        const int reach = arrow == SpinnerArrow::Up ? row : rows - 1 - row;
        const RECT line{middle - reach, top + row, middle + reach + 1, top + row + 1};
        FillRect(dc, &line, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
}

ControlClass spinnerClass;

LRESULT CALLBACK SpinnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(spinnerClass, window, message, wParam, lParam);
}

}  // namespace

bool RegisterSpinnerClass() {
    spinnerClass.make = [](HWND window) -> ControlObject* {
        return new (std::nothrow) SpinnerControl(window);
    };
    spinnerClass.base = &DefWindowProcW;
    WNDCLASSEXW windowClass{};
    windowClass.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = &SpinnerProcedure;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = SPINNERWINDOWCLASS;
    return RegisterControl(spinnerClass, windowClass);
}

Spinner* GetSpinner(HWND control) {
    auto* const object = static_cast<SpinnerControl*>(ControlOf(spinnerClass, control));
    if (object) {
        object->Hold();
    }
    return object;
}

void ReleaseSpinner(Spinner* control) {
    if (control) {
        static_cast<SpinnerControl*>(control)->Release();
    }
}

}  // namespace host
