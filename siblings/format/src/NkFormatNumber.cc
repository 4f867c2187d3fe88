// Numbers: whole, decimal and double. All are laid out from, and read into, the same decimal digits.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "Literal1252.h"
#include "NkFormatError.h"
#include "NkFormatReader.h"
#include "nkfo/NkFormat.h"
#include "nkfw/Exception.h"

using namespace nkfw::literals;
using nkfo::NumberSettings;
using nkfo::Origin;
using nkfo::TextReader;

namespace {

constexpr LPCTSTR sourceFile = ".\\NkFormatNumber.cc";
constexpr Origin formatLong = {sourceFile, "FormatLong(LONG)"};
constexpr Origin parseLong = {sourceFile, "ParseLong(LPCTSTR)"};
constexpr Origin formatShort = {sourceFile, "FormatShort(SHORT)"};
constexpr Origin parseShort = {sourceFile, "ParseShort(LPCTSTR)"};
constexpr Origin formatDecimalText = {sourceFile, "FormatDecimalText(string_view)"};
constexpr Origin parseDecimalText = {sourceFile, "ParseDecimalText(LPCTSTR)"};
constexpr Origin formatDouble = {sourceFile, "FormatDouble(double)"};
constexpr Origin parseDouble = {sourceFile, "ParseDouble(LPCTSTR)"};

constexpr std::size_t longestText = 2147483646;  // what a CString holds
constexpr ULONG unlimited = 2147483647;

constexpr std::size_t limitOf(ULONG most) noexcept {
    return most >= unlimited ? std::numeric_limits<std::size_t>::max() : most;
}

bool allZeros(std::string_view digits) noexcept {
    return digits.find_first_not_of('0') == std::string_view::npos;
}

std::string_view withoutLeadingZeros(std::string_view digits) noexcept {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

std::string_view withoutTrailingZeros(std::string_view digits) noexcept {
    return digits.substr(0, digits.find_last_not_of('0') + 1);
}

/// Room for digits: on the stack as long as they fit there, which every double does.
class DigitRoom {
  public:
    char* reserve(std::size_t count) {
        if (count <= sizeof m_stack) return m_stack;
        if (count > longestText) CMemoryException::Throw();
        return m_heap.GetBuffer(static_cast<INT>(count));
    }

  private:
    char m_stack[700];
    CString m_heap;
};

// ---- Writing ----

/// A number to be written: at least one whole digit, none superfluous.
struct PlainNumber {
    bool negative;
    std::string_view whole;
    std::string_view places;
};

[[gnu::cold, noreturn]] void refuseValue(const Origin& origin, const PlainNumber& number,
                                         std::string_view reason) {
    nkfo::Message value;
    if (number.negative) value << '-';
    value << number.whole.substr(0, 60);
    if (!number.places.empty()) value << '.' << number.places.substr(0, 60);
    nkfo::refuse(origin, NkFoFehlerWert, value.text(), 0, reason);
}

/// Cuts the places to at most that many; true when the rest, half away from zero, rounds up.
bool cutPlaces(PlainNumber& number, std::size_t most) {
    if (number.places.size() <= most) return false;
    const bool up = number.places[most] >= '5';
    number.places = number.places.substr(0, most);
    return up;
}

/// Adds one to the last digit; @p room holds the digits afterwards.
void roundUp(PlainNumber& number, DigitRoom& room) {
    const std::size_t whole = number.whole.size();
    const std::size_t places = number.places.size();
    char* const digits = room.reserve(1 + whole + places);
    digits[0] = '0';
    number.whole.copy(digits + 1, whole);
    number.places.copy(digits + 1 + whole, places);
    char* digit = digits + whole + places;
    for (; *digit == '9'; --digit)
        *digit = '0';
    ++*digit;
    const std::size_t carried = digits[0] == '0' ? 0 : 1;
    number.whole = {digits + 1 - carried, whole + carried};
    number.places = {digits + 1 + whole, places};
}

/// Writes @p zeros zeros and the digits, with a separator (NUL: none) in front of every third from the right.
char* writeWhole(char* out, std::size_t zeros, std::string_view digits, char separator) noexcept {
    if (separator == '\0') {
        out = std::fill_n(out, zeros, '0');
        return std::copy(digits.begin(), digits.end(), out);
    }
    const std::size_t count = zeros + digits.size();
    std::size_t toSeparator = (count - 1) % 3 + 1;
    for (std::size_t i = 0; i < count; ++i) {
        if (toSeparator == 0) {
            *out++ = separator;
            toSeparator = 3;
        }
        --toSeparator;
        *out++ = i < zeros ? '0' : digits[i - zeros];
    }
    return out;
}

/// The number, rounded already, as the settings want it, in one block of exactly its length.
CString layOutRounded(const Origin& origin, const NumberSettings& settings, PlainNumber number) {
    const bool zero = allZeros(number.whole) && allZeros(number.places);
    number.negative = number.negative && !zero;
    if (number.negative && settings.sign.place == FormatVorzeichenOhne) {
        refuseValue(origin, number, "negativer Wert nicht erlaubt");
    }

    const char sign = nkfo::signOf(settings.sign, number.negative, zero);
    const bool signInFront = sign != '\0' && settings.sign.place == FormatVorzeichenVorn;
    const std::size_t digits = number.whole.size();
    const std::size_t fills = settings.fewest > digits ? settings.fewest - digits : 0;
    const std::size_t before = (signInFront ? 1 : 0) + fills + digits;
    if (before > limitOf(settings.most)) {
        nkfo::Message reason;
        reason << "mehr als " << settings.most << " Zeichen vor dem Dezimaltrenner";
        refuseValue(origin, number, reason.text());
    }
    const bool zeroFill = settings.fill == '0';
    const std::size_t grouped = settings.thousands == '\0' ? 0 : ((zeroFill ? fills : 0) + digits - 1) / 3;

    const std::size_t places = number.places.size();
    std::size_t fillsBehind = settings.fewestPlaces > places ? settings.fewestPlaces - places : 0;
    const bool decimal = places > 0 || (fillsBehind > 0 && settings.fillPlaces == '0');
    if (!decimal && fillsBehind > 0) ++fillsBehind;

    const std::size_t total =
        before + grouped + (decimal ? 1 : 0) + places + fillsBehind + (sign != '\0' && !signInFront ? 1 : 0);
    if (total > longestText) refuseValue(origin, number, "zu lang");

    CString result;
    char* out = result.GetBuffer(static_cast<INT>(total));
    if (!zeroFill) out = std::fill_n(out, fills, settings.fill);
    if (signInFront) *out++ = sign;
    out = writeWhole(out, zeroFill ? fills : 0, number.whole, settings.thousands);
    if (decimal) *out++ = settings.decimal;
    out = std::copy(number.places.begin(), number.places.end(), out);
    out = std::fill_n(out, fillsBehind, settings.fillPlaces);
    if (sign != '\0' && !signInFront) *out = sign;
    result.ReleaseBuffer(static_cast<INT>(total));
    return result;
}

CString layOut(const Origin& origin, const NumberSettings& settings, PlainNumber number) {
    if (!cutPlaces(number, limitOf(settings.mostPlaces))) return layOutRounded(origin, settings, number);
    DigitRoom room;
    roundUp(number, room);
    return layOutRounded(origin, settings, number);
}

CString writeLong(const Origin& origin, const NumberSettings& settings, LONG value) {
    char digits[12];
    const ULONG magnitude = value < 0 ? 0U - static_cast<ULONG>(value) : static_cast<ULONG>(value);
    const char* const end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
    return layOut(origin, settings, {value < 0, {digits, static_cast<std::size_t>(end - digits)}, {}});
}

/// Plain decimal text taken apart.
PlainNumber plainNumber(std::string_view plain) {
    const bool negative = !plain.empty() && plain[0] == '-';
    const std::size_t start = negative ? 1 : 0;
    const std::size_t point = std::min(plain.find('.'), plain.size());
    const std::string_view whole = plain.substr(start, point - start);
    const std::string_view places = plain.substr(std::min(point + 1, plain.size()));
    for (const std::string_view part : {whole, places}) {
        const auto bad = std::find_if_not(part.begin(), part.end(), nkfo::isDigit);
        if (bad == part.end()) continue;
        const auto position = static_cast<std::size_t>(&*bad - plain.data()) + 1;
        nkfo::refuse(formatDecimalText, NkFoFehlerWert, plain, position, "Ziffer erwartet");
    }
    if (whole.empty() && places.empty()) {
        nkfo::refuse(formatDecimalText, NkFoFehlerWert, plain, plain.size() + 1, "Ziffer erwartet");
    }
    const std::string_view significant = withoutLeadingZeros(whole);
    return {negative, significant.empty() ? "0" : significant, places};
}

/// The shortest decimal of a finite double, with its digits written out in @p room.
PlainNumber shortestDecimal(double value, DigitRoom& room) {
    char text[32];  // d.ddde-ddd
    const char* const end =
        std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific).ptr;
    const char* const exponentMark = std::find(text, text + sizeof text, 'e');
    int exponent = 0;
    std::from_chars(exponentMark + (exponentMark[1] == '+' ? 2 : 1), end, exponent);

    char digits[24];
    std::size_t count = 0;
    for (const char* p = text; p != exponentMark; ++p) {
        if (*p != '.') digits[count++] = *p;
    }
    const bool negative = std::signbit(value);
    if (exponent < 0) {  // 0.00ddd
        const auto zeros = static_cast<std::size_t>(-exponent - 1);
        char* const places = room.reserve(zeros + count);
        std::copy_n(digits, count, std::fill_n(places, zeros, '0'));
        return {negative, "0", {places, zeros + count}};
    }
    const std::size_t whole = static_cast<std::size_t>(exponent) + 1;
    const std::size_t length = std::max(whole, count);
    char* const out = room.reserve(length);
    std::fill(std::copy_n(digits, count, out), out + length, '0');
    return {negative, {out, whole}, {out + whole, length - whole}};
}

// ---- Reading ----

/// A number as it stands in the text.
struct ReadNumber {
    bool negative;
    std::string_view whole;  // with its thousands separators
    std::size_t digits;      // of the whole part, zeros in front included
    std::string_view places;
};

/// Reads the digits before the decimal separator: thousands separators every three digits or not at all.
void readWhole(TextReader& reader, char separator, ReadNumber& number) {
    const char* const start = reader.pos();
    number.digits = reader.takeDigits().size();
    if (number.digits == 0) reader.refuse("Ziffer erwartet");
    if (separator != '\0' && reader.peek() == separator) {
        if (number.digits > 3) reader.refuse("Tausendertrenner an falscher Stelle");
        while (reader.take(separator)) {
            if (reader.takeDigits(3).size() != 3)
                reader.refuse("drei Ziffern nach dem Tausendertrenner erwartet");
            if (nkfo::isDigit(reader.peek())) reader.refuse("Tausendertrenner erwartet");
            number.digits += 3;
        }
    }
    number.whole = {start, static_cast<std::size_t>(reader.pos() - start)};
}

/// Reads the places and their separator, if there are any.
void readPlaces(TextReader& reader, const NumberSettings& settings, ReadNumber& number) {
    number.places = {};
    if (settings.decimal == '\0' || !reader.take(settings.decimal)) return;
    number.places = reader.takeDigits();
    if (number.places.empty()) reader.refuse("Ziffer erwartet");
    if (number.places.size() <= limitOf(settings.mostPlaces)) return;
    nkfo::Message reason;
    reason << "höchstens "_cp1252 << settings.mostPlaces << " Nachkommastellen";
    reader.refuseAt(number.places.data() + settings.mostPlaces, reason.text());
}

/// Takes the fill characters off the end; they count like the places that they stand for.
std::size_t dropFillBehind(TextReader& reader, const NumberSettings& settings) {
    const bool filled = settings.fewestPlaces > 0 && settings.fillPlaces != '0';
    return filled ? reader.dropFill(settings.fillPlaces) : 0;
}

void checkFillBehind(const TextReader& reader, const NumberSettings& settings, const ReadNumber& number,
                     std::size_t fills) {
    // Without places one more fill character stands for the separator.
    const std::size_t stood = number.places.empty() ? (fills > 0 ? fills - 1 : 0) : fills;
    const std::size_t most = limitOf(settings.mostPlaces);
    if (stood > most || number.places.size() > most - stood) reader.refuse("zu viele Füllzeichen"_cp1252);
}

ReadNumber readNumber(TextReader& reader, const NumberSettings& settings) {
    ReadNumber number{};
    char sign = reader.dropSign(settings.sign);
    const std::size_t fillsBehind = dropFillBehind(reader, settings);
    const char* const start = reader.pos();
    std::size_t before = settings.fewest > 0 && settings.fill != '0' ? reader.takeFill(settings.fill) : 0;
    if (settings.sign.place == FormatVorzeichenVorn) {
        sign = reader.takeSign(settings.sign);
        if (sign != '\0') ++before;
    }
    number.negative = sign == '-';
    readWhole(reader, settings.thousands, number);
    readPlaces(reader, settings, number);
    reader.expectEnd();
    checkFillBehind(reader, settings, number, fillsBehind);
    if (before + number.digits > limitOf(settings.most)) {
        nkfo::Message reason;
        reason << "mehr als " << settings.most << " Zeichen vor dem Dezimaltrenner";
        reader.refuseAt(start, reason.text());
    }
    if (number.negative)
        number.negative =
            number.whole.find_first_of("123456789") != std::string_view::npos || !allZeros(number.places);
    return number;
}

/// Copies the digits of the whole part without separators and without zeros in front.
char* copyWhole(char* out, const ReadNumber& number) noexcept {
    const char* const start = out;
    for (const char c : number.whole) {
        if (nkfo::isDigit(c) && (c != '0' || out != start)) *out++ = c;
    }
    return out;
}

LONG readLong(const Origin& origin, const NumberSettings& settings, LPCTSTR pszText, LONG smallest,
              LONG largest) {
    TextReader reader(origin, pszText);
    const ReadNumber number = readNumber(reader, settings);
    if (!allZeros(number.places)) reader.refuseAt(number.places.data(), "ganze Zahl erwartet");
    const LONGLONG limit = number.negative ? -LONGLONG{smallest} : largest;
    LONGLONG value = 0;
    for (const char c : number.whole) {
        if (!nkfo::isDigit(c)) continue;
        value = value * 10 + (c - '0');
        if (value > limit) reader.refuseAt(number.whole.data(), "außerhalb des Wertebereichs"_cp1252);
    }
    return static_cast<LONG>(number.negative ? -value : value);
}

}  // namespace

// ---- The operations ----

CString NkFormat::FormatLong(LONG nValue) const {
    return writeLong(formatLong, NumberOf(formatLong), nValue);
}

LONG NkFormat::ParseLong(LPCTSTR pszText) const {
    using Limits = std::numeric_limits<LONG>;
    return readLong(parseLong, NumberOf(parseLong), pszText, Limits::min(), Limits::max());
}

CString NkFormat::FormatShort(SHORT nValue) const {
    return writeLong(formatShort, NumberOf(formatShort), nValue);
}

SHORT NkFormat::ParseShort(LPCTSTR pszText) const {
    using Limits = std::numeric_limits<SHORT>;
    return static_cast<SHORT>(
        readLong(parseShort, NumberOf(parseShort), pszText, Limits::min(), Limits::max()));
}

CString NkFormat::FormatDecimalText(std::string_view plain) const {
    const NumberSettings& settings = NumberOf(formatDecimalText);
    return layOut(formatDecimalText, settings, plainNumber(plain));
}

CString NkFormat::ParseDecimalText(LPCTSTR pszText) const {
    const NumberSettings& settings = NumberOf(parseDecimalText);
    TextReader reader(parseDecimalText, pszText);
    const ReadNumber number = readNumber(reader, settings);
    CString result;
    char* const start = result.GetBuffer(static_cast<INT>(number.digits + number.places.size() + 2));
    char* out = start;
    if (number.negative) *out++ = '-';
    char* const whole = out;
    out = copyWhole(out, number);
    if (out == whole) *out++ = '0';
    if (!number.places.empty()) {
        *out++ = '.';
        out = std::copy(number.places.begin(), number.places.end(), out);
    }
    result.ReleaseBuffer(static_cast<INT>(out - start));
    return result;
}

CString NkFormat::FormatDouble(double dValue) const {
    const NumberSettings& settings = NumberOf(formatDouble);
    if (!std::isfinite(dValue)) {
        const LPCTSTR pszValue = std::isnan(dValue) ? "NaN" : dValue < 0 ? "-unendlich" : "unendlich";
        nkfo::refuse(formatDouble, NkFoFehlerWert, pszValue, 0, "keine Zahl");
    }
    DigitRoom room;
    return layOut(formatDouble, settings, shortestDecimal(dValue, room));
}

double NkFormat::ParseDouble(LPCTSTR pszText) const {
    const NumberSettings& settings = NumberOf(parseDouble);
    TextReader reader(parseDouble, pszText);
    const ReadNumber number = readNumber(reader, settings);
    const std::string_view places = withoutTrailingZeros(number.places);
    DigitRoom room;
    char* const start = room.reserve(number.digits + places.size() + 2);
    char* out = copyWhole(start, number);
    if (out == start) *out++ = '0';
    *out++ = '.';
    out = std::copy(places.begin(), places.end(), out);
    double value = 0;
    if (std::from_chars(start, out, value).ec != std::errc()) {
        reader.refuseAt(number.whole.data(), "außerhalb des Wertebereichs"_cp1252);
    }
    return number.negative ? -value : value;
}
