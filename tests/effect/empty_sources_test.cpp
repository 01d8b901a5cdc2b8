#include "effect/empty_sources.h"

#include <gtest/gtest.h>
#include <boost/make_shared.hpp>

#include <vector>

namespace {

constexpr int width = 3;
constexpr int height = 4;

class Rows : public psdfile::PSDChannelImageDataSource {
  public:
    const std::uint8_t* GetRow8(std::uint32_t) override { return nullptr; }
    const std::uint16_t* GetRow16(std::uint32_t row) override {
        asked.push_back(row);
        return static_cast<int>(row) == missingRow ? nullptr : &samples[row * width];
    }
    bool IsSolid() override { return solid; }

    std::vector<std::uint16_t> samples = std::vector<std::uint16_t>(width * height);
    std::vector<std::uint32_t> asked;
    int missingRow = -1;
    bool solid = false;
};

class EmptySources : public testing::Test {
  protected:
    bool Empty(const std::vector<psdfile::PSDChannelImageDataSourcePtr>& sources) {
        return effect::AreSourcesEmpty(width, height, sources);
    }

    boost::shared_ptr<Rows> rows = boost::make_shared<Rows>();
};

TEST_F(EmptySources, HaveNoSampleAboveZero) {
    EXPECT_TRUE(Empty({rows}));
    EXPECT_EQ(rows->asked, (std::vector<std::uint32_t>{0, 1, 2, 3}));
    for (std::size_t i = 0; i < rows->samples.size(); ++i) {
        rows->samples.assign(rows->samples.size(), 0);
        rows->samples[i] = 1;
        EXPECT_FALSE(Empty({rows})) << i;
    }
}

TEST_F(EmptySources, AreReadNoFurtherThanTheFirstSample) {
    rows->samples[width] = 65535;
    const auto second = boost::make_shared<Rows>();
    EXPECT_FALSE(Empty({rows, second}));
    EXPECT_EQ(rows->asked, (std::vector<std::uint32_t>{0, 1}));
    EXPECT_TRUE(second->asked.empty());
}

TEST_F(EmptySources, AreAllLookedAt) {
    const auto full = boost::make_shared<Rows>();
    full->samples.back() = 1;
    EXPECT_FALSE(Empty({rows, rows, rows, rows, full}));
    EXPECT_TRUE(Empty({rows, rows, rows, rows, rows}));
}

TEST_F(EmptySources, ThatAreNotThereArePassedOver) {
    EXPECT_TRUE(Empty({}));
    EXPECT_TRUE(Empty({nullptr, nullptr}));
    rows->samples[0] = 1;
    EXPECT_FALSE(Empty({nullptr, rows}));
}

TEST_F(EmptySources, EndAtAMissingRow) {
    rows->missingRow = 1;
    rows->samples.back() = 1;
    EXPECT_TRUE(Empty({rows}));
    EXPECT_EQ(rows->asked, (std::vector<std::uint32_t>{0, 1}));
    const auto full = boost::make_shared<Rows>();
    full->samples[0] = 1;
    EXPECT_FALSE(Empty({rows, full})) << "only that source ends";
}

TEST_F(EmptySources, OfOneValueAreToldByOneRow) {
    rows->solid = true;
    EXPECT_TRUE(Empty({rows}));
    EXPECT_EQ(rows->asked, (std::vector<std::uint32_t>{0}));
    rows->samples.assign(rows->samples.size(), 1);
    EXPECT_FALSE(Empty({rows}));
}

TEST_F(EmptySources, OfNoSizeAreEmpty) {
    rows->samples.assign(rows->samples.size(), 1);
    const std::vector<psdfile::PSDChannelImageDataSourcePtr> sources{rows};
    EXPECT_TRUE(effect::AreSourcesEmpty(0, height, sources));
    EXPECT_TRUE(effect::AreSourcesEmpty(width, 0, sources));
    rows->solid = true;
    EXPECT_TRUE(effect::AreSourcesEmpty(width, 0, sources));
}

}  // namespace
