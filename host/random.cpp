// Random numbers: SplitMix64, whose every seed is a good one.
#include <random.h>

#include <random>

#include "host/application.h"

namespace {

std::uint64_t NextSeed() {
    host::Application& app = host::App();
    if (app.settings.randomSeed) {
        return *app.settings.randomSeed + app.randomsMade++;
    }
    std::random_device device;
    return (std::uint64_t{device()} << 32) | device();
}

}  // namespace

// Fits a signed parameter.
const std::uint32_t Random::s_rand_max = 0x7fffffff;

Random::Random() : state_(NextSeed()) {}

std::uint32_t Random::get() {
    state_ += 0x9e3779b97f4a7c15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
    mixed ^= mixed >> 31;
    return static_cast<std::uint32_t>(mixed) & s_rand_max;
}
