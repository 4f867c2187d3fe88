#include <nkcp/CodePage.h>
#include <nkfw/Cp1252.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using nkcp::Conversion;
using nkcp::Unmappable;
using namespace std::string_literals;

// The bytes of the general UTF-8 scheme, whether the character is allowed or not.
std::string encodeUtf8(char32_t character, unsigned units) {
    if (units == 1) return {static_cast<char>(character)};
    const unsigned lead = (0xFF00U >> units) & 0xFFU;
    std::string bytes = {static_cast<char>(lead | (character >> (6 * (units - 1))))};
    for (unsigned left = units - 1; left > 0; --left) {
        bytes.push_back(static_cast<char>(0x80U | ((character >> (6 * (left - 1))) & 0x3FU)));
    }
    return bytes;
}

std::string encodeUtf8(char32_t character) {
    return encodeUtf8(character, character < 0x80      ? 1U
                                 : character < 0x800   ? 2U
                                 : character < 0x10000 ? 3U
                                                       : 4U);
}

std::u16string encodeUtf16(char32_t character) {
    if (character < 0x10000) return {static_cast<char16_t>(character)};
    return {static_cast<char16_t>(0xD7C0U + (character >> 10U)),
            static_cast<char16_t>(0xDC00U + (character & 0x3FFU))};
}

// Every character of the first plane, and some of each of the others.
std::u32string manyCharacters() {
    std::u32string characters;
    for (char32_t character = 0; character <= 0x10FFFF; character += character < 0xFFFF ? 1U : 1021U) {
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        if (!surrogate) characters.push_back(character);
    }
    characters.push_back(0x10FFFF);
    return characters;
}

std::string allBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    return bytes;
}

void expectRefused(const Conversion& result, std::size_t position, char32_t character) {
    EXPECT_FALSE(result.complete);
    EXPECT_EQ(result.position, position);
    EXPECT_EQ(result.character, character);
}

TEST(Utf8, EveryByteComesBack) {
    std::string utf8;
    nkcp::appendUtf8FromCp1252(allBytes(), utf8);
    std::string bytes;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf8(utf8, bytes).complete);
    EXPECT_EQ(bytes, allBytes());
}

TEST(Utf16, EveryByteComesBack) {
    std::u16string utf16;
    nkcp::appendUtf16FromCp1252(allBytes(), utf16);
    std::string bytes;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf16(utf16, bytes).complete);
    EXPECT_EQ(bytes, allBytes());
}

TEST(Unicode, KnowsTheCharacters) {
    const std::string cp1252 = "M\xFCller: 5 \x80, \x84gut\x93 \x81 \x9D";
    const std::string utf8 = "M\xC3\xBCller: 5 \xE2\x82\xAC, \xE2\x80\x9Egut\xE2\x80\x9C \xC2\x81 \xC2\x9D";
    const std::u16string utf16 = u"M\u00FCller: 5 \u20AC, \u201Egut\u201C \x81 \x9D";

    std::string toUtf8;
    nkcp::appendUtf8FromCp1252(cp1252, toUtf8);
    EXPECT_EQ(toUtf8, utf8);
    std::u16string toUtf16;
    nkcp::appendUtf16FromCp1252(cp1252, toUtf16);
    EXPECT_EQ(toUtf16, utf16);
    std::string fromUtf8;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf8(utf8, fromUtf8).complete);
    EXPECT_EQ(fromUtf8, cp1252);
    std::string fromUtf16;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf16(utf16, fromUtf16).complete);
    EXPECT_EQ(fromUtf16, cp1252);
}

TEST(Unicode, ConversionsAppend) {
    std::string bytes = "a";
    nkcp::appendCp1252FromUtf8("\xC3\xBC", bytes);
    nkcp::appendCp1252FromUtf16(u"\u20AC", bytes);
    EXPECT_EQ(bytes, "a\xFC\x80");
    std::string utf8 = "a";
    nkcp::appendUtf8FromCp1252("\xFC", utf8);
    EXPECT_EQ(utf8, "a\xC3\xBC");
    std::u16string utf16 = u"a";
    nkcp::appendUtf16FromCp1252("\xFC", utf16);
    EXPECT_EQ(utf16, u"a\u00FC");
}

TEST(Unicode, EmptyTextsAreComplete) {
    std::string bytes;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf8({}, bytes).complete);
    EXPECT_TRUE(nkcp::appendCp1252FromUtf16({}, bytes).complete);
    EXPECT_EQ(bytes, "");
    std::string utf8;
    nkcp::appendUtf8FromCp1252({}, utf8);
    EXPECT_EQ(utf8, "");
    std::u16string utf16;
    nkcp::appendUtf16FromCp1252({}, utf16);
    EXPECT_EQ(utf16, u"");
}

TEST(Unicode, NulIsACharacterLikeOthers) {
    std::string bytes;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf8("a\0b"s, bytes).complete);
    EXPECT_EQ(bytes, "a\0b"s);
}

TEST(Unicode, RefusesEveryCharacterThatThePageDoesNotHave) {
    std::string bytes;
    for (const char32_t character : manyCharacters()) {
        const int byte = nkfw::cp1252FromUnicode(character);
        for (const bool utf8 : {true, false}) {
            bytes.clear();
            const Conversion result = utf8 ? nkcp::appendCp1252FromUtf8(encodeUtf8(character), bytes)
                                           : nkcp::appendCp1252FromUtf16(encodeUtf16(character), bytes);
            ASSERT_EQ(result.complete, byte >= 0) << std::hex << static_cast<unsigned>(character);
            if (byte >= 0) {
                ASSERT_EQ(bytes, std::string(1, static_cast<char>(byte)));
            } else {
                ASSERT_EQ(bytes, "");
                ASSERT_EQ(result.position, 0U);
                ASSERT_EQ(result.character, character);
            }
        }
    }
}

TEST(Unicode, BestFitTakesEveryCharacter) {
    std::string bytes;
    for (const char32_t character : manyCharacters()) {
        const std::string expected(1, static_cast<char>(nkcp::bestFitByte(character)));
        bytes.clear();
        ASSERT_TRUE(nkcp::appendCp1252FromUtf8(encodeUtf8(character), bytes, Unmappable::bestFit).complete);
        ASSERT_EQ(bytes, expected) << std::hex << static_cast<unsigned>(character);
        bytes.clear();
        ASSERT_TRUE(nkcp::appendCp1252FromUtf16(encodeUtf16(character), bytes, Unmappable::bestFit).complete);
        ASSERT_EQ(bytes, expected) << std::hex << static_cast<unsigned>(character);
    }
}

TEST(Unicode, ARefusalTellsWhereAndKeepsWhatCameBefore) {
    std::string bytes = "x";
    expectRefused(nkcp::appendCp1252FromUtf8("a\xC3\xBC\xC5\x81z", bytes), 3, 0x141);
    EXPECT_EQ(bytes, "xa\xFC");
    bytes = "x";
    expectRefused(nkcp::appendCp1252FromUtf16(u"a\u00FC\u0141z", bytes), 2, 0x141);
    EXPECT_EQ(bytes, "xa\xFC");
    bytes = "x";
    expectRefused(nkcp::appendCp1252FromUtf16(u"\u00FC\U0001F600z", bytes), 1, 0x1F600);
    EXPECT_EQ(bytes, "x\xFC");
}

TEST(Utf8, MalformedBytesAreRefusedWhateverTheOption) {
    std::vector<std::string> cases = {"\x80",
                                      "\xBF",
                                      "\xC3",
                                      "\xC3(",
                                      "\xC3\xC3",
                                      "\xE2\x82",
                                      "\xE2\x82(",
                                      "\xE2(\xAC",
                                      "\xF0\x9F\x98",
                                      "\xF0\x9F\x98(",
                                      "\xF8\x88\x80\x80",
                                      "\xFC\x84\x80\x80\x80\x80",
                                      "\xFE",
                                      "\xFF",
                                      "\xF5\x80\x80\x80"};
    for (const char32_t surrogate : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU})
        cases.push_back(encodeUtf8(surrogate));
    for (const char32_t tooLarge : {0x110000U, 0x13FFFFU, 0x1FFFFFU})
        cases.push_back(encodeUtf8(tooLarge, 4));
    // Overlong: more bytes than the character needs.
    for (const char32_t character : {0x00U, 0x27U, 0x7FU}) {
        for (const unsigned units : {2U, 3U, 4U})
            cases.push_back(encodeUtf8(character, units));
    }
    for (const char32_t character : {0x80U, 0xFCU, 0x7FFU}) {
        for (const unsigned units : {3U, 4U})
            cases.push_back(encodeUtf8(character, units));
    }
    for (const char32_t character : {0x800U, 0x20ACU, 0xFFFFU})
        cases.push_back(encodeUtf8(character, 4));

    for (const std::string& malformed : cases) {
        for (const Unmappable option : {Unmappable::refuse, Unmappable::bestFit}) {
            SCOPED_TRACE(testing::PrintToString(malformed));
            std::string bytes;
            expectRefused(nkcp::appendCp1252FromUtf8("ab" + malformed, bytes, option), 2, 0xFFFD);
            EXPECT_EQ(bytes, "ab");
        }
    }
}

TEST(Utf8, ACharacterThatTheEndOfTheTextCutsIsMalformed) {
    for (const std::string whole : {"\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        for (std::size_t length = 1; length < whole.size(); ++length) {
            std::string bytes;
            expectRefused(nkcp::appendCp1252FromUtf8(std::string_view(whole).substr(0, length), bytes), 0,
                          0xFFFD);
        }
    }
}

TEST(Utf16, APairThatTheEndOfTheTextCutsIsMalformed) {
    std::string bytes;
    expectRefused(nkcp::appendCp1252FromUtf16(std::u16string_view(u"\U0001F600").substr(0, 1), bytes), 0,
                  0xFFFD);
}

TEST(Utf8, TheLastAllowedCharactersAreDecoded) {
    for (const char32_t character : {0xD7FFU, 0xE000U, 0xFFFDU, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string bytes;
        expectRefused(nkcp::appendCp1252FromUtf8(encodeUtf8(character), bytes), 0, character);
    }
}

TEST(Utf16, SurrogatesWithoutPartnersAreRefusedWhateverTheOption) {
    const std::u16string cases[] = {
        {0xD800}, {0xDFFF}, {0xD83D, u'x'}, {0xDC00, 0xD800}, {0xD83D, 0xD83D, 0xDE00}};
    for (const std::u16string& malformed : cases) {
        for (const Unmappable option : {Unmappable::refuse, Unmappable::bestFit}) {
            std::string bytes;
            expectRefused(nkcp::appendCp1252FromUtf16(u"ab" + malformed, bytes, option), 2, 0xFFFD);
            EXPECT_EQ(bytes, "ab");
        }
    }
}

TEST(Utf8, FindsACharacterBehindAsciiOfEveryLength) {
    for (std::size_t before = 0; before < 40; ++before) {
        for (const std::size_t after : {0U, 1U, 7U, 8U, 9U, 17U}) {
            const std::string cp1252 = std::string(before, 'x') + '\xE4' + std::string(after, 'y');
            std::string utf8;
            nkcp::appendUtf8FromCp1252(cp1252, utf8);
            EXPECT_EQ(utf8, std::string(before, 'x') + "\xC3\xA4" + std::string(after, 'y'));
            std::string bytes;
            EXPECT_TRUE(nkcp::appendCp1252FromUtf8(utf8, bytes).complete);
            EXPECT_EQ(bytes, cp1252);
        }
    }
}

TEST(Utf8InPlace, ConvertsInTheCallersBuffer) {
    std::string cp1252;
    for (int i = 0; i < 20; ++i)
        cp1252 +=
            "Stra\xDF"
            "e und \x80 \xFC\xE4" +
            std::string(static_cast<std::size_t>(i), 'x');
    std::string text;
    nkcp::appendUtf8FromCp1252(cp1252, text);
    std::size_t length = text.size();
    EXPECT_TRUE(nkcp::cp1252FromUtf8InPlace(text.data(), length).complete);
    EXPECT_EQ(std::string_view(text.data(), length), cp1252);
}

TEST(Utf8InPlace, TellsWhereItStopsAndHowMuchItConverted) {
    std::string text =
        "\xC3\xBC"
        "bc\xC5\x81"
        "d";
    std::size_t length = text.size();
    expectRefused(nkcp::cp1252FromUtf8InPlace(text.data(), length), 4, 0x141);
    EXPECT_EQ(std::string_view(text.data(), length),
              "\xFC"
              "bc");

    text =
        "\xC3\xBC"
        "bc\xC5\x81"
        "d";
    length = text.size();
    EXPECT_TRUE(nkcp::cp1252FromUtf8InPlace(text.data(), length, Unmappable::bestFit).complete);
    EXPECT_EQ(std::string_view(text.data(), length),
              "\xFC"
              "bcLd");
}

TEST(Utf8InPlace, AnEmptyTextStaysEmpty) {
    char text = 'x';
    std::size_t length = 0;
    EXPECT_TRUE(nkcp::cp1252FromUtf8InPlace(&text, length).complete);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(text, 'x');
}

TEST(BestFitByte, IsTheOwnByteWhereThePageHasTheCharacter) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(nkcp::bestFitByte(nkfw::unicodeFromCp1252(static_cast<unsigned char>(byte))), byte);
    }
}

TEST(BestFitByte, IsWhatLooksMostLikeTheCharacter) {
    struct Case {
        char32_t character;
        unsigned char byte;
    };
    const Case cases[] = {
        {U'Ā', 'A'},    {U'ą', 'a'},    {U'Ć', 'C'},    {U'č', 'c'},    {U'ď', 'd'},    {U'Đ', 'D'},
        {U'ę', 'e'},    {U'Ě', 'E'},    {U'ğ', 'g'},    {U'ħ', 'h'},    {U'İ', 'I'},    {U'ı', 'i'},
        {U'Ĳ', '_'},    {U'ĵ', 'j'},    {U'ķ', 'k'},    {U'Ł', 'L'},    {U'ł', 'l'},    {U'ľ', 'l'},
        {U'ń', 'n'},    {U'Ň', 'N'},    {U'ŉ', 'n'},    {U'Ŋ', 'N'},    {U'Ő', 'O'},    {U'ő', 'o'},
        {U'ř', 'r'},    {U'Ś', 'S'},    {U'ş', 's'},    {U'ţ', 't'},    {U'Ť', 'T'},    {U'ů', 'u'},
        {U'Ű', 'U'},    {U'ŵ', 'w'},    {U'Ŷ', 'Y'},    {U'ź', 'z'},    {U'Ż', 'Z'},    {U'ſ', 's'},
        {U'Ș', 'S'},    {U'ț', 't'},    {U'β', 0xDF},   {U'μ', 0xB5},   {U'ẞ', 0xDF},   {0x2000, ' '},
        {0x2009, ' '},  {0x200A, ' '},  {0x200B, '_'},  {0x2010, '-'},  {0x2011, '-'},  {0x2012, 0x96},
        {0x2015, 0x97}, {0x201B, 0x91}, {0x201F, 0x93}, {0x202F, 0xA0}, {0x2032, '\''}, {0x2033, '"'},
        {0x2044, '/'},  {0x2070, '0'},  {0x2074, '4'},  {0x2079, '9'},  {0x2080, '0'},  {0x2089, '9'},
        {0x208A, '_'},  {0x212B, 0xC5}, {0x2212, '-'},  {0x3000, ' '},  {0xFF01, '!'},  {0xFF11, '1'},
        {0xFF21, 'A'},  {0xFF5E, '~'},  {0xFF5F, '_'},  {0x80, '_'},    {0x4E2D, '_'},  {0x1F600, '_'},
        {0x10FFFF, '_'}};
    for (const Case& c : cases) {
        EXPECT_EQ(nkcp::bestFitByte(c.character), c.byte) << std::hex << static_cast<unsigned>(c.character);
    }
}

TEST(BestFitByte, GivesEveryLatinExtendedLetterALetterOfItsCase) {
    for (char32_t character = 0x100; character < 0x180; ++character) {
        const unsigned char byte = nkcp::bestFitByte(character);
        const bool ligature = character == 0x132 || character == 0x133;
        const bool own = nkfw::cp1252FromUnicode(character) >= 0;
        const bool letter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        EXPECT_TRUE(ligature ? byte == '_' : own || letter) << std::hex << static_cast<unsigned>(character);
    }
}

}  // namespace
