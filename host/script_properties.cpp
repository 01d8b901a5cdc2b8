#include "host/script_properties.h"

#include <charconv>

#include "host/application.h"
#include "host/host_renderer.h"
#include "host/script_calls.h"
#include "host/text.h"

namespace host {
namespace {

constexpr std::string_view CURRENT_RENDERER = "renderers.current.";

std::string Key(std::string_view name) {
    constexpr std::string_view BLANKS = " \t\r\n";
    const std::size_t first = name.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) {
        return {};
    }
    std::string key(name.substr(first, name.find_last_not_of(BLANKS) - first + 1));
    for (char& c : key) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return key;
}

std::optional<FPValue> Literal(std::string_view text) {
    const std::string key = Key(text);
    if (key == "true" || key == "false") return ScriptBool(key == "true");
    int number = 0;
    const char* end = key.data() + key.size();
    const auto [stop, error] = std::from_chars(key.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return ScriptInt(number);
}

std::optional<FPValue> EvaluateProperty(const MCHAR* script) {
    const std::string key = Key(ToUtf8(script));
    if (key.starts_with(CURRENT_RENDERER)) {
        auto* renderer = dynamic_cast<HostRenderer*>(App().renderer.get());
        return renderer ? renderer->properties.Evaluate(key.substr(CURRENT_RENDERER.size()))
                        : std::nullopt;
    }
    return App().scripts.Evaluate(key);
}

}  // namespace

FPValue ScriptInt(int value) {
    FPValue result;
    result.type = TYPE_INT;
    result.i = value;
    return result;
}

FPValue ScriptBool(bool value) {
    FPValue result;
    result.type = TYPE_BOOL;
    result.b = value;
    return result;
}

FPValue ScriptFloat(float value) {
    FPValue result;
    result.type = TYPE_FLOAT;
    result.f = value;
    return result;
}

void ScriptProperties::Set(const std::string& name, FPValue value) {
    Set(name, [value] { return value; });
}

void ScriptProperties::Set(const std::string& name, Getter getter, Setter setter) {
    properties_[Key(name)] = {std::move(getter), std::move(setter)};
}

void ScriptProperties::Remove(const std::string& name) {
    properties_.erase(Key(name));
}

const ScriptProperties::Property* ScriptProperties::Find(std::string_view name) const {
    const auto found = properties_.find(Key(name));
    return found == properties_.end() ? nullptr : &found->second;
}

std::optional<FPValue> ScriptProperties::Evaluate(std::string_view expression) const {
    const std::size_t sign = expression.find('=');
    const Property* property = Find(expression.substr(0, sign));
    if (!property) return std::nullopt;
    if (sign == std::string_view::npos) return property->get();
    const std::optional<FPValue> value = Literal(expression.substr(sign + 1));
    if (!value || !property->set) return std::nullopt;
    property->set(*value);
    return value;
}

}  // namespace host

BOOL ExecuteMAXScriptScript(const MCHAR* script, BOOL quietErrors, FPValue* value) {
    std::optional<FPValue> result = host::EvaluateProperty(script);
    if (!result) {
        result = host::CallScript(script);
    }
    if (!result) {
        if (!quietErrors) {
            host::App().log.LogEntry(SYSLOG_ERROR, DISPLAY_DIALOG, _M("MAXScript"),
                                     _M("The script failed: %s"), script);
        }
        return FALSE;
    }
    if (value) {
        *value = *result;
    }
    return TRUE;
}
