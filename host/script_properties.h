// Property expressions that the host's script language answers.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <maxscript/maxscript.h>

namespace host {

FPValue ScriptInt(int value);
FPValue ScriptBool(bool value);
FPValue ScriptFloat(float value);

// Names are compared without regard to the case of A to Z, and without blanks around them.
class ScriptProperties {
  public:
    // Gives the value at the time of the question; nothing when the property isn't there just now.
    using Getter = std::function<std::optional<FPValue>()>;

    void Set(const std::string& name, FPValue value);
    void Set(const std::string& name, Getter getter);
    void Remove(const std::string& name);
    std::optional<FPValue> Evaluate(std::string_view expression) const;

  private:
    // By lower-case name.
    std::map<std::string, Getter> getters_;
};

}  // namespace host
