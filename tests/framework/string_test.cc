#include <nkfw/BStr.h>
#include <nkfw/String.h>

#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using namespace std::string_view_literals;
using frameworktest::FailingMemory;
using frameworktest::throws;
using frameworktest::WatchedMemory;

constexpr INT nMaxLength = std::numeric_limits<INT>::max();

// The text, and what has to hold for every string at any time.
std::string textOf(const CString& str) {
    EXPECT_LE(str.GetLength(), str.GetAllocLength());
    EXPECT_EQ(str.GetString()[str.GetLength()], '\0');
    return std::string(str.View());
}

// ---- Conversions

// Converts as a text value does: to a pointer, to a CString and to a wide text.
struct ManyConversions {
    operator LPCTSTR() const { return "pointer"; }
    operator BSTR() const { return nullptr; }
    operator CString() const { return CString("string"); }
};
struct PointerOnly {
    operator LPCTSTR() const { return "pointer"; }
};

TEST(String, AClassWithSeveralConversionsConvertsThroughItsCString) {
    const ManyConversions source;
    const CString copied = source;
    const CString constructed(source);
    CString assigned;
    assigned = source;
    EXPECT_EQ(copied, "string");
    EXPECT_EQ(constructed, "string");
    EXPECT_EQ(assigned, "string");
}

TEST(String, IsMadeOfPointersAndNotOfWhatConvertsToThem) {
    static_assert(std::is_convertible_v<LPCTSTR, CString>);
    static_assert(std::is_convertible_v<LPTSTR, CString>);
    static_assert(std::is_convertible_v<const char(&)[4], CString>);
    static_assert(std::is_convertible_v<BSTR, CString>);
    static_assert(std::is_convertible_v<const OLECHAR*, CString>);
    static_assert(!std::is_constructible_v<CString, PointerOnly>);
    static_assert(!std::is_assignable_v<CString&, PointerOnly>);
    static_assert(!std::is_constructible_v<CString, std::nullptr_t>);
    static_assert(!std::is_assignable_v<CString&, std::nullptr_t>);
    static_assert(!std::is_constructible_v<CString, void*>);
    static_assert(!std::is_constructible_v<CString, const unsigned char*>);
    static_assert(!std::is_convertible_v<std::string_view, CString>);
    static_assert(!std::is_convertible_v<TCHAR, CString>);
    EXPECT_EQ(CString(static_cast<LPCTSTR>(PointerOnly())), "pointer");
}

template <class T, class = void>
constexpr bool canBeAppended = false;
template <class T>
constexpr bool canBeAppended<T, std::void_t<decltype(std::declval<CString&>() += std::declval<T>())>> = true;

TEST(String, NoNumberBecomesTheCharacterWithItsCode) {
    static_assert(std::is_constructible_v<CString, TCHAR> && std::is_assignable_v<CString&, TCHAR>);
    static_assert(!std::is_constructible_v<CString, INT> && !std::is_assignable_v<CString&, INT>);
    static_assert(!std::is_constructible_v<CString, bool> && !std::is_assignable_v<CString&, bool>);
    static_assert(!std::is_constructible_v<CString, double> && !std::is_assignable_v<CString&, double>);
    static_assert(canBeAppended<TCHAR> && canBeAppended<LPCTSTR> && canBeAppended<const CString&>);
    static_assert(!canBeAppended<INT> && !canBeAppended<bool> && !canBeAppended<double>);
    CString str('A');
    str += 'B';
    str = str + 'C';
    EXPECT_EQ(str, "ABC");
    str = 'D';
    EXPECT_EQ(str, "D");
}

TEST(String, ReadsAsAPointerAndAsAView) {
    const CString str("Grün");
    const LPCTSTR psz = str;
    const std::string_view view = str;
    EXPECT_EQ(psz, str.GetString());
    EXPECT_EQ(view, std::string_view(psz));
}

// ---- Construction and copies

TEST(String, StartsEmptyWithoutABuffer) {
    const WatchedMemory memory;
    const CString str;
    EXPECT_TRUE(str.IsEmpty());
    EXPECT_EQ(str.GetLength(), 0);
    EXPECT_EQ(str.GetAllocLength(), 0);
    EXPECT_STREQ(str, "");
    EXPECT_EQ(memory.requests(), 0U);
}

TEST(String, AllEmptyTextsWithoutABufferShareOne) {
    const CString str;
    const LPCTSTR pszShared = str;
    EXPECT_EQ(CString("").GetString(), pszShared);
    EXPECT_EQ(CString(static_cast<LPCTSTR>(nullptr)).GetString(), pszShared);
    EXPECT_EQ(CString(u"").GetString(), pszShared);
    EXPECT_EQ(CString("abc", 0).GetString(), pszShared);
    EXPECT_EQ(CString('x', 0).GetString(), pszShared);
    EXPECT_EQ(CString(str).GetString(), pszShared);
    EXPECT_EQ(("" + str).GetString(), pszShared);
    CString emptied("abc");
    emptied.Empty();
    EXPECT_EQ(emptied.GetString(), pszShared);
    EXPECT_EQ(emptied.GetAllocLength(), 0);
}

TEST(String, NullIsTheEmptyText) {
    const LPCTSTR pszNull = nullptr;
    CString str("abc");
    str += pszNull;
    EXPECT_EQ(textOf(str), "abc");
    EXPECT_EQ(str.Find(pszNull), 0);
    EXPECT_GT(str.Compare(pszNull), 0);
    str = pszNull;
    EXPECT_TRUE(str.IsEmpty());
    EXPECT_TRUE(str == pszNull);
    EXPECT_TRUE(CString(pszNull, 3).IsEmpty());
    EXPECT_TRUE(CString(static_cast<const OLECHAR*>(nullptr)).IsEmpty());
    EXPECT_EQ(textOf(pszNull + CString("x")), "x");
}

struct MadeRow {
    CString made;
    std::string_view text;
};

TEST(String, EveryConstructorAllocatesTheLengthOfItsText) {
    const MadeRow table[] = {
        {CString("abc"), "abc"sv},
        {CString("abcdef", 4), "abcd"sv},
        {CString("a\0c", 3), "a\0c"sv},
        {CString("abc", -1), ""sv},
        {CString('x'), "x"sv},
        {CString('x', 5), "xxxxx"sv},
        {CString('\xFC', 2), "\xFC\xFC"sv},
        {CString('x', -5), ""sv},
        {CString("a\0c"sv), "a\0c"sv},
        {CString(u"abc"), "abc"sv},
    };
    for (const MadeRow& row : table) {
        EXPECT_EQ(textOf(row.made), row.text);
        EXPECT_EQ(row.made.GetAllocLength(), static_cast<INT>(row.text.size()));
    }
}

TEST(String, ACopyHasTheAllocatedLengthOfItsText) {
    CString original("abc");
    original.GetBuffer(50);
    original.ReleaseBuffer();
    const CString copy(original);
    EXPECT_EQ(textOf(copy), "abc");
    EXPECT_EQ(copy.GetAllocLength(), 3);
    EXPECT_EQ(original.GetAllocLength(), 50);
}

TEST(String, AMovedTextKeepsItsBufferAndLeavesAnEmptyOne) {
    CString source("abc");
    source.GetBuffer(50);
    const LPCTSTR pszBuffer = source;
    CString target(std::move(source));
    EXPECT_EQ(target.GetString(), pszBuffer);
    EXPECT_EQ(target.GetAllocLength(), 50);
    EXPECT_EQ(textOf(source), "");  // NOLINT(bugprone-use-after-move): empty, and usable
    source = "neu";
    EXPECT_EQ(textOf(source), "neu");
    CString assigned("alt");
    assigned = std::move(target);
    EXPECT_EQ(assigned.GetString(), pszBuffer);
    static_assert(std::is_nothrow_move_constructible_v<CString> &&
                  std::is_nothrow_move_assignable_v<CString>);
}

TEST(String, AnAssignmentKeepsTheBufferIfTheTextFits) {
    CString str("abcdefgh");
    const LPCTSTR pszBuffer = str;
    const CString other("xyz");
    str = other;
    EXPECT_EQ(textOf(str), "xyz");
    str = "uv";
    EXPECT_EQ(textOf(str), "uv");
    str = u"wide";
    EXPECT_EQ(textOf(str), "wide");
    str = 'c';
    EXPECT_EQ(textOf(str), "c");
    str = "";
    EXPECT_EQ(textOf(str), "");
    str = "12345678";
    EXPECT_EQ(textOf(str), "12345678");
    EXPECT_EQ(str.GetString(), pszBuffer);
    EXPECT_EQ(str.GetAllocLength(), 8);
    str = "123456789";
    EXPECT_EQ(str.GetAllocLength(), 9);
}

TEST(String, ASourceMayLieInsideTheTextItself) {
    const auto tried = [](auto operation) {
        CString str("abcdef");
        operation(str);
        return textOf(str);
    };
    EXPECT_EQ(tried([](CString& s) { s = static_cast<const CString&>(s); }), "abcdef");
    EXPECT_EQ(tried([](CString& s) { s = s.GetString() + 2; }), "cdef");
    EXPECT_EQ(tried([](CString& s) { s.Assign(s.View().substr(1, 3)); }), "bcd");
    EXPECT_EQ(tried([](CString& s) { s.Assign({s.GetString(), 7}); }), "abcdef\0"sv);
    EXPECT_EQ(tried([](CString& s) { s += s; }), "abcdefabcdef");
    EXPECT_EQ(tried([](CString& s) { s += s.GetString() + 4; }), "abcdefef");
    EXPECT_EQ(tried([](CString& s) { s.Append(s.View().substr(0, 2)); }), "abcdefab");
    EXPECT_EQ(tried([](CString& s) { s = s + s; }), "abcdefabcdef");
    EXPECT_EQ(tried([](CString& s) { s = (s.GetString() + 3) + s; }), "defabcdef");
    EXPECT_EQ(tried([](CString& s) {
                  s.GetBuffer(40);
                  s += s;
                  s += s;
              }),
              "abcdefabcdefabcdefabcdef");
}

// ---- Wide texts

TEST(String, AWideTextBecomesCodePage1252AndComesBack) {
    std::u16string all;
    std::string bytes;
    for (unsigned byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const CString str(bytes);
    const BSTR bstr = str.AllocSysString();
    EXPECT_EQ(SysStringLen(bstr), 255U);
    EXPECT_EQ(bstr[0x80 - 1], u'€');
    EXPECT_EQ(bstr[0xFC - 1], u'ü');
    EXPECT_EQ(textOf(CString(bstr)), bytes);
    SysFreeString(bstr);
}

TEST(String, AWideTextTakesNulBytesAlong) {
    const CString str("a\0b", 3);
    const BSTR bstr = str.AllocSysString();
    EXPECT_EQ(std::u16string_view(bstr, SysStringLen(bstr)), std::u16string_view(u"a\0b", 3));
    SysFreeString(bstr);
    const BSTR bstrEmpty = CString().AllocSysString();
    ASSERT_NE(bstrEmpty, nullptr);
    EXPECT_EQ(SysStringLen(bstrEmpty), 0U);
    SysFreeString(bstrEmpty);
}

TEST(String, ACharacterOutsideThePageIsRefusedAndChangesNothing) {
    for (const OLECHAR* const pwsz : {u"Łódź", u"abcĀ", u"\u0100", u"a\u0080", u"日本", u"😀"}) {
        EXPECT_TRUE(throws<CInvalidArgException>([&] { const CString str(pwsz); }));
        CString str("Bestand");
        EXPECT_TRUE(throws<CInvalidArgException>([&] { str = pwsz; }));
        EXPECT_EQ(textOf(str), "Bestand");
    }
}

// ---- Buffers

struct BufferRow {
    const char* text;
    INT nMinLength;
    INT nAllocLength;
};

TEST(String, GetBufferMakesTheAllocatedLengthExactlyWhatIsAskedWhenItWasSmaller) {
    const BufferRow table[] = {
        {"", 0, 0},    {"", -1, 0},   {"", 1, 1},    {"", 10, 10},      {"abc", 0, 3},
        {"abc", 2, 3}, {"abc", 3, 3}, {"abc", 4, 4}, {"abc", 100, 100}, {"abc", -5, 3},
    };
    for (const BufferRow& row : table) {
        CString str(row.text);
        const LPTSTR pszBuffer = str.GetBuffer(row.nMinLength);
        EXPECT_EQ(pszBuffer, str.GetString());
        EXPECT_EQ(str.GetAllocLength(), row.nAllocLength);
        EXPECT_STREQ(pszBuffer, row.text);
        EXPECT_EQ(textOf(str), row.text);
    }
}

TEST(String, ReleaseBufferTakesTheLengthFromTheTerminator) {
    CString str;
    std::strcpy(str.GetBuffer(10), "abc");
    str.ReleaseBuffer();
    EXPECT_EQ(textOf(str), "abc");
    std::memset(str.GetBuffer(10), 'x', 10);
    str.ReleaseBuffer();
    EXPECT_EQ(textOf(str), "xxxxxxxxxx");
}

TEST(String, ReleaseBufferTakesTheLengthGivenUpToTheAllocatedOne) {
    CString str;
    std::memcpy(str.GetBuffer(6), "ab\0def", 6);
    str.ReleaseBuffer(5);
    EXPECT_EQ(textOf(str), "ab\0de"sv);
    str.ReleaseBuffer(100);
    EXPECT_EQ(str.GetLength(), 6);
    str.ReleaseBuffer(0);
    EXPECT_EQ(textOf(str), "");
}

TEST(String, ReleaseBufferNeverShrinks) {
    CString str("abc");
    str.GetBuffer(1000);
    for (const INT nLength : {-1, 3, 1, 0}) {
        str.ReleaseBuffer(nLength);
        EXPECT_EQ(str.GetAllocLength(), 1000);
    }
}

TEST(String, WithoutABufferReleaseBufferLeavesTheSharedEmptyText) {
    CString str;
    *str.GetBuffer(0) = '\0';
    str.ReleaseBuffer();
    str.ReleaseBuffer(5);
    EXPECT_EQ(textOf(str), "");
    EXPECT_EQ(str.GetAllocLength(), 0);
}

// ---- Appending

TEST(String, AppendsTextsCharactersAndBytes) {
    CString str;
    str += "ab";
    str += 'c';
    str += CString("d\0e", 3);
    str.Append("f\0"sv);
    EXPECT_EQ(textOf(str), "abcd\0ef\0"sv);
}

TEST(String, AppendingAtLeastDoublesABufferThatHasToGrow) {
    CString str("0123456789");
    str += 'x';
    EXPECT_EQ(str.GetAllocLength(), 20);
    str.Append(std::string(100, 'y'));
    EXPECT_EQ(str.GetAllocLength(), 111);
}

TEST(String, AppendingManyCharactersNeedsFewRequestsForMemory) {
    const WatchedMemory memory;
    CString str;
    for (int i = 0; i < 100000; ++i)
        str += 'x';
    EXPECT_EQ(str.GetLength(), 100000);
    EXPECT_LE(memory.requests(), 20U);
}

TEST(String, SumsTakeStringsPointersAndCharactersInBothOrders) {
    const CString str("mitte");
    EXPECT_EQ(textOf(str + str), "mittemitte");
    EXPECT_EQ(textOf(str + " rechts"), "mitte rechts");
    EXPECT_EQ(textOf("links " + str), "links mitte");
    EXPECT_EQ(textOf(str + '!'), "mitte!");
    EXPECT_EQ(textOf('!' + str), "!mitte");
    EXPECT_EQ(textOf("a" + str + 'b' + "c" + str), "amittebcmitte");
    EXPECT_EQ(textOf(CString() + CString()), "");
    EXPECT_EQ(textOf("" + CString()), "");
}

// ---- Asking

struct OrderRow {
    const char* left;
    const char* right;
    INT nOrder;
};

TEST(String, ComparesUnsignedBytesInAllOperatorsAndOrders) {
    const OrderRow table[] = {
        {"", "", 0},       {"", "a", -1},   {"a", "", 1},      {"abc", "abc", 0},   {"abc", "abd", -1},
        {"ab", "abc", -1}, {"b", "abc", 1}, {"z", "\xE4", -1}, {"\xFC", "\xE4", 1}, {"A", "a", -1},
    };
    for (const OrderRow& row : table) {
        const CString left(row.left);
        const CString right(row.right);
        SCOPED_TRACE(textOf(left) + " against " + textOf(right));
        EXPECT_EQ(left.Compare(row.right), row.nOrder);
        EXPECT_EQ(right.Compare(row.left), -row.nOrder);
        const auto check = [&](const auto& a, const auto& b) {
            EXPECT_EQ(a == b, row.nOrder == 0);
            EXPECT_EQ(a != b, row.nOrder != 0);
            EXPECT_EQ(a < b, row.nOrder < 0);
            EXPECT_EQ(a > b, row.nOrder > 0);
            EXPECT_EQ(a <= b, row.nOrder <= 0);
            EXPECT_EQ(a >= b, row.nOrder >= 0);
        };
        check(left, right);
        check(left, row.right);
        check(row.left, right);
    }
}

TEST(String, NulBytesInsideCountInComparisons) {
    const CString str("a\0b", 3);
    EXPECT_EQ(str.Compare("a"), 1);
    EXPECT_TRUE(str != "a");
    EXPECT_TRUE(str == CString("a\0b", 3));
    EXPECT_TRUE(str < CString("a\0c", 3));
}

struct FindRow {
    const char* sub;
    INT nStart;
    INT nFound;
};

TEST(String, FindsTextsFromAPositionOn) {
    const CString str("abcabc");
    const FindRow table[] = {
        {"abc", 0, 0}, {"abc", 1, 3},  {"abc", 4, -1},  {"bca", 0, 1}, {"abcabc", 0, 0}, {"abcabcd", 0, -1},
        {"x", 0, -1},  {"abc", -5, 0}, {"abc", 99, -1}, {"", 0, 0},    {"", 6, 6},       {"", 7, -1},
    };
    for (const FindRow& row : table)
        EXPECT_EQ(str.Find(row.sub, row.nStart), row.nFound) << row.sub << " from " << row.nStart;
}

TEST(String, FindsCharactersFromAPositionOn) {
    const CString str("abcabc");
    EXPECT_EQ(str.Find('c'), 2);
    EXPECT_EQ(str.Find('c', 3), 5);
    EXPECT_EQ(str.Find('c', 6), -1);
    EXPECT_EQ(str.Find('c', -1), 2);
    EXPECT_EQ(str.Find('x'), -1);
    EXPECT_EQ(CString().Find('x'), -1);
}

struct PartRow {
    CString part;
    const char* text;
};

TEST(String, PartsEndWhereTheTextEnds) {
    const CString str("abcdef");
    const PartRow table[] = {
        {str.Mid(2, 3), "cde"}, {str.Mid(4, 99), "ef"}, {str.Mid(6, 1), ""},       {str.Mid(99, 1), ""},
        {str.Mid(-3, 2), "ab"}, {str.Mid(2, -1), ""},   {str.Left(2), "ab"},       {str.Left(99), "abcdef"},
        {str.Left(0), ""},      {str.Left(-1), ""},     {str.Right(2), "ef"},      {str.Right(99), "abcdef"},
        {str.Right(0), ""},     {str.Right(-1), ""},    {CString().Mid(0, 1), ""}, {CString().Right(1), ""},
    };
    for (const PartRow& row : table)
        EXPECT_EQ(textOf(row.part), row.text);
}

TEST(String, CharactersAreReadAndReplacedInPlace) {
    CString str("abc");
    str.SetAt(1, 'X');
    EXPECT_EQ(textOf(str), "aXc");
    EXPECT_EQ(str.GetAt(1), 'X');
    EXPECT_EQ(str[2], 'c');
    EXPECT_EQ(str[3], '\0');
}

// ---- Without memory

struct MemoryRow {
    const char* name;
    void (*operation)(CString&);
};

TEST(String, WithoutMemoryEveryOperationThrowsAndChangesNothing) {
    static const std::string longText(100, 'x');
    static const std::u16string longWide(100, u'x');
    static const CString longString(longText);
    const MemoryRow table[] = {
        {"= CString", [](CString& s) { s = longString; }},
        {"= pointer", [](CString& s) { s = longText.c_str(); }},
        {"= wide", [](CString& s) { s = longWide.c_str(); }},
        {"Assign", [](CString& s) { s.Assign(longText); }},
        {"+= CString", [](CString& s) { s += longString; }},
        {"+= pointer", [](CString& s) { s += "y"; }},
        {"+= character", [](CString& s) { s += 'y'; }},
        {"+= itself", [](CString& s) { s += s; }},
        {"= itself + itself", [](CString& s) { s = s + s; }},
        {"= itself + pointer", [](CString& s) { s = s + "y"; }},
        {"= itself + character", [](CString& s) { s = s + 'y'; }},
        {"= pointer + itself", [](CString& s) { s = "y" + s; }},
        {"= character + itself", [](CString& s) { s = 'y' + s; }},
        {"= copy", [](CString& s) { s = CString(s); }},
        {"= bytes", [](CString& s) { s = CString("abc", 3); }},
        {"= repeated", [](CString& s) { s = CString('x', 3); }},
        {"= wide copy", [](CString& s) { s = CString(u"abc"); }},
        {"= part", [](CString& s) { s = s.Mid(1, 2); }},
        {"= right part", [](CString& s) { s = s.Right(2); }},
        {"GetBuffer", [](CString& s) { s.GetBuffer(100); }},
        {"AllocSysString", [](CString& s) { SysFreeString(s.AllocSysString()); }},
    };
    for (const MemoryRow& row : table) {
        int nFailures = 0;
        for (int nGranted = 0;; ++nGranted) {
            CString str("Bestand");
            bool fThrown = false;
            bool fRefused = false;
            {
                const FailingMemory memory(nGranted);
                fThrown = throws<CMemoryException>([&] { row.operation(str); });
                fRefused = memory.refused();
            }
            ASSERT_EQ(fThrown, fRefused) << row.name;
            if (!fRefused) break;
            ++nFailures;
            EXPECT_EQ(textOf(str), "Bestand") << row.name;
            EXPECT_EQ(str.GetAllocLength(), 7) << row.name;
        }
        EXPECT_GE(nFailures, 1) << row.name;
    }
}

TEST(String, ATextBeyondTheGreatestLengthIsRefusedLikeExhaustedMemory) {
    CString str("abc");
    const std::string_view tooLong("abc", static_cast<std::size_t>(nMaxLength) + 1);
    const std::string_view tooMuch("abc", static_cast<std::size_t>(nMaxLength) - 2);
    EXPECT_TRUE(throws<CMemoryException>([&] { str.Assign(tooLong); }));
    EXPECT_TRUE(throws<CMemoryException>([&] { str.Append(tooLong); }));
    EXPECT_TRUE(throws<CMemoryException>([&] { str.Append(tooMuch); }));
    EXPECT_EQ(textOf(str), "abc");
}

// ---- At random

TEST(String, BehavesAsATextUnderRandomOperations) {
    std::mt19937 random(20040301);
    const auto number = [&](INT nBound) {
        return static_cast<INT>(random() % static_cast<unsigned>(nBound));
    };
    for (int round = 0; round < 200; ++round) {
        CString str;
        std::string model;
        for (int step = 0; step < 60; ++step) {
            const std::string bytes(static_cast<std::size_t>(number(20)), static_cast<char>(number(256)));
            switch (number(8)) {
                case 0:
                    str.Assign(bytes);
                    model = bytes;
                    break;
                case 1:
                    str.Append(bytes);
                    model += bytes;
                    break;
                case 2:
                    str += CString(str);
                    model += std::string(model);
                    break;
                case 3: {
                    const INT nCount = number(30);
                    str = str.Left(nCount);
                    model = model.substr(0, static_cast<std::size_t>(nCount));
                    break;
                }
                case 4: {
                    const INT nCount = number(30);
                    str = str.Right(nCount);
                    if (static_cast<std::size_t>(nCount) < model.size())
                        model.erase(0, model.size() - static_cast<std::size_t>(nCount));
                    break;
                }
                case 5: {
                    const INT nRoom = number(60);
                    const INT nBefore = str.GetAllocLength();
                    str.GetBuffer(nRoom);
                    EXPECT_EQ(str.GetAllocLength(), std::max(nRoom, nBefore));
                    str.ReleaseBuffer(str.GetLength());
                    break;
                }
                case 6:
                    str = CString(str);
                    EXPECT_EQ(str.GetAllocLength(), str.GetLength());
                    break;
                default:
                    if (model.size() > 200) {
                        str.Empty();
                        model.clear();
                    }
            }
            ASSERT_EQ(textOf(str), model);
        }
    }
}

}  // namespace
