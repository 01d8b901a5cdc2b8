// Property expressions that the host's script language answers, and assignments to them.
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
    // Takes the value of "NAME = VALUE", which is true, false or a whole number.
    using Setter = std::function<void(FPValue value)>;

    void Set(const std::string& name, FPValue value);
    // Without a setter the property can only be read.
    void Set(const std::string& name, Getter getter, Setter setter = {});
    void Remove(const std::string& name);
    // The property's value; of an assignment, the value that was assigned.
    std::optional<FPValue> Evaluate(std::string_view expression) const;

  private:
    struct Property {
        Getter get;
        Setter set;
    };
    const Property* Find(std::string_view name) const;

    // By lower-case name.
    std::map<std::string, Property> properties_;
};

}  // namespace host
