// The value record of a text.

#include "Imp/dtstrini.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "TextSearch.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr const char* kLong = "a text that is too long for a pool's block";  // 42 characters

// "'text' length/allocation length", the text with its length.
std::string shapeOf(const NkDtString_Imp& record) {
    std::string text;
    for (const char ch : record.WholeText()) {
        if (ch == '\0') {
            text += "\\0";
        } else {
            text += ch;
        }
    }
    return "'" + text + "' " + std::to_string(record.Length()) + "/" + std::to_string(record.AllocLength());
}

// What holds between operations.
void expectSound(const NkDtString_Imp& record) {
    EXPECT_GE(record.Length(), 0);
    EXPECT_LE(record.Length(), record.AllocLength());
    EXPECT_EQ(record.Text()[record.Length()], '\0');
}

TEST(TextRecord, StartsAtTheSharedEmptyText) {
    const NkDtString_Imp a;
    const NkDtString_Imp b;
    EXPECT_EQ(shapeOf(a), "'' 0/0");
    EXPECT_EQ(a.Text(), b.Text());
}

TEST(TextRecord, OwnsNoBufferForATextWithoutRoom) {
    const NkDtString_Imp shared;
    EXPECT_EQ(NkDtString_Imp("", 0, 0).Text(), shared.Text());
    EXPECT_EQ(NkDtString_Imp("abc", 0, 0).Text(), shared.Text());
    const NkDtString_Imp roomy("", 0, 10);
    EXPECT_NE(roomy.Text(), shared.Text());
    EXPECT_EQ(NkDtString_Imp(roomy).Text(), shared.Text());
}

TEST(StrAlloc, TakesTheTextUpToTheRoom) {
    struct Case {
        const char* text;
        INT alloc;
        const char* shape;
    };
    constexpr Case cases[] = {{"abc", 3, "'abc' 3/3"},  {"abc", 2, "'ab' 2/2"}, {"abc", 5, "'abc' 3/5"},
                              {"", 4, "'' 0/4"},        {"abc", 0, "'' 0/0"},   {kLong, 6, "'a text' 6/6"},
                              {"abc", 60, "'abc' 3/60"}};
    for (const Case& each : cases) {
        for (const char* const before : {"", "xy", kLong}) {
            NkDtString_Imp record(before, NkDtStrLenAuto, NkDtStrLenAuto);
            record.StrAlloc(each.text, each.alloc);
            EXPECT_EQ(shapeOf(record), each.shape) << before;
            expectSound(record);
        }
    }
}

TEST(StrAlloc, TakesTheLengthAsGivenAndFillsItWithNul) {
    struct Case {
        const char* text;
        INT length;
        INT alloc;
        const char* shape;
    };
    constexpr Case cases[] = {{"abc", 2, 5, "'ab' 2/5"},
                              {"abc", 5, 5, "'abc\\0\\0' 5/5"},
                              {"", 3, 60, "'\\0\\0\\0' 3/60"},
                              {"abc", 0, 3, "'' 0/3"},
                              {"abc", 3, 3, "'abc' 3/3"}};
    for (const Case& each : cases) {
        NkDtString_Imp record("xyz", 3, 40);
        record.StrAlloc(each.text, each.length, each.alloc);
        EXPECT_EQ(shapeOf(record), each.shape);
        expectSound(record);
    }
}

TEST(StrAlloc, TakesAPartOfTheOldText) {
    NkDtString_Imp record(kLong, NkDtStrLenAuto, NkDtStrLenAuto);
    record.StrAlloc(record.Text() + 2, 4, 4);
    EXPECT_EQ(shapeOf(record), "'text' 4/4");
}

TEST(StrRealloc, KeepsTheTextAndItsLength) {
    for (const INT alloc : {3, 4, 22, 23, 24, 100}) {
        for (const INT before : {3, 22, 23, 24, 100}) {
            NkDtString_Imp record("abc", 3, before);
            record.StrRealloc(alloc);
            EXPECT_EQ(shapeOf(record), "'abc' 3/" + std::to_string(alloc)) << before;
            expectSound(record);
        }
    }
}

TEST(StrRealloc, ReplacesTheSharedEmptyTextByABufferFilledWithNul) {
    for (const INT alloc : {1, 22, 23, 24, 100}) {
        NkDtString_Imp record;
        record.StrRealloc(alloc);
        EXPECT_EQ(shapeOf(record), "'' 0/" + std::to_string(alloc));
        EXPECT_EQ(std::string(record.Text(), static_cast<std::size_t>(alloc) + 1),
                  std::string(static_cast<std::size_t>(alloc) + 1, '\0'));
    }
}

TEST(StrRealloc, CutsATextThatDoesNotFit) {
    for (const char* const text : {"abcdef", "abcdef and more than a block of the pool holds"}) {
        NkDtString_Imp record(text, NkDtStrLenAuto, NkDtStrLenAuto);
        record.StrRealloc(4);
        EXPECT_EQ(shapeOf(record), "'abcd' 4/4");
        expectSound(record);
        record.StrRealloc(0);
        EXPECT_EQ(shapeOf(record), "'' 0/0");
        EXPECT_EQ(record.Text(), NkDtString_Imp().Text());
    }
}

TEST(StrRealloc, AsksForNothingWhenTheRoomIsThere) {
    NkDtString_Imp record("abc", 3, 10);
    const LPCTSTR text = record.Text();
    const memorytest::Requests requests;
    record.StrRealloc(10);
    record.Reserve(5);
    EXPECT_EQ(requests.count(), 0);
    EXPECT_EQ(record.Text(), text);
    EXPECT_EQ(record.AllocLength(), 10);
}

TEST(StrReset, ReturnsToTheSharedEmptyText) {
    for (const char* const text : {"", "abc", kLong}) {
        NkDtString_Imp record(text, NkDtStrLenAuto, 100);
        record.StrReset();
        EXPECT_EQ(shapeOf(record), "'' 0/0");
        EXPECT_EQ(record.Text(), NkDtString_Imp().Text());
    }
}

TEST(TextRecord, NeverWritesToTheSharedEmptyText) {
    NkDtString_Imp record;
    record.SetLength(0);
    record.Write(0, {});
    EXPECT_EQ(shapeOf(record), "'' 0/0");
    EXPECT_EQ(*NkDtString_Imp().Text(), '\0');
}

TEST(TextRecord, WritesAPartOfItself) {
    NkDtString_Imp record("abcdef", NkDtStrLenAuto, NkDtStrLenAuto);
    record.Write(0, record.Part(2, 3));
    EXPECT_EQ(shapeOf(record), "'cde' 3/6");
    record.Write(1, record.Part(0, 2));
    EXPECT_EQ(shapeOf(record), "'ccd' 3/6");
}

TEST(TextRecord, KnowsWhatPointsIntoItsText) {
    const NkDtString_Imp record("abc", 3, 10);
    EXPECT_TRUE(record.Holds(record.Text()));
    EXPECT_TRUE(record.Holds(record.Text() + 3));
    EXPECT_FALSE(record.Holds(record.Text() + 4));
    EXPECT_FALSE(record.Holds("abc"));
}

TEST(TextRecord, SeesItsTextWithItsLengthAndUpToTheFirstNul) {
    NkDtString_Imp record("abc", 3, 3);
    record.Fill(1, '\0', 1);
    EXPECT_EQ(record.WholeText(), std::string_view("a\0c", 3));
    EXPECT_EQ(record.VisibleText(), "a");
}

TEST(TextRecord, KnowsOfANulWhereverItComesFrom) {
    constexpr std::string_view withNul("x\0y", 3);
    const nkdt::TextPiece piece{withNul, true};
    const auto expectNulAt = [](const NkDtString_Imp& record, std::size_t position) {
        EXPECT_LT(record.VisibleText().size(), record.WholeText().size());
        EXPECT_EQ(record.VisibleText().size(), position);
    };
    NkDtString_Imp built("", 3, 3);
    expectNulAt(built, 0);
    expectNulAt(NkDtString_Imp(built), 0);

    NkDtString_Imp written("abc", 3, 10);
    written.Write(3, piece);
    expectNulAt(written, 4);
    written.Write(6, {"z"});
    expectNulAt(written, 4);
    expectNulAt(NkDtString_Imp(written), 4);
    written.StrRealloc(20);
    expectNulAt(written, 4);
    written.Overwrite(0, written.Part(3, 3));
    expectNulAt(written, 1);
    written.Write(0, {"abc"});  // the whole text
    EXPECT_EQ(written.VisibleText(), "abc");

    NkDtString_Imp overwritten("abc", 3, 10);
    overwritten.Overwrite(0, piece);
    expectNulAt(overwritten, 1);
    overwritten.CloseGap(0, 1);
    expectNulAt(overwritten, 0);
    overwritten.OpenGap(0, 2);
    overwritten.Overwrite(0, {"ab"});
    expectNulAt(overwritten, 2);

    NkDtString_Imp replaced("a.b", 3, 3);
    const INT hit = 1;
    replaced.Replace(&hit, 1, 1, 1, piece, nkdt::TextSearch("."));
    expectNulAt(replaced, 2);
    EXPECT_TRUE(replaced.Equals(NkDtString_Imp("ax", 2, 2)));
}

// --- Memory failure ---------------------------------------------------------------------------

TEST(StrAlloc, GivesTheOldBufferUpWhenMemoryIsExhausted) {
    const memorytest::Pool off(false);
    for (const char* const text : {"", "abc", kLong}) {
        NkDtString_Imp record(text, NkDtStrLenAuto, NkDtStrLenAuto);
        ErrorPtr error;
        {
            const memorytest::Requests fails(1);
            error = errorOf([&] { record.StrAlloc("something else", 14, 30); });
        }
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->GetErrorNumber(), ulNkEhKeinSpeicher);
        EXPECT_NE(std::strstr(error->GetFunctionText(), ": 31"), nullptr);  // with the terminator
        EXPECT_EQ(shapeOf(record), "'' 0/0");
        EXPECT_EQ(record.Text(), NkDtString_Imp().Text());
        record.StrAlloc("again", 5);
        EXPECT_EQ(shapeOf(record), "'again' 5/5");
    }
}

TEST(StrRealloc, GivesTheOldBufferUpWhenMemoryIsExhausted) {
    const memorytest::Pool off(false);
    for (const char* const text : {"", "abc", kLong}) {
        for (const INT alloc : {50, 5}) {
            NkDtString_Imp record(text, NkDtStrLenAuto, NkDtStrLenAuto);
            ErrorPtr error;
            {
                const memorytest::Requests fails(1);
                error = errorOf([&] { record.StrRealloc(alloc); });
            }
            if (error == nullptr) continue;  // a block of the pool is as large as another
            EXPECT_EQ(error->GetErrorNumber(), ulNkEhKeinSpeicher);
            EXPECT_NE(std::strstr(error->GetFunctionText(), std::to_string(alloc + 1).c_str()), nullptr);
            EXPECT_EQ(shapeOf(record), "'' 0/0");
            EXPECT_EQ(record.Text(), NkDtString_Imp().Text());
        }
    }
}

}  // namespace
