// The colours of the host's windows, which follow its theme.
#pragma once

#include "maxtypes.h"

using ColorId = DWORD;
constexpr ColorId kWindow = 7;
constexpr ColorId kWindowText = 12;

class IColorManager {
  public:
    virtual COLORREF GetColor(ColorId id) = 0;
    // By the system's number of a colour (COLOR_WINDOW).
    virtual COLORREF CustSysColor(int which) = 0;
    // The host's own; lives as long as the process.
    virtual HBRUSH CustSysColorBrush(int which) = 0;

  protected:
    ~IColorManager() = default;
};

// The host's own; lives as long as the process.
IColorManager* GetColorManager();
