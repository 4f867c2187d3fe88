#include "Literal1252.h"

#include <string_view>

#include <gtest/gtest.h>

namespace {

using namespace nkfw::literals;

struct Row {
    const char* literal;
    std::string_view bytes;
};

TEST(Literal1252, HoldsOneByteACharacter) {
    using namespace std::string_view_literals;
    const Row table[] = {
        {""_cp1252, ""sv},
        {"abc XYZ 09 ~"_cp1252, "abc XYZ 09 ~"sv},
        {"ÄÖÜäöüß"_cp1252, "\xC4\xD6\xDC\xE4\xF6\xFC\xDF"sv},
        {"Ungültiger Stringindex"_cp1252, "Ung\xFCltiger Stringindex"sv},
        {"€"_cp1252, "\x80"sv},
        {"„“‚‘’–—…™ŠšŽžŸ"_cp1252, "\x84\x93\x82\x91\x92\x96\x97\x85\x99\x8A\x9A\x8E\x9E\x9F"sv},
        {"\u00A0ÿ"_cp1252, "\xA0\xFF"sv},
    };
    for (const Row& row : table)
        EXPECT_EQ(std::string_view(row.literal), row.bytes);
}

TEST(Literal1252, KeepsWhatStandsBehindANulByte) {
    using namespace std::string_view_literals;
    EXPECT_EQ(std::string_view("ä\0ö"_cp1252, 4), "\xE4\0\xF6\0"sv);
}

TEST(Literal1252, IsOneObjectWithStaticLifetimeForOneText) {
    constexpr const char* text = "Ungültig"_cp1252;
    EXPECT_EQ(text, "Ungültig"_cp1252);
    static_assert(text[3] == '\xFC' && text[8] == '\0');
}

}  // namespace
