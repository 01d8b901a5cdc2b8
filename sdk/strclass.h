// The host's string.
#pragma once

#include <string>
#include <utility>

#include "maxtypes.h"

class MSTR {
  public:
    MSTR() = default;
    // Null gives the empty string.
    MSTR(const MCHAR* text) : text_(text ? text : _M("")) {}
    explicit MSTR(std::basic_string<MCHAR> text) : text_(std::move(text)) {}

    // Units without the terminator.
    int Length() const { return static_cast<int>(text_.size()); }
    bool isNull() const { return text_.empty(); }
    // NUL-terminated, never null; valid until the string changes.
    const MCHAR* data() const { return text_.c_str(); }
    operator const MCHAR*() const { return text_.c_str(); }

    MSTR& operator+=(const MCHAR* more) {
        text_ += more;
        return *this;
    }
    friend MSTR operator+(MSTR left, const MCHAR* right) { return left += right; }
    friend bool operator==(const MSTR& left, const MSTR& right) {
        return left.text_ == right.text_;
    }

  private:
    std::basic_string<MCHAR> text_;
};
