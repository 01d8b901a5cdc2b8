// A source whose one row a test spells out, and that counts how often it was asked.
#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <utility>
#include <vector>

#include "psdfile/channel_source.h"

// A depth without samples is one that the source doesn't have.
struct ListedSource : psdfile::PSDChannelImageDataSource {
    const std::uint8_t* GetRow8(std::uint32_t number) override { return Row(number, row8); }
    const std::uint16_t* GetRow16(std::uint32_t number) override { return Row(number, row16); }
    const float* GetRow32(std::uint32_t number) override { return Row(number, row32); }

    template <class Sample>
    const Sample* Row(std::uint32_t number, const std::vector<Sample>& row) {
        ++asked;
        lastRow = number;
        return row.empty() ? nullptr : row.data();
    }

    std::vector<std::uint8_t> row8;
    std::vector<std::uint16_t> row16;
    std::vector<float> row32;
    int asked = 0;
    std::uint32_t lastRow = 0;
};

inline boost::shared_ptr<ListedSource> Listed8(std::vector<std::uint8_t> row) {
    auto source = boost::make_shared<ListedSource>();
    source->row8 = std::move(row);
    return source;
}
inline boost::shared_ptr<ListedSource> Listed16(std::vector<std::uint16_t> row) {
    auto source = boost::make_shared<ListedSource>();
    source->row16 = std::move(row);
    return source;
}
inline boost::shared_ptr<ListedSource> Listed32(std::vector<float> row) {
    auto source = boost::make_shared<ListedSource>();
    source->row32 = std::move(row);
    return source;
}
