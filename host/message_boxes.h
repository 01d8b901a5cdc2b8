// The boxes that the host shows: recorded, and answered by whoever stands in for the user.
#pragma once

#include <functional>
#include <vector>

#include <maxmsgbox.h>
#include <strclass.h>

namespace host {

struct BoxAnswer {
    int button = IDOK;
    // The user ticked "don't show again"; only told to a caller who offered it.
    bool dontShowAgain = false;
};

struct BoxRecord {
    MSTR text;
    MSTR caption;
    UINT type = MB_OK;
    UINT exType = 0;
    BoxAnswer answer;
};

class MessageBoxes {
  public:
    // Sees the box with its safe answer filled in, and gives the user's.
    using Responder = std::function<BoxAnswer(const BoxRecord&)>;

    // An empty responder leaves the safe answer: OK where that is the only button, otherwise No,
    // which loses nothing, and no tick.
    void SetResponder(Responder responder) { responder_ = std::move(responder); }
    BoxAnswer Show(const MSTR& text, const MSTR& caption, UINT type, UINT exType);

    // Oldest first.
    const std::vector<BoxRecord>& Shown() const { return shown_; }
    void Clear() { shown_.clear(); }

  private:
    Responder responder_;
    std::vector<BoxRecord> shown_;
};

}  // namespace host
