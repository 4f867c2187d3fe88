#include <nkfw/Memory.h>

#include <cstring>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::FailingMemory;
using frameworktest::WatchedMemory;

bool grantsAll(std::size_t) noexcept {
    return true;
}

TEST(Memory, ARequestOfNoBytesGivesABlock) {
    void* const block = nkfw::allocate(0);
    EXPECT_NE(block, nullptr);
    void* const resized = nkfw::reallocate(block, 0);
    EXPECT_NE(resized, nullptr);
    nkfw::release(resized);
}

TEST(Memory, ReleaseTakesNull) {
    nkfw::release(nullptr);
    void* const block = nkfw::reallocate(nullptr, 8);
    EXPECT_NE(block, nullptr);
    nkfw::release(block);
}

TEST(Memory, AResizedBlockKeepsItsContents) {
    char* block = static_cast<char*>(nkfw::allocate(4));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abcd", 4);
    block = static_cast<char*>(nkfw::reallocate(block, 4000));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "abcd", 4), 0);
    block = static_cast<char*>(nkfw::reallocate(block, 2));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "ab", 2), 0);
    nkfw::release(block);
}

TEST(Memory, ARefusedRequestGivesNullAndLeavesTheOldBlock) {
    char* const block = static_cast<char*>(nkfw::allocate(4));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abcd", 4);
    {
        const FailingMemory memory(0);
        EXPECT_EQ(nkfw::allocate(1), nullptr);
        EXPECT_EQ(nkfw::reallocate(block, 8), nullptr);
        EXPECT_TRUE(memory.refused());
    }
    EXPECT_EQ(std::memcmp(block, "abcd", 4), 0);
    nkfw::release(block);
}

TEST(Memory, TheProbeSeesEveryRequestWithItsSize) {
    const WatchedMemory memory;
    void* block = nkfw::allocate(10);
    EXPECT_EQ(memory.largest(), 10U);
    block = nkfw::reallocate(block, 20);
    EXPECT_EQ(memory.largest(), 20U);
    nkfw::release(block);
    EXPECT_EQ(memory.requests(), 2U);
}

TEST(Memory, SettingAProbeGivesTheOneBefore) {
    EXPECT_EQ(nkfw::allocationProbe(), nullptr);
    EXPECT_EQ(nkfw::setAllocationProbe(&grantsAll), nullptr);
    EXPECT_EQ(nkfw::allocationProbe(), &grantsAll);
    EXPECT_EQ(nkfw::setAllocationProbe(nullptr), &grantsAll);
    EXPECT_EQ(nkfw::allocationProbe(), nullptr);
}

}  // namespace
