#include <nkfw/Cp1252.h>

#include <set>

#include <gtest/gtest.h>

namespace {

using nkfw::cp1252FromUnicode;
using nkfw::unicodeFromCp1252;

// The characters of 0x80 to 0x9F as a person reads them; the five that the page leaves open are control
// characters.
constexpr char16_t upper[] =
    u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F"
    u"\u0090‘’“”•–—˜™š›œ\u009DžŸ";
static_assert(sizeof(upper) / sizeof(upper[0]) == 33);

TEST(Cp1252, TheBytes80To9FAreTheCharactersOfThePage) {
    for (unsigned i = 0; i < 32; ++i)
        EXPECT_EQ(unicodeFromCp1252(static_cast<unsigned char>(0x80 + i)), upper[i]) << "byte " << 0x80 + i;
}

TEST(Cp1252, AllOtherBytesAreTheCharacterOfTheSameNumber) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (byte < 0x80 || byte > 0x9F) {
            EXPECT_EQ(unicodeFromCp1252(static_cast<unsigned char>(byte)), byte);
        }
    }
}

TEST(Cp1252, EveryByteComesBackFromItsCharacter) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(cp1252FromUnicode(unicodeFromCp1252(static_cast<unsigned char>(byte))), byte);
}

TEST(Cp1252, NoOtherCharacterHasAByte) {
    std::set<char32_t> page;
    for (unsigned byte = 0; byte < 256; ++byte)
        page.insert(unicodeFromCp1252(static_cast<unsigned char>(byte)));
    ASSERT_EQ(page.size(), 256U);
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (page.count(character) == 0 && cp1252FromUnicode(character) != -1) {
            ADD_FAILURE() << "a byte for the character " << static_cast<unsigned>(character);
        }
    }
}

}  // namespace
