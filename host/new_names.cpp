#include "host/new_names.h"

#include <utility>

namespace host {
namespace {

constexpr std::size_t fewestDigits = 3;

bool IsDigit(MCHAR unit) {
    return unit >= _M('0') && unit <= _M('9');
}

std::basic_string<MCHAR> Digits(int number) {
    std::basic_string<MCHAR> digits;
    for (const char digit : std::to_string(number))
        digits.push_back(static_cast<MCHAR>(digit));
    if (digits.size() < fewestDigits) digits.insert(0, fewestDigits - digits.size(), _M('0'));
    return digits;
}

std::basic_string<MCHAR> WithoutNumber(std::basic_string<MCHAR> name) {
    std::size_t length = name.size();
    while (length > 0 && IsDigit(name[length - 1]))
        --length;
    if (length > 0) name.resize(length);
    return name;
}

}  // namespace

NewNames::NewNames(std::function<bool(const MSTR& name)> isTaken) : isTaken_(std::move(isTaken)) {}

void NewNames::Avoid(const MSTR& name) {
    avoided_.insert(name.data());
}

MSTR NewNames::For(const MSTR& name) {
    if (!isTaken_(name)) return name;
    const Text stem = WithoutNumber(name.data());
    int& number = last_[stem];
    Text made;
    do {
        made = stem + Digits(++number);
    } while (avoided_.count(made) != 0 || isTaken_(MSTR(made.c_str())));
    return MSTR(made.c_str());
}

}  // namespace host
