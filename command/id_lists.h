// The numbers that objects or materials of a run have, as the effect's ID lists name them.
#pragma once

#include <bitset>
#include <cstdint>
#include <span>
#include <string>

namespace command {

// Numbers from 1 to 65535; others aren't kept.
class NumberSet {
  public:
    void Add(std::uint32_t number) {
        if (number < numbers.size()) numbers.set(number);
    }
    void AddRow(std::span<const std::uint32_t> row);
    bool IsEmpty() const { return numbers.count() == (numbers.test(0) ? 1 : 0); }
    // 0 for none.
    std::uint32_t Largest() const;
    // "1-3, 7", up to `largest`.
    std::string List(std::uint32_t largest) const;

  private:
    std::bitset<65536> numbers;
};

}  // namespace command
