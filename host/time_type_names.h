// What is rendered, by the names that scene files have for it.
#pragma once

#include <array>
#include <string_view>

#include <maxapi.h>

namespace host {

struct TimeTypeName {
    std::string_view name;
    int type;
};

// By REND_TIME values, which count from 0.
inline constexpr std::array<TimeTypeName, 4> timeTypeNames{{{"single", REND_TIMESINGLE},
                                                            {"segment", REND_TIMESEGMENT},
                                                            {"range", REND_TIMERANGE},
                                                            {"list", REND_TIMEPICKUP}}};

}  // namespace host
