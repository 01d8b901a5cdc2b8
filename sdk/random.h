// The host's random numbers.
#pragma once

#include <cstdint>

class Random {
  public:
    // Largest number that get gives.
    static const std::uint32_t s_rand_max;
    // Seeded by the host, and differently in each run of it.
    Random();
    // 0 to s_rand_max.
    std::uint32_t get();

  private:
    std::uint64_t state_;
};
