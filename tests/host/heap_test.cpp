#include <gtest/gtest.h>
#include <maxheap.h>

#include <cstdint>
#include <cstring>

namespace {

TEST(Heap, CallocGivesZeroedMemoryThatFreeTakes) {
    auto* memory = static_cast<unsigned char*>(MAX_calloc(100, 3));
    ASSERT_TRUE(memory);
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(memory[i], 0);
    }
    MAX_free(memory);
}

TEST(Heap, MallocGivesMemoryThatCanBeWritten) {
    void* memory = MAX_malloc(64);
    ASSERT_TRUE(memory);
    std::memset(memory, 7, 64);
    MAX_free(memory);
}

TEST(Heap, FreeingNullDoesNothing) {
    MAX_free(nullptr);
}

TEST(Heap, ObjectsOfItsClassesLieInIt) {
    struct Sample : MaxHeapOperators {
        std::uint64_t value = 5;
    };
    auto* sample = new Sample;
    EXPECT_EQ(sample->value, 5U);
    // What the classes' own operator delete does.
    sample->~Sample();
    MAX_free(sample);
    delete new Sample;
}

}  // namespace
