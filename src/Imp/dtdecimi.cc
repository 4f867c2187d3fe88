#include "Imp/dtdecimi.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "Raise.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\Imp\\dtdecimi.cc", "NkDtDecimal_Imp", operation};
}

constexpr std::size_t mostCharacters = 38;
constexpr std::size_t mostDigits = 28;

}  // namespace

// Handlers

void NkDtDecimal_Imp::raiseOverflow(Decimal96Operation) {
    static constexpr Origin origin = {"RWDecimal", "NkDtDecimal_Imp",
                                      "NkDtDecimalOverflowHandler(RWDecimal96OverflowErr&)"};
    raise(origin, NkDtErrDezimal);
}

void NkDtDecimal_Imp::acceptInexact(Decimal96Operation) {}

void NkDtDecimal_Imp::replaceHandlers() noexcept {
    setDecimal96OverflowHandler(&raiseOverflow);
    setDecimal96InexactHandler(&acceptInexact);
}

// Comparing

namespace {

/// Whether the mantissa can be multiplied by the power of ten that a negative scale stands for.
bool canBeComputedWith(const Decimal96& number) {
    if (number.scale() >= 0 || number.sign() == 0) return true;
    if (number.scale() < -Decimal96::maxScale) return false;
    const Decimal96 most = Decimal96::fromMantissa(0x7FFF'FFFF, 0xFFFF'FFFF'FFFF'FFFFU);
    const Decimal96 unit = Decimal96::fromMantissa(0, 1, static_cast<std::int16_t>(number.scale()));
    const Decimal96 digits = Decimal96::fromMantissa(number.mantissaHigh(), number.mantissaLow());
    return digits.abs() <= most.truncatedQuotient(unit);
}

bool haveSameParts(const Decimal96& a, const Decimal96& b) noexcept {
    return a.mantissaLow() == b.mantissaLow() && a.mantissaHigh() == b.mantissaHigh() &&
           a.scale() == b.scale() && a.state() == b.state();
}

}  // namespace

bool NkDtDecimal_Imp::differOutside(const Decimal96& a, const Decimal96& b) {
    return canBeComputedWith(a) && canBeComputedWith(b) ? a != b : !haveSameParts(a, b);
}

// From text

namespace {

constexpr Origin textOrigin = originOf("NkDtDecimal_Imp(LPCTSTR)");
constexpr Origin conversionOrigin = originOf("ConvAsciiToRW96(LPCTSTR)");

constexpr bool isDigit(char ch) noexcept {
    return ch >= '0' && ch <= '9';
}

bool areDigits(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), isDigit);
}

constexpr bool isSign(char ch) noexcept {
    return ch == '-' || ch == '+';
}

constexpr bool holds(std::string_view text, char ch) noexcept {
    return text.find(ch) != std::string_view::npos;
}

constexpr bool holdsTwoPoints(std::string_view text) noexcept {
    return text.find('.') != text.rfind('.');
}

/// Takes the sign in front off the text.
std::string_view takeSign(std::string_view& text) noexcept {
    const std::string_view sign = text.substr(0, !text.empty() && isSign(text.front()) ? 1 : 0);
    text.remove_prefix(sign.size());
    return sign;
}

std::string_view givenText(LPCTSTR pszText) {
    requireText(pszText, textOrigin);
    NkDtDecimal_Imp::setHandlers();
    return pszText;
}

/// The number of a text that is not empty, or was not before commas and blanks were left out.
Decimal96 converted(std::string_view text) {
    Decimal96 number;
    if (text.empty() || !Decimal96::parse(text, number)) raise(conversionOrigin, NkDtErrFormatUnzulaessig);
    return number;
}

/// Reads a text that needs no look at its characters one by one: it is too short to break a bound, nothing is
/// left out, and an empty one is 0.
bool isPlainNumber(std::string_view text, Decimal96& number) {
    return text.size() <= mostDigits && static_cast<bool>(Decimal96::parse(text, number));
}

/// The kept characters of a text.
class KeptText {
  public:
    /// @param sign stands in front, and is neither checked nor counted
    KeptText(std::string_view sign, std::string_view text) {
        append(sign);
        if (text.size() > mostCharacters) raise(textOrigin, NkDtErrEingabeZuLang);
        if (holdsTwoPoints(text)) raise(textOrigin, NkDtErrFormatUnzulaessig);
        for (const char ch : text) {
            if (ch == ',' || ch == ' ') continue;
            if (!isDigit(ch) && ch != '.' && !isSign(ch)) raise(textOrigin, NkDtErrFormatUnzulaessig);
            append({&ch, 1});
        }
        checkCount(text, view().substr(sign.size()));
    }

    std::string_view view() const noexcept { return {m_text.data(), m_length}; }

  private:
    void append(std::string_view text) noexcept {
        m_length += text.copy(m_text.data() + m_length, m_text.size() - m_length);
    }

    /// What is left out counts: the bound is for what was typed.
    static void checkCount(std::string_view given, std::string_view kept) {
        std::size_t count = given.size();
        if (holds(kept, '.')) --count;
        if (!kept.empty() && isSign(kept.front())) --count;
        const bool beginsWithZero = !kept.empty() && kept.front() == '0';
        if (count > mostDigits && !beginsWithZero) raise(textOrigin, NkDtErrEingabeZuLang);
    }

    std::array<char, 1 + mostCharacters> m_text;
    std::size_t m_length = 0;
};

/// Without one zero in front that another digit follows, be it behind the point.
std::string_view withoutLeadingZero(std::string_view text) noexcept {
    const std::size_t next = text.size() > 1 && text[1] == '.' ? 2 : 1;
    const bool superfluous = text.size() > next && text.front() == '0' && isDigit(text[next]);
    return text.substr(superfluous ? 1 : 0);
}

/// Without the zeros at the end of the places that are more digits than a text may have.
std::string_view withoutLastZeros(std::string_view text) noexcept {
    if (!holds(text, '.')) return text;
    auto digits = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isDigit));
    for (; digits > mostDigits && text.back() == '0'; --digits)
        text.remove_suffix(1);
    return text;
}

/// The number with so many places more, as far as they fit.
Decimal96 withPlaces(const Decimal96& number, std::size_t more) {
    constexpr std::size_t mostPlaces = Decimal96::maxScale;
    const std::size_t places = std::min(static_cast<std::size_t>(number.scale()) + more, mostPlaces);
    return number + Decimal96::fromMantissa(0, 0, static_cast<std::int16_t>(places));
}

}  // namespace

Decimal96 NkDtDecimal_Imp::fromText(LPCTSTR pszText) {
    const std::string_view text = givenText(pszText);
    Decimal96 number;
    if (isPlainNumber(text, number)) return number;
    return converted(KeptText({}, text).view());
}

Decimal96 NkDtDecimal_Imp::fromFieldText(LPCTSTR pszText) {
    std::string_view text = givenText(pszText);
    Decimal96 number;
    if (isPlainNumber(text, number)) return number;
    const std::string_view sign = takeSign(text);
    const std::string_view digits = withoutLeadingZero(text);
    const std::string_view counted = withoutLastZeros(digits);
    // The places that do not count are written nevertheless, and so are kept.
    return withPlaces(converted(KeptText(sign, counted).view()), digits.size() - counted.size());
}

Decimal96 NkDtDecimal_Imp::fromPlainText(LPCTSTR pszText) {
    const std::string_view text = givenText(pszText);
    if (text.empty()) return {};
    const std::string_view used = text.substr(0, mostCharacters);
    const bool isPlainBehind = std::all_of(text.begin() + static_cast<std::ptrdiff_t>(used.size()),
                                           text.end(), [](char ch) { return isDigit(ch) || ch == '.'; });
    if (!isPlainBehind || holdsTwoPoints(text)) raise(conversionOrigin, NkDtErrFormatUnzulaessig);
    return converted(used);
}

// From external text

namespace {

constexpr Origin externOrigin = {".\\Dtdecfkt.cc", "NkDtDecimal", "SetFromExtern(NkDtString*,BOOL,USHORT)"};

constexpr std::size_t exponentDigits = 3;
constexpr std::size_t mostExponent = 999;

/// The exponent of a sign and one to three digits.
int exponentOf(std::string_view text) {
    const std::string_view sign = takeSign(text);
    if (sign.empty() || text.empty() || text.size() > exponentDigits || !areDigits(text))
        raise(externOrigin, NkDtErrExtern);
    int magnitude = 0;
    for (const char digit : text)
        magnitude = magnitude * 10 + (digit - '0');
    return sign == "-" ? -magnitude : magnitude;
}

/// The digits of an external text, and where its exponent puts the point: so many digits stand in front of
/// it. A negative count stands for zeros behind the point, one beyond the digits for zeros behind them.
struct ShiftedDigits {
    ShiftedDigits(std::string_view mantissa, int exponent) {
        const std::size_t whole = std::min(mantissa.find('.'), mantissa.size());
        const std::string_view places = mantissa.substr(std::min(whole + 1, mantissa.size()));
        if (whole + places.size() > mostCharacters) raise(textOrigin, NkDtErrEingabeZuLang);
        count = mantissa.copy(digits.data(), whole);
        count += places.copy(digits.data() + whole, places.size());
        if (count == 0 || !areDigits({digits.data(), count}))
            raise(conversionOrigin, NkDtErrFormatUnzulaessig);
        point = static_cast<int>(whole) + exponent;
    }

    std::array<char, mostCharacters> digits;
    std::size_t count = 0;
    int point = 0;
};

/// Room for a zero in front, all digits, those that an exponent adds, and the point.
using RebuiltText = std::array<char, 1 + mostCharacters + mostExponent + 1>;

/// The plain text, in the form that the check of its length takes if the number can be held: without zeros in
/// front, but with one in front of 29 digits, which a mantissa has at most.
std::string_view rebuilt(const ShiftedDigits& shifted, RebuiltText& text) noexcept {
    const auto atLeastZero = [](int count) { return static_cast<std::size_t>(std::max(count, 0)); };
    const std::size_t beforePoint = atLeastZero(shifted.point);
    const std::size_t whole = std::min(beforePoint, shifted.count);

    char* const first = text.data() + 1;
    char* end = std::copy_n(shifted.digits.data(), whole, first);
    end = std::fill_n(end, beforePoint - whole, '0');
    char* begin = std::find_if(first, end, [](char digit) { return digit != '0'; });
    const bool isWhole = whole == shifted.count;
    const bool isBelowOne = begin == end;
    if (!isWhole) {
        *end++ = '.';
        end = std::fill_n(end, atLeastZero(-shifted.point), '0');
        end = std::copy_n(shifted.digits.data() + whole, shifted.count - whole, end);
    }
    const auto digits = static_cast<std::size_t>(end - begin) - (isWhole ? 0 : 1);
    if (isBelowOne ? isWhole : digits == mostDigits + 1) *--begin = '0';
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

Decimal96 NkDtDecimal_Imp::fromExtern(LPCTSTR pszText) {
    const std::string_view text = givenText(pszText);
    const std::size_t letter = text.find('E');
    if (letter == std::string_view::npos) raise(externOrigin, NkDtErrExtern);
    const int exponent = exponentOf(text.substr(letter + 1));
    std::string_view mantissa = text.substr(0, letter);
    const std::string_view sign = takeSign(mantissa);
    RebuiltText plain;
    return converted(KeptText(sign, rebuilt(ShiftedDigits(mantissa, exponent), plain)).view());
}

// To text

namespace {

/// Puts the text and a NUL at the end of what is written.
char* appended(char* end, std::string_view text) noexcept {
    end += text.copy(end, text.size());
    *end = '\0';
    return end;
}

std::string_view viewOf(const char* text, const char* end) noexcept {
    return {text, static_cast<std::size_t>(end - text)};
}

}  // namespace

std::string_view NkDtDecimal_Imp::sqlText(const Decimal96& number, Text& buffer) {
    return viewOf(buffer, number.toString(buffer));
}

std::string_view NkDtDecimal_Imp::plainText(const Decimal96& number, Text& buffer) {
    std::string_view text = sqlText(number, buffer);
    if (number.scale() <= 0 || !number.isNumber()) return text;
    while (text.back() == '0')
        text.remove_suffix(1);
    if (text.back() == '.') text.remove_suffix(1);
    buffer[text.size()] = '\0';
    return text;
}

std::string_view NkDtDecimal_Imp::fieldText(const Decimal96& number, Text& buffer) {
    if (number == Decimal96()) return viewOf(buffer, appended(buffer, "0.00"));
    const std::string_view text = sqlText(number, buffer);
    if (holds(text, '.')) return text;
    return viewOf(buffer, appended(buffer + text.size(), ".0"));
}

std::string_view NkDtDecimal_Imp::externText(const Decimal96& number, ExternText& buffer) {
    Text plain;
    const std::string_view text = sqlText(number, plain);
    if (!number.isNumber()) return viewOf(buffer, appended(buffer, text));
    const std::size_t first = text.find_first_of("123456789");
    if (first == std::string_view::npos) return viewOf(buffer, appended(buffer, "0E+000"));

    char* end = appended(buffer, number.isNegative() ? "-" : "");
    *end++ = text[first];
    const std::string_view others = text.substr(first + 1);
    if (!others.empty()) *end++ = '.';
    end = std::remove_copy(others.begin(), others.end(), end, '.');

    const std::size_t point = std::min(text.find('.'), text.size());
    const std::size_t exponent = first < point ? point - first - 1 : first - point;
    end = appended(end, first < point ? "E+0" : "E-0");
    *end++ = static_cast<char>('0' + exponent / 10);
    *end++ = static_cast<char>('0' + exponent % 10);
    *end = '\0';
    return viewOf(buffer, end);
}

// The binary record

Decimal96 NkDtDecimal_Imp::fromRecord(const DEC& record) {
    setHandlers();
    const bool isZero = record.low == 0 && record.high == 0;
    // Negating a magnitude of 0 word by word carries nothing into the middle word.
    constexpr std::uint64_t lowOfNegativeZero = 0xFFFF'FFFF'0000'0000U;
    if (isZero && record.sign != 0 && record.sign != 1)
        return Decimal96::fromMantissa(-1, lowOfNegativeZero, record.scale);
    return Decimal96::fromParts(record.low, record.high, 0, record.sign != 0, record.scale);
}

DEC NkDtDecimal_Imp::toRecord(const Decimal96& number) {
    static constexpr Origin origin = originOf("ConvRWToDecimal(RWDecimal96&)");
    DEC record = {};
    if (!number.isNumber()) return record;
    Decimal96 rest = number;
    while (rest.mantissaHigh() > 0 && rest.scale() > 0)
        rest = rest.truncate(rest.scale() - 1);
    if (rest.mantissaHigh() > 0) raise(origin, NkDtErrWertebereich);
    if (rest.mantissaLow() == 0) return record;
    // What a negative number has beyond 64 bits is lost.
    const std::uint64_t magnitude = rest.isNegative() ? 0 - rest.mantissaLow() : rest.mantissaLow();
    record.sign = rest.isNegative() ? SHORT{1} : SHORT{0};
    record.scale = static_cast<SHORT>(rest.scale());
    record.low = static_cast<ULONG>(magnitude & 0xFFFF'FFFFU);
    record.high = static_cast<ULONG>(magnitude >> 32U);
    return record;
}

// Currency

namespace {

constexpr std::int16_t currencyPlaces = 4;

Decimal96 ofCount(LONGLONG count) {
    return Decimal96::fromMantissa(count < 0 ? -1 : 0, static_cast<std::uint64_t>(count), currencyPlaces);
}

}  // namespace

Decimal96 NkDtDecimal_Imp::fromCurrency(const COleCurrency& currency) {
    return currency.GetStatus() == COleCurrency::valid ? ofCount(currency.m_cur.int64) : Decimal96();
}

COleCurrency NkDtDecimal_Imp::toCurrency(const Decimal96& number) {
    static constexpr Origin origin = originOf("ToCurrency()");
    using Count = std::numeric_limits<LONGLONG>;
    COleCurrency currency;
    if (!number.isNumber()) {
        currency.SetStatus(COleCurrency::null);
        return currency;
    }
    // Adding 0 multiplies a negative scale out, the last step that can fail.
    const Decimal96 rounded = wrapped(origin, [&] { return number.round(currencyPlaces) + Decimal96(); });
    if (rounded > ofCount(Count::max()) || rounded < ofCount(Count::min()))
        raise(origin, NkDtErrWertebereich);
    currency.m_cur.int64 = (rounded * 10000).toInt64();
    return currency;
}
