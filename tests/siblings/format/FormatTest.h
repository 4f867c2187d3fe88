#pragma once

/// @file
/// What the tests of the formats share: refusals as values, short ways to build a format, a clock that stands
/// still.

#include <ctime>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include <nkeh/NkEhBasis.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Clock.h>
#include <nklang/NkLanguagePublisher.h>

inline void PrintTo(const NkFoDateTime& value, std::ostream* out) {
    *out << value.year << '-' << value.month << '-' << value.day << ' ' << value.hour << ':' << value.minute
         << ':' << value.second;
}

namespace formattest {

inline constexpr ULONG unlimited = 2147483647;

/// The error that an action throws, if it throws one. Any other exception ends the test.
template <class Action>
std::unique_ptr<NkEhBasis> errorOf(Action&& action) {
    try {
        static_cast<void>(action());
    } catch (NkEhBasis* caught) {
        return std::unique_ptr<NkEhBasis>(caught);
    }
    return nullptr;
}

/// The number of the error that an action throws, 0 for none.
template <class Action>
ULONG errorNumberOf(Action&& action) {
    const auto error = errorOf(action);
    return error ? error->GetErrorNumber() : 0;
}

template <class Action>
std::string errorTextOf(Action&& action) {
    const auto error = errorOf(action);
    return error ? error->GetErrorText() : "no error";
}

inline NkFormat truthFormat(int modus, USHORT language = usNkLangDeutsch) {
    return NkFormat(static_cast<FormatModus>(modus), language);
}

inline NkFormat textFormat(ULONG length, ULONG valid, int side = 0, char fill = ' ') {
    return NkFormat(length, valid, static_cast<FormatAuffuellen>(side), fill);
}

inline NkFormat dateFormat(int order, int separator, int year = 0, int month = 0, int filled = 1,
                           char fill = '0') {
    return NkFormat(static_cast<FormatDatumArt>(order), static_cast<FormatDatumTrenner>(separator),
                    static_cast<FormatDatumJahr>(year), static_cast<FormatDatumMonat>(month), filled, fill);
}

inline NkFormat numberFormat(ULONG most, ULONG mostPlaces, int decimal, int thousands, int sign = 1,
                             int which = 0, int fewest = 0, char fill = '0', int fewestPlaces = 0,
                             char fillPlaces = '0') {
    return NkFormat(most, mostPlaces, static_cast<FormatDezimalTrenner>(decimal),
                    static_cast<FormatTausenderTrenner>(thousands), static_cast<FormatVorzeichen>(sign),
                    static_cast<FormatVorzeichenWelches>(which), fewest, fill, fewestPlaces, fillPlaces);
}

/// "1.234,56" with that many places at most, and at least.
inline NkFormat germanNumber(ULONG mostPlaces = unlimited, int fewestPlaces = 0) {
    return numberFormat(unlimited, mostPlaces, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt, 1, 0,
                        0, '0', fewestPlaces);
}

inline NkFormat timeFormat(int art, int display, int sign = 1, int which = 0, ULONG most = 7, int fewest = 0,
                           char fill = '0') {
    return NkFormat(static_cast<FormatZeitArt>(art), static_cast<FormatZeitDarstellung>(display),
                    static_cast<FormatVorzeichen>(sign), static_cast<FormatVorzeichenWelches>(which), most,
                    fewest, fill);
}

/// The text that a format writes, as a std::string.
inline std::string text(const CString& str) {
    return std::string(str.View());
}

/// The clock stands at noon of 15 June 2023 while this lives.
class ClockIn2023 {
  public:
    ClockIn2023() : m_before(nkfw::setClockSource([]() noexcept -> std::time_t { return 1686830400; })) {}
    ~ClockIn2023() { nkfw::setClockSource(m_before); }
    ClockIn2023(const ClockIn2023&) = delete;
    ClockIn2023& operator=(const ClockIn2023&) = delete;

  private:
    nkfw::ClockSource m_before;
};

/// The publisher speaks that language while this lives; 0: the program has no language module.
class PublishedLanguage {
  public:
    explicit PublishedLanguage(USHORT language)
        : m_before(NkLanguagePublisher::Instance()->SetLangDependentResource(
              NkLanguagePublisher::GetModule(language))) {}
    ~PublishedLanguage() { NkLanguagePublisher::Instance()->SetLangDependentResource(m_before); }
    PublishedLanguage(const PublishedLanguage&) = delete;
    PublishedLanguage& operator=(const PublishedLanguage&) = delete;

  private:
    const NkLanguageModule* m_before;
};

}  // namespace formattest
