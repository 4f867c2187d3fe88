#include <algorithm>
#include <iterator>
#include <string_view>

#include "nkcp/CodePage.h"
#include "nkfw/Cp1252.h"

namespace nkcp {

namespace {

// Latin Extended-A, U+0100 to U+017F: the base letters. "_" stands for ligatures and for what the page has
// itself.
constexpr char32_t latinExtendedFirst = 0x100;
constexpr std::string_view latinExtendedLetters =
    "AaAaAaCcCcCcCcDd"   // U+0100
    "DdEeEeEeEeEeGgGg"   // U+0110
    "GgGgHhHhIiIiIiIi"   // U+0120
    "Ii__JjKkkLlLlLlL"   // U+0130
    "lLlNnNnNnnNnOoOo"   // U+0140
    "Oo__RrRrRrSsSsSs"   // U+0150
    "__TtTtTtUuUuUuUu"   // U+0160
    "UuUuWwYy_ZzZz__s";  // U+0170
static_assert(latinExtendedLetters.size() == 0x80);

// A range of characters that look like one byte, or, when it counts, like the bytes from that one on.
struct LookAlike {
    char32_t first;
    char32_t last;
    unsigned char byte;
    bool counts = false;
};

constexpr LookAlike lookAlikes[] = {
    {0x0218, 0x0218, 'S'},        // S, s, T, t with comma below
    {0x0219, 0x0219, 's'},        //
    {0x021A, 0x021A, 'T'},        //
    {0x021B, 0x021B, 't'},        //
    {0x02B9, 0x02B9, '\''},       // modifier prime
    {0x02BA, 0x02BA, '"'},        // modifier double prime
    {0x02BB, 0x02BB, 0x91},       // modifier turned comma
    {0x02BC, 0x02BC, 0x92},       // modifier apostrophe
    {0x03B2, 0x03B2, 0xDF},       // small beta
    {0x03BC, 0x03BC, 0xB5},       // small mu
    {0x1E9E, 0x1E9E, 0xDF},       // capital sharp s
    {0x2000, 0x200A, ' '},        // typographic blanks
    {0x2010, 0x2011, '-'},        // hyphens
    {0x2012, 0x2012, 0x96},       // figure dash
    {0x2015, 0x2015, 0x97},       // horizontal bar
    {0x201B, 0x201B, 0x91},       // reversed single quotation mark
    {0x201F, 0x201F, 0x93},       // reversed double quotation mark
    {0x2024, 0x2024, '.'},        // one dot leader
    {0x2027, 0x2027, 0xB7},       // hyphenation point
    {0x202F, 0x202F, 0xA0},       // narrow no-break space
    {0x2032, 0x2032, '\''},       // prime
    {0x2033, 0x2033, '"'},        // double prime
    {0x2035, 0x2035, '`'},        // reversed prime
    {0x2044, 0x2044, '/'},        // fraction slash
    {0x205F, 0x205F, ' '},        // mathematical space
    {0x2070, 0x2070, '0'},        // superscript digits
    {0x2074, 0x2079, '4', true},  //
    {0x2080, 0x2089, '0', true},  // subscript digits
    {0x2113, 0x2113, 'l'},        // litre
    {0x212A, 0x212A, 'K'},        // kelvin
    {0x212B, 0x212B, 0xC5},       // angstrom
    {0x2212, 0x2212, '-'},        // minus
    {0x2215, 0x2215, '/'},        // division slash
    {0x2217, 0x2217, '*'},        // asterisk operator
    {0x2219, 0x2219, 0xB7},       // bullet operator
    {0x22C5, 0x22C5, 0xB7},       // dot operator
    {0x25CF, 0x25CF, 0x95},       // black circle
    {0x3000, 0x3000, ' '},        // ideographic space
    {0xFF01, 0xFF5E, '!', true},  // full-width forms of ASCII
};

constexpr bool isBefore(const LookAlike& entry, char32_t character) noexcept {
    return entry.last < character;
}

static_assert(std::is_sorted(std::begin(lookAlikes), std::end(lookAlikes),
                             [](const LookAlike& a, const LookAlike& b) { return a.last < b.first; }));

}  // namespace

unsigned char bestFitByte(char32_t character) noexcept {
    const int own = nkfw::cp1252FromUnicode(character);
    if (own >= 0) return static_cast<unsigned char>(own);
    if (character >= latinExtendedFirst && character < latinExtendedFirst + latinExtendedLetters.size()) {
        return static_cast<unsigned char>(latinExtendedLetters[character - latinExtendedFirst]);
    }
    const LookAlike* const found =
        std::lower_bound(std::begin(lookAlikes), std::end(lookAlikes), character, isBefore);
    if (found == std::end(lookAlikes) || character < found->first) return '_';
    return static_cast<unsigned char>(found->counts ? found->byte + (character - found->first) : found->byte);
}

}  // namespace nkcp
