#include <nkfw/BStr.h>

#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::FailingMemory;

std::u16string textOf(BSTR bstr) {
    return {bstr, SysStringLen(bstr)};
}

TEST(BStr, IsACopyOfAZeroTerminatedText) {
    const BSTR bstr = SysAllocString(u"Grün €");
    EXPECT_EQ(textOf(bstr), u"Grün €");
    EXPECT_EQ(SysStringByteLen(bstr), 12U);
    EXPECT_EQ(bstr[6], u'\0');
    SysFreeString(bstr);
}

TEST(BStr, ItsLengthInBytesStandsBeforeTheFirstCharacter) {
    const BSTR bstr = SysAllocString(u"abc");
    UINT nBytes = 0;
    std::memcpy(&nBytes, reinterpret_cast<const BYTE*>(bstr) - 4, 4);
    EXPECT_EQ(nBytes, 6U);
    SysFreeString(bstr);
}

TEST(BStr, CharactersZeroInsideCount) {
    constexpr OLECHAR text[] = u"a\0b";
    const BSTR bstr = SysAllocStringLen(text, 3);
    EXPECT_EQ(textOf(bstr), std::u16string(text, 3));
    EXPECT_EQ(bstr[3], u'\0');
    SysFreeString(bstr);
}

TEST(BStr, WithoutASourceItIsLeftToTheCallerToFill) {
    const BSTR bstr = SysAllocStringLen(nullptr, 2);
    ASSERT_NE(bstr, nullptr);
    EXPECT_EQ(SysStringLen(bstr), 2U);
    EXPECT_EQ(bstr[2], u'\0');
    bstr[0] = u'x';
    bstr[1] = u'y';
    EXPECT_EQ(textOf(bstr), u"xy");
    SysFreeString(bstr);
}

TEST(BStr, NullIsTheEmptyText) {
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0U);
    EXPECT_EQ(SysStringByteLen(nullptr), 0U);
    SysFreeString(nullptr);
}

TEST(BStr, AnEmptyTextIsNotNull) {
    const BSTR bstr = SysAllocString(u"");
    ASSERT_NE(bstr, nullptr);
    EXPECT_EQ(SysStringLen(bstr), 0U);
    SysFreeString(bstr);
}

TEST(BStr, IsNullWhenMemoryIsExhausted) {
    const FailingMemory memory(0);
    EXPECT_EQ(SysAllocString(u"abc"), nullptr);
    EXPECT_EQ(SysAllocStringLen(u"abc", 3), nullptr);
    EXPECT_TRUE(memory.refused());
}

TEST(BStr, IsNullWhenItsBytesCannotBeCounted) {
    EXPECT_EQ(SysAllocStringLen(nullptr, std::numeric_limits<UINT>::max()), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x7FFFFFFF), nullptr);
}

}  // namespace
