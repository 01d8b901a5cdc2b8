// The text of what a call throws, to be compared whole.
#pragma once

#include <exception>
#include <string>

// Empty when it throws nothing of that kind.
template <class Fault, class Call>
std::string FaultText(Call call) {
    try {
        call();
    } catch (const Fault& fault) {
        return fault.what();
    }
    return {};
}
