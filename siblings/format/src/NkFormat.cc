#include "nkfo/NkFormat.h"

#include <initializer_list>
#include <type_traits>

#include "Literal1252.h"
#include "NkFormatError.h"
#include "nklang/NkLanguagePublisher.h"

using namespace nkfw::literals;
using nkfo::Origin;

static_assert(std::is_trivially_copyable_v<NkFormat> && std::is_trivially_destructible_v<NkFormat>);

namespace {

constexpr LPCTSTR sourceFile = ".\\NkFormat.cc";
constexpr Origin boolFormat = {sourceFile, "NkFormat(FormatModus,USHORT)"};
constexpr Origin textFormat = {sourceFile, "NkFormat(ULONG,ULONG,FormatAuffuellen,char)"};
constexpr Origin dateFormat = {
    sourceFile, "NkFormat(FormatDatumArt,FormatDatumTrenner,FormatDatumJahr,FormatDatumMonat,int,char)"};
constexpr Origin numberFormat = {
    sourceFile,
    "NkFormat(ULONG,ULONG,FormatDezimalTrenner,FormatTausenderTrenner,FormatVorzeichen,"
    "FormatVorzeichenWelches,int,char,int,char)"};
constexpr Origin timeFormat = {
    sourceFile,
    "NkFormat(FormatZeitArt,FormatZeitDarstellung,FormatVorzeichen,FormatVorzeichenWelches,ULONG,int,char)"};
constexpr Origin getZeitDarstellung = {sourceFile, "GetZeitDarstellung()"};

[[noreturn]] void refuseSetting(const Origin& origin, std::string_view name, LONGLONG number) {
    nkfo::Message message;
    message << name << " = " << number << ": "
            << "ungültige Einstellung"_cp1252;
    nkfo::raise(origin, NkFoFehlerEinstellung, message.text());
}

/// An enumeration's number: 0 to @p last.
template <class E>
E checked(const Origin& origin, E value, E last, std::string_view name) {
    const int number = static_cast<int>(value);
    if (number < 0 || number > static_cast<int>(last)) refuseSetting(origin, name, number);
    return value;
}

nkfo::SignSettings checkedSign(const Origin& origin, FormatVorzeichen place, FormatVorzeichenWelches which) {
    return {checked(origin, place, FormatVorzeichenHinten, "FormatVorzeichen"),
            checked(origin, which, FormatVorzeichenPlusUndMinus, "FormatVorzeichenWelches")};
}

/// A smallest number of characters, which must not exceed the largest.
ULONG checkedFewest(const Origin& origin, int fewest, ULONG most, std::string_view name) {
    if (fewest < 0 || static_cast<ULONG>(fewest) > most) refuseSetting(origin, name, fewest);
    return static_cast<ULONG>(fewest);
}

/// A fill character, which must not be mistaken for a part of the value. NUL among the separators stands for
/// none.
char checkedFill(const Origin& origin, char fill, bool used, std::initializer_list<char> separators) {
    if (!used && (fill == ' ' || fill == '\0')) return fill;
    bool valid = fill != '\0' && fill != '+' && fill != '-' && (fill < '1' || fill > '9');
    for (const char separator : separators)
        valid = valid && fill != separator;
    if (valid) return fill;
    nkfo::Message message;
    message << "Füllzeichen "_cp1252;
    message.quote({&fill, 1}) << ": "
                              << "ungültige Einstellung"_cp1252;
    nkfo::raise(origin, NkFoFehlerEinstellung, message.text());
}

LPCTSTR kindName(int kind) noexcept {
    constexpr LPCTSTR names[] = {"Texte", "Wahrheitswerte", "Zahlen", "Datumsangaben", "Zeiten"};
    return names[kind];
}

[[gnu::cold, noreturn]] void refuseKind(const Origin& origin, int built, int asked) {
    nkfo::Message message;
    message << "Das Format ist für "_cp1252 << kindName(built) << ", nicht für "_cp1252 << kindName(asked);
    nkfo::raise(origin, NkFoFehlerArt, message.text());
}

}  // namespace

NkFormat::NkFormat(FormatModus modus, USHORT usLanguage) : m_kind(Kind::Bool) {
    checked(boolFormat, modus, FormatModusKreuz, "FormatModus");
    const NkLanguageModule* const module = NkLanguagePublisher::GetModule(usLanguage);
    if (module == nullptr) refuseSetting(boolFormat, "Sprache", usLanguage);
    m_settings.truth = {{module->GetText(uNkLangFalsch), module->GetText(uNkLangWahr)}, modus};
}

NkFormat::NkFormat(ULONG ulLength, ULONG ulValid, FormatAuffuellen auffuellen, char cFill)
    : m_kind(Kind::Text) {
    constexpr ULONG known = kulNkFoValidDigits | kulNkFoValidLetters | kulNkFoValidBlank | kulNkFoValidOther;
    checked(textFormat, auffuellen, FormatAuffuellenAmEnde, "FormatAuffuellen");
    if (ulValid > known && ulValid != kulNkFoValidAll) refuseSetting(textFormat, "Zeichenvorrat", ulValid);
    const char fill = checkedFill(textFormat, cFill, auffuellen != FormatAuffuellenNicht, {});
    m_settings.text = {ulLength, ulValid, ulLength == 0 ? FormatAuffuellenNicht : auffuellen, fill};
}

NkFormat::NkFormat(FormatDatumArt art, FormatDatumTrenner trenner, FormatDatumJahr jahr,
                   FormatDatumMonat monat, int nFill, char cFill)
    : m_kind(Kind::Date) {
    constexpr char separators[] = {'.', '/', '-', ' ', '\0'};
    checked(dateFormat, art, FormatDatumArtJahrMonatTag, "FormatDatumArt");
    checked(dateFormat, trenner, FormatDatumTrennerOhne, "FormatDatumTrenner");
    checked(dateFormat, jahr, FormatDatumJahrOhne, "FormatDatumJahr");
    checked(dateFormat, monat, FormatDatumMonatName, "FormatDatumMonat");
    if (nFill != 0 && nFill != 1) refuseSetting(dateFormat, "Auffüllen von Tag und Monat"_cp1252, nFill);
    const char separator = separators[trenner];
    const char fill = checkedFill(dateFormat, cFill, nFill != 0, {separator});
    m_settings.date = {art, jahr, monat, separator, nFill != 0 ? fill : '\0'};
}

NkFormat::NkFormat(ULONG ulMost, ULONG ulMostPlaces, FormatDezimalTrenner dezimal,
                   FormatTausenderTrenner tausender, FormatVorzeichen vorzeichen,
                   FormatVorzeichenWelches welches, int nFewest, char cFill, int nFewestPlaces,
                   char cFillPlaces)
    : m_kind(Kind::Number) {
    constexpr char decimals[] = {'.', ',', '\'', '\0'};
    constexpr char thousands[] = {'\0', '.', ',', ' ', '\''};
    nkfo::NumberSettings& number = m_settings.number;
    number.decimal =
        decimals[checked(numberFormat, dezimal, FormatDezimalTrennerOhne, "FormatDezimalTrenner")];
    number.thousands = thousands[checked(numberFormat, tausender, FormatTausenderTrennerApostroph,
                                         "FormatTausenderTrenner")];
    if (number.decimal != '\0' && number.decimal == number.thousands) {
        nkfo::raise(numberFormat, NkFoFehlerEinstellung, "Dezimaltrenner und Tausendertrenner sind gleich");
    }
    number.sign = checkedSign(numberFormat, vorzeichen, welches);
    number.most = ulMost;
    number.mostPlaces = number.decimal == '\0' ? 0 : ulMostPlaces;
    number.fewest =
        checkedFewest(numberFormat, nFewest, number.most, "Mindeststellen vor dem Dezimaltrenner");
    number.fewestPlaces = checkedFewest(numberFormat, nFewestPlaces, number.mostPlaces,
                                        "Mindeststellen nach dem Dezimaltrenner");
    number.fill = checkedFill(numberFormat, cFill, nFewest != 0, {number.decimal, number.thousands});
    number.fillPlaces =
        checkedFill(numberFormat, cFillPlaces, nFewestPlaces != 0, {number.decimal, number.thousands});
}

NkFormat::NkFormat(FormatZeitArt art, FormatZeitDarstellung darstellung, FormatVorzeichen vorzeichen,
                   FormatVorzeichenWelches welches, ULONG ulMost, int nFewest, char cFill)
    : m_kind(Kind::Time) {
    constexpr char separators[] = {':', '\0', ',', ':'};
    checked(timeFormat, art, FormatZeitArtUhrzeit, "FormatZeitArt");
    checked(timeFormat, darstellung, FormatZeitDarstellungMinuten, "FormatZeitDarstellung");
    const nkfo::SignSettings sign = checkedSign(timeFormat, vorzeichen, welches);
    const ULONG fewest = checkedFewest(timeFormat, nFewest, ulMost, "Mindeststellen der Stunden");
    const char fill = checkedFill(timeFormat, cFill, nFewest != 0, {separators[darstellung]});
    m_settings.time = {art, darstellung, sign, ulMost, fewest, fill};
}

FormatZeitDarstellung NkFormat::GetZeitDarstellung() const {
    return TimeOf(getZeitDarstellung).display;
}

const nkfo::TextSettings& NkFormat::TextOf(const Origin& origin) const {
    if (m_kind != Kind::Text) refuseKind(origin, static_cast<int>(m_kind), static_cast<int>(Kind::Text));
    return m_settings.text;
}

const nkfo::BoolSettings& NkFormat::BoolOf(const Origin& origin) const {
    if (m_kind != Kind::Bool) refuseKind(origin, static_cast<int>(m_kind), static_cast<int>(Kind::Bool));
    return m_settings.truth;
}

const nkfo::NumberSettings& NkFormat::NumberOf(const Origin& origin) const {
    if (m_kind != Kind::Number) refuseKind(origin, static_cast<int>(m_kind), static_cast<int>(Kind::Number));
    return m_settings.number;
}

const nkfo::DateSettings& NkFormat::DateOf(const Origin& origin) const {
    if (m_kind != Kind::Date) refuseKind(origin, static_cast<int>(m_kind), static_cast<int>(Kind::Date));
    return m_settings.date;
}

const nkfo::TimeSettings& NkFormat::TimeOf(const Origin& origin) const {
    if (m_kind != Kind::Time) refuseKind(origin, static_cast<int>(m_kind), static_cast<int>(Kind::Time));
    return m_settings.time;
}
