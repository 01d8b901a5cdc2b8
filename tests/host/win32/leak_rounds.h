// How often a test repeats what must leave nothing behind: a leak of one thing a round shows after
// any number of rounds. VELTRANE_LEAK_ROUNDS asks for another number.
#pragma once

#include <cstdlib>

inline int LeakRounds() {
    const char* rounds = std::getenv("VELTRANE_LEAK_ROUNDS");
    return rounds ? static_cast<int>(std::strtol(rounds, nullptr, 10)) : 20;
}
