// The host's spinner (class SpinnerControl): two arrows that step a number up and down, and an edit
// field beside them that shows it and takes another.
//
// The user changes the number
// - by an arrow that is held (a step, and after a while more and more steps),
// - by dragging up or down from an arrow: a step for each pixel,
// - by a text in the edit field, which counts when the enter key is pressed or the focus leaves;
//   what isn't a number leaves the old one,
// - by the up and down keys in the edit field, a step each.
// With the control key a step is ten steps, and with the alt key a tenth of one. A right click
// while the mouse button is held gives the number back that was there before, as does whatever else
// takes the mouse away, the disabling or the end of the control included.
//
// The parent gets these with the control's id in the low word of wParam and its window in lParam;
// the high word is said below.
#pragma once

#include <custcont.h>

namespace host {

// The number changed. High word: 1 between spinnerButtonDown and spinnerButtonUp, and 0 when the
// change stands for itself.
constexpr UINT spinnerChange = WM_USER + 600;
// The mouse begins to change the number.
constexpr UINT spinnerButtonDown = WM_USER + 601;
// The mouse has ended. High word: 1 when the number is to stay, 0 when it is the former again,
// which spinnerChange has told if it was another in between.
constexpr UINT spinnerButtonUp = WM_USER + 602;

class Spinner : public ICustomControl {
  public:
    // Both included. A number outside moves to the nearer one, without a notification. Before: all
    // that a float holds.
    virtual void SetRange(float low, float high) = 0;
    // What a click of an arrow adds; above 0. Before: 1.
    virtual void SetStep(float step) = 0;
    virtual float Value() = 0;
    // Clamped to the range, without a notification; not a number: nothing happens. The edit field
    // shows it with up to three digits behind the point, and at least one.
    virtual void SetValue(float value) = 0;
    // A control of the same parent, of class CustEdit or the system's own; an id that isn't there
    // leaves the spinner without one. It is enabled and disabled with the spinner from now on, and
    // what it tells its parent of its text by itself says nothing more.
    virtual void LinkToEdit(int editId) = 0;

  protected:
    ~Spinner() = default;
};

// Null for a window that isn't of the class. Each that was got is to be released.
Spinner* GetSpinner(HWND control);
void ReleaseSpinner(Spinner* control);

// False when the system refuses.
bool RegisterSpinnerClass();

}  // namespace host
