// Order, ownership and copying of lists.

#include "psdfile/part_list.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include "psdfile/primitives.h"
#include "psdfile/text.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

// Counts the objects alive, and how many were freed through Destroy.
class CountedPart : public PSint8 {
  public:
    explicit CountedPart(std::uint8_t number) : PSint8(number) { ++alive; }
    CountedPart(const CountedPart& other) : PSint8(other) { ++alive; }
    CountedPart& operator=(const CountedPart&) = delete;
    ~CountedPart() override { --alive; }
    void Destroy() override {
        ++destroyed;
        PSint8::Destroy();
    }

    static inline int alive = 0;
    static inline int destroyed = 0;
};

std::uint8_t Byte(int number) {
    return static_cast<std::uint8_t>(number);
}

TEST(PartList, WritesItsItemsInOrderWhetherAddedAtTheEndOrTheFront) {
    PSDPartList list;
    list.Add<PSint8>(Byte(2));
    list.Add<PSint16>(std::uint16_t{3});
    list.AddFront<PSString>("a");
    EXPECT_EQ(list.Count(), 3U);
    EXPECT_EQ(WrittenHex(list), "61 02 00 03");
    EXPECT_EQ(list.ItemAs<PSint8>(1).value, 2);
    EXPECT_EQ(WrittenHex(list.Item(2)), "00 03");
}

TEST(PartList, HasAFrameLikeAnyPart) {
    PSDPartList list(2, true, false);
    list.Add<PSint8>(Byte(9));
    EXPECT_EQ(WrittenHex(list), "00 00 00 01 09 00");
}

TEST(PartList, DestroysItsItemsWhenClearedAndWhenItEnds) {
    CountedPart::destroyed = 0;
    {
        PSDPartList list;
        list.Add<CountedPart>(Byte(1));
        list.AddFront<CountedPart>(Byte(2));
        EXPECT_EQ(CountedPart::alive, 2);
        list.Clear();
        EXPECT_EQ(list.Count(), 0U);
        EXPECT_EQ(CountedPart::alive, 0);
        list.Add<CountedPart>(Byte(3));
    }
    EXPECT_EQ(CountedPart::alive, 0);
    EXPECT_EQ(CountedPart::destroyed, 3);
}

TEST(PartList, IsCopiedWithItemsAndFrame) {
    auto list = std::make_unique<PSDPartList>(std::uint8_t{4}, true, false);
    list->Add<CountedPart>(Byte(1));
    list->Add<PSString>("ab");
    PSDPartList copy(*list);
    EXPECT_EQ(CountedPart::alive, 2);
    list->ItemAs<CountedPart>(0).value = 7;
    list.reset();
    EXPECT_EQ(CountedPart::alive, 1);
    EXPECT_EQ(WrittenHex(copy), "00 00 00 03 01 61 62 00");
}

TEST(SharedPartList, WritesItsItemsInOrderWhetherAddedAtTheEndOrTheFront) {
    SharedPSDPartList list;
    list.Add(boost::make_shared<PSint8>(Byte(2)));
    list.AddFront(boost::make_shared<PSint8>(Byte(1)));
    list.Add(boost::make_shared<PSint16>(std::uint16_t{3}));
    EXPECT_EQ(list.Count(), 3U);
    EXPECT_EQ(WrittenHex(list), "01 02 00 03");
    EXPECT_EQ(WrittenHex(*list.Item(0)), "01");
}

TEST(SharedPartList, SharesItsItemsWithItsCopiesAndOwners) {
    const auto item = boost::make_shared<CountedPart>(Byte(1));
    {
        SharedPSDPartList list(2, true, false);
        list.Add(item);
        SharedPSDPartList copy(list);
        EXPECT_EQ(item.use_count(), 3);
        list.Clear();
        EXPECT_EQ(list.Count(), 0U);
        EXPECT_EQ(WrittenHex(copy), "00 00 00 01 01 00");
    }
    EXPECT_EQ(CountedPart::alive, 1);
    EXPECT_EQ(item.use_count(), 1);
}

}  // namespace
}  // namespace psdfile
