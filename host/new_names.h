// Names for what comes into a scene where its own name is taken.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include <strclass.h>

namespace host {

// "Box" becomes the first of "Box001", "Box002", ... that is free, and so does "Box007"; a name of
// digits alone gets its three behind them.
class NewNames {
  public:
    explicit NewNames(std::function<bool(const MSTR& name)> isTaken);

    // From now on no new name is this one.
    void Avoid(const MSTR& name);
    // The name itself when it isn't taken, though it was avoided; otherwise another one each time.
    MSTR For(const MSTR& name);

  private:
    using Text = std::basic_string<MCHAR>;

    std::function<bool(const MSTR& name)> isTaken_;
    std::unordered_set<Text> avoided_;
    // The number that was given last to a name without its digits.
    std::unordered_map<Text, int> last_;
};

}  // namespace host
