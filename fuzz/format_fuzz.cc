/// @file
/// Formats of every kind with settings from the input. What a format reads it writes, and what it writes it
/// reads as the same value; nothing but the errors of the format library is thrown.

#include <charconv>
#include <optional>
#include <string>

#include "FuzzSupport.h"
#include "nkfo/NkFormat.h"
#include "nkfw/Clock.h"
#include "nkfw/Framework.h"
#include "nklang/NkLanguagePublisher.h"

namespace {

using fuzz::Input;
using fuzz::require;

constexpr ULONG unlimited = 2147483647;

// Settings. One more than there are is drawn now and then, so that a constructor has something to refuse.

template <class Enum>
Enum setting(Input& input, unsigned count) {
    const unsigned drawn = input.byte();
    return static_cast<Enum>(drawn == 255 ? count : drawn % count);
}

ULONG limit(Input& input) {
    constexpr ULONG limits[] = {unlimited, 0, 1, 2, 3, 5, 8, 20};
    return limits[input.choice(8)];
}

int fewest(Input& input) {
    return static_cast<int>(input.choice(7));
}

char fill(Input& input) {
    constexpr char fills[] = {'0', ' ', '*', 'x', '_', '\xE4', '.', '5'};
    return fills[input.choice(8)];
}

// The settings are drawn one after the other, as the order of a call's arguments is not fixed.

NkFormat truthFormat(Input& input) {
    const auto modus = setting<FormatModus>(input, 4);
    const USHORT language = input.choice(2) == 0 ? usNkLangDeutsch : usNkLangEnglisch;
    return NkFormat(modus, language);
}

NkFormat textFormat(Input& input) {
    const ULONG length = limit(input);
    const unsigned mask = input.choice(17);
    const auto side = setting<FormatAuffuellen>(input, 3);
    const char with = fill(input);
    // A text as long as memory is is nothing that a test wants to see.
    return NkFormat(length == unlimited ? 0 : length, mask == 16 ? kulNkFoValidAll : mask, side, with);
}

struct NumberFormat {
    static NumberFormat make(Input& input) {
        const ULONG most = limit(input);
        const ULONG places = limit(input);
        const auto decimal = setting<FormatDezimalTrenner>(input, 4);
        const auto thousands = setting<FormatTausenderTrenner>(input, 5);
        const auto sign = setting<FormatVorzeichen>(input, 3);
        const auto which = setting<FormatVorzeichenWelches>(input, 2);
        const int digits = fewest(input);
        const char before = fill(input);
        const int digitsBehind = fewest(input);
        const char behind = fill(input);
        return {NkFormat(most, places, decimal, thousands, sign, which, digits, before, digitsBehind, behind),
                most != unlimited, which == FormatVorzeichenPlusUndMinus || digits > 0};
    }

    /// Reading wants neither the "+" nor the fill characters, but writing counts them.
    bool mayRefuseToWrite() const { return limited && addsCharacters; }

    NkFormat format;
    bool limited;         // in the characters before the separator
    bool addsCharacters;  // before the separator
};

NkFormat dateFormat(Input& input, FormatDatumJahr& year) {
    const auto order = setting<FormatDatumArt>(input, 3);
    const auto separator = setting<FormatDatumTrenner>(input, 5);
    year = setting<FormatDatumJahr>(input, 3);
    const auto month = setting<FormatDatumMonat>(input, 3);
    const int filled = static_cast<int>(input.choice(2));
    const char with = fill(input);
    return NkFormat(order, separator, year, month, filled, with);
}

NkFormat timeFormat(Input& input) {
    const auto art = setting<FormatZeitArt>(input, 2);
    const auto display = setting<FormatZeitDarstellung>(input, 4);
    const auto sign = setting<FormatVorzeichen>(input, 3);
    const auto which = setting<FormatVorzeichenWelches>(input, 2);
    const ULONG most = limit(input);
    const int digits = fewest(input);
    const char with = fill(input);
    return NkFormat(art, display, sign, which, most, digits, with);
}

// The rules

/// The value that the text shows; none if it is refused.
template <class Parse>
auto parsed(Parse parse, const std::string& text) -> std::optional<decltype(parse(""))> {
    std::optional<decltype(parse(""))> value;
    const auto error = fuzz::errorOf([&] { value = parse(text.c_str()); });
    if (error != nullptr) {
        require(error->GetErrorNumber() == NkFoFehlerText, "a text is refused as a text");
        require(*error->GetErrorText() != '\0', "a refusal says why");
    }
    return value;
}

/// The text that shows the value; none if it is refused.
template <class Format, class Value>
std::optional<std::string> shown(Format format, const Value& value) {
    std::optional<std::string> text;
    const ULONG error = fuzz::errorNumberOf([&] { text = std::string(format(value).View()); });
    require(error == 0 || error == NkFoFehlerWert, "a value is refused as a value");
    return text;
}

/// What is written is read as the value, and written in the same way again.
template <class Format, class Parse, class Value, class Same>
void checkWritten(const std::string& text, Format format, Parse parse, const Value& value, Same same) {
    const auto again = parsed(parse, text);
    require(again.has_value(), "what a format writes it reads");
    require(same(value, *again), "what a format writes reads back as the value");
    require(shown(format, *again) == text, "a value that was read back is written as before");
}

/// What is read is written, unless @p mayRefuse, and then as above.
template <class Format, class Parse, class Same>
void checkRead(const std::string& text, Format format, Parse parse, Same same, bool mayRefuse = false) {
    const auto value = parsed(parse, text);
    if (!value) return;
    const auto written = shown(format, *value);
    require(written.has_value() || mayRefuse, "what a format reads it writes");
    if (written) checkWritten(*written, format, parse, *value, same);
}

constexpr auto equal = [](const auto& a, const auto& b) { return a == b; };

// The kinds

void checkTruth(Input& input) {
    const NkFormat format = truthFormat(input);
    const auto write = [&](BOOL value) { return format.FormatBool(value); };
    const auto read = [&](LPCTSTR text) { return format.ParseBool(text); };
    checkRead(input.text(), write, read, equal);
    for (const BOOL value : {FALSE, TRUE})
        checkWritten(shown(write, value).value(), write, read, value, equal);
}

void checkText(Input& input) {
    const NkFormat format = textFormat(input);
    const auto write = [&](const CString& value) { return format.FormatText(value.View()); };
    const auto read = [&](LPCTSTR text) { return format.ParseText(text); };
    checkRead(input.text(), write, read, equal);
}

void checkCharacter(Input& input) {
    const NkFormat format = textFormat(input);
    const auto write = [&](TCHAR value) { return format.FormatChar(value); };
    const auto read = [&](LPCTSTR text) { return format.ParseChar(text); };
    checkRead(input.text(), write, read, equal);
    const auto value = static_cast<TCHAR>(input.byte());
    if (const auto written = shown(write, value)) checkWritten(*written, write, read, value, equal);
}

/// Plain decimal text without what does not change its value.
std::string significant(std::string plain) {
    if (plain.find('.') == std::string::npos) return plain;
    plain.erase(plain.find_last_not_of('0') + 1);
    if (plain.back() == '.') plain.pop_back();
    return plain;
}

constexpr auto equalDecimals = [](const CString& a, const CString& b) {
    return significant(std::string(a.View())) == significant(std::string(b.View()));
};

/// A whole number is the decimal without places that lies in its range; every other text is refused.
template <class Whole, class Parse>
void checkWholeBesideDecimal(const NkFormat& format, const std::string& text, Parse parse) {
    const auto whole = parsed(parse, text);
    const auto decimal = parsed([&](LPCTSTR psz) { return format.ParseDecimalText(psz); }, text);
    Whole fromDecimal = 0;
    bool fits = false;
    if (decimal) {
        const std::string digits = significant(std::string(decimal->View()));
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), fromDecimal);
        fits = error == std::errc() && end == digits.data() + digits.size();
    }
    require(whole.has_value() == fits, "a whole number is read where the decimal is one in its range");
    require(!fits || *whole == fromDecimal, "a whole number and a decimal are read alike");
}

template <class Whole, class Format, class Parse>
void checkWhole(Input& input, const NumberFormat& number, Format write, Parse read) {
    auto value = static_cast<std::uint32_t>(input.byte());
    for (int i = 0; i < 3; ++i)
        value = value * 256 + input.byte();
    const auto whole = static_cast<Whole>(value);
    if (const auto written = shown(write, whole)) checkWritten(*written, write, read, whole, equal);

    const std::string text = input.rest();
    checkRead(text, write, read, equal, number.mayRefuseToWrite());
    checkWholeBesideDecimal<Whole>(number.format, text, read);
}

void checkLong(Input& input) {
    const NumberFormat number = NumberFormat::make(input);
    checkWhole<LONG>(
        input, number, [&](LONG value) { return number.format.FormatLong(value); },
        [&](LPCTSTR text) { return number.format.ParseLong(text); });
}

void checkShort(Input& input) {
    const NumberFormat number = NumberFormat::make(input);
    checkWhole<SHORT>(
        input, number, [&](SHORT value) { return number.format.FormatShort(value); },
        [&](LPCTSTR text) { return number.format.ParseShort(text); });
}

void checkDecimal(Input& input) {
    const NumberFormat number = NumberFormat::make(input);
    const auto write = [&](const CString& value) { return number.format.FormatDecimalText(value.View()); };
    const auto read = [&](LPCTSTR text) { return number.format.ParseDecimalText(text); };
    const std::string text = input.rest();
    checkRead(text, write, read, equalDecimals, number.mayRefuseToWrite());

    // As a decimal to be written: its places may be rounded, so only what is shown has to come back.
    const auto written = shown(write, CString(std::string_view(text)));
    if (!written) return;
    const auto value = parsed(read, *written);
    require(value.has_value() && shown(write, *value) == *written,
            "what a format writes it reads and writes again");
}

void checkDouble(Input& input) {
    const NumberFormat number = NumberFormat::make(input);
    const auto write = [&](double value) { return number.format.FormatDouble(value); };
    const auto read = [&](LPCTSTR text) { return number.format.ParseDouble(text); };
    const std::string text = input.rest();
    // The nearest double may have a digit more before the separator: 9.9999999999999999 is 10.
    checkRead(text, write, read, equal, number.limited);

    const auto value = parsed(read, text);
    const auto decimal = parsed([&](LPCTSTR psz) { return number.format.ParseDecimalText(psz); }, text);
    require(!value || decimal, "a double is read where the decimal is");
    if (!value) return;
    double fromDecimal = 0;
    const std::string_view digits = decimal->View();
    std::from_chars(digits.data(), digits.data() + digits.size(), fromDecimal);
    require(*value == fromDecimal, "a double is the one nearest to the decimal");
}

constexpr auto sameDay = [](const NkFoDateTime& a, const NkFoDateTime& b) {
    return a.month == b.month && a.day == b.day && a.hour == b.hour && a.minute == b.minute &&
           a.second == b.second;
};

/// Years that are not shown whole are read in the current century and year.
auto sameDate(FormatDatumJahr year) {
    return [year](const NkFoDateTime& a, const NkFoDateTime& b) {
        if (year == FormatDatumJahrVierstellig) return a == b;
        return sameDay(a, b) && (year == FormatDatumJahrOhne || a.year % 100 == b.year % 100);
    };
}

void checkDateTime(Input& input) {
    FormatDatumJahr year{};
    const NkFormat format = dateFormat(input, year);
    checkRead(
        input.rest(), [&](const NkFoDateTime& value) { return format.FormatDateTime(value); },
        [&](LPCTSTR text) { return format.ParseDateTime(text); }, sameDate(year));
}

void checkDate(Input& input) {
    FormatDatumJahr year{};
    const NkFormat format = dateFormat(input, year);
    const auto write = [&](const NkFoDateTime& value) { return format.FormatDate(value); };
    const auto read = [&](LPCTSTR text) { return format.ParseDate(text); };
    const auto number = static_cast<int>(input.byte()) * 256 + input.byte();
    const auto month = static_cast<SHORT>(input.byte() % 13);
    const auto day = static_cast<SHORT>(input.byte() % 32);
    const NkFoDateTime value{static_cast<SHORT>(number % 10001), month, day, 0, 0, 0};
    if (const auto written = shown(write, value)) checkWritten(*written, write, read, value, sameDate(year));
    checkRead(input.rest(), write, read, sameDate(year));
}

struct Duration {
    LONG hours;
    LONG subHour;
    friend bool operator==(const Duration& a, const Duration& b) {
        return a.hours == b.hours && a.subHour == b.subHour;
    }
};

void checkDuration(Input& input) {
    const NkFormat format = timeFormat(input);
    checkRead(
        input.rest(), [&](const Duration& value) { return format.FormatTime(value.hours, value.subHour); },
        [&](LPCTSTR text) {
            Duration value{};
            format.ParseTime(text, value.hours, value.subHour);
            return value;
        },
        equal);
}

using Check = void (*)(Input&);
constexpr Check checks[] = {checkTruth,   checkText,   checkCharacter, checkLong, checkShort,
                            checkDecimal, checkDouble, checkDateTime,  checkDate, checkDuration};

/// Noon of 15 June 2024, a leap year, so that 29 February can be read without a year.
std::time_t standingClock() noexcept {
    return 1718452800;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nkfw::setClockSource(&standingClock);
    Input input(data, size);
    const Check check = checks[input.choice(std::size(checks))];
    const ULONG error = fuzz::errorNumberOf([&] { check(input); });
    require(error == 0 || error == NkFoFehlerEinstellung, "only a constructor's refusal ends a check");
    return 0;
}
