#pragma once

/// @file
/// How a value looks on the user interface: a format writes values as text and reads such text back.
///
/// A format is built once for one kind of value (text, truth value, number, date, time) and never changes
/// afterwards, so that any number of values and threads can share it. It owns no memory; a copy is as good as
/// the original.
///
/// @code
/// const NkFormat amount(2147483647, 2, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
///                       FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 2, '0');
/// amount.FormatDecimalText("-1234.5");      // "-1.234,50"
/// amount.ParseDecimalText("-1.234,50");     // "-1234.50"
/// amount.ParseDecimalText("1234.56");       // throws: read strictly, never as 123456
/// @endcode
///
/// Reading is strict. Blanks stand at the ends of a text only; nothing may be left over; what is no text of
/// the format is refused and never guessed at. What a format writes it reads back as the value that the text
/// shows; only years of two digits and dates without a year are read in the century and the year of the local
/// clock.
///
/// Every refusal is thrown as an `NkEhBasis*` with class text "NkFormat", the operation's signature as
/// function text, a number of ::NkFoFehler and a German text of what was refused, at which position (counted
/// from 1) and why, such as
/// `"12a" an Position 3: unerwartetes Zeichen`. Any operation throws a `CMemoryException*` when memory is
/// exhausted.
///
/// All text is code page 1252. "Blank" is the character 0x20.

#include <string_view>

#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

/// Error numbers of the format library.
enum NkFoFehler : ULONG {
    NkFoFehlerEinstellung = 1,  ///< a constructor's settings are unknown or contradict each other
    NkFoFehlerArt = 2,          ///< the format was built for another kind of value
    NkFoFehlerText = 3,         ///< a text was refused while reading
    NkFoFehlerWert = 4,         ///< a value cannot be shown by this format
    NkFoFehlerUhr = 5,          ///< the current year was needed and the clock cannot be read
};

/// How a truth value is shown.
enum FormatModus : int {
    FormatModusZiffern = 0,     ///< "1" and "0"
    FormatModusWorte = 1,       ///< the words of the language: "Ja" and "Nein"
    FormatModusBuchstaben = 2,  ///< the first letters of the words: "J" and "N"
    FormatModusKreuz = 3,       ///< "X" and a blank
};

/// On which side a text is filled up to its length.
enum FormatAuffuellen : int {
    FormatAuffuellenNicht = 0,
    FormatAuffuellenAmAnfang = 1,
    FormatAuffuellenAmEnde = 2,
};

/// Which characters a text may hold, to be added up.
inline constexpr ULONG kulNkFoValidDigits = 1;         ///< "0" to "9"
inline constexpr ULONG kulNkFoValidLetters = 2;        ///< the letters of code page 1252
inline constexpr ULONG kulNkFoValidBlank = 4;          ///< the blank
inline constexpr ULONG kulNkFoValidOther = 8;          ///< all else
inline constexpr ULONG kulNkFoValidAll = 0xFFFFFFFFU;  ///< every character

/// The order of day, month and year.
enum FormatDatumArt : int {
    FormatDatumArtTagMonatJahr = 0,
    FormatDatumArtMonatTagJahr = 1,
    FormatDatumArtJahrMonatTag = 2,
};

/// What stands between day, month and year.
enum FormatDatumTrenner : int {
    FormatDatumTrennerPunkt = 0,          ///< "."
    FormatDatumTrennerSchraegstrich = 1,  ///< "/"
    FormatDatumTrennerBindestrich = 2,    ///< "-"
    FormatDatumTrennerLeerzeichen = 3,    ///< a blank
    FormatDatumTrennerOhne = 4,           ///< nothing: all parts stand in full width
};

enum FormatDatumJahr : int {
    FormatDatumJahrVierstellig = 0,
    FormatDatumJahrZweistellig = 1,
    FormatDatumJahrOhne = 2,
};

enum FormatDatumMonat : int {
    FormatDatumMonatZahl = 0,
    FormatDatumMonatKurzname = 1,  ///< "Mär", in the language of the NkLanguagePublisher
    FormatDatumMonatName = 2,      ///< "März"
};

enum FormatDezimalTrenner : int {
    FormatDezimalTrennerPunkt = 0,      ///< "."
    FormatDezimalTrennerKomma = 1,      ///< ","
    FormatDezimalTrennerApostroph = 2,  ///< "'"
    FormatDezimalTrennerOhne = 3,       ///< none, and so no decimal places
};

enum FormatTausenderTrenner : int {
    FormatTausenderTrennerOhne = 0,
    FormatTausenderTrennerPunkt = 1,        ///< "."
    FormatTausenderTrennerKomma = 2,        ///< ","
    FormatTausenderTrennerLeerzeichen = 3,  ///< a blank
    FormatTausenderTrennerApostroph = 4,    ///< "'"
};

/// Where the sign stands.
enum FormatVorzeichen : int {
    FormatVorzeichenOhne = 0,    ///< nowhere: negative values are refused
    FormatVorzeichenVorn = 1,    ///< in front
    FormatVorzeichenHinten = 2,  ///< behind
};

/// Which signs are shown. Zero never has one.
enum FormatVorzeichenWelches : int {
    FormatVorzeichenNurMinus = 0,
    FormatVorzeichenPlusUndMinus = 1,
};

enum FormatZeitArt : int {
    FormatZeitArtDauer = 0,    ///< a length of time, hours without limit
    FormatZeitArtUhrzeit = 1,  ///< a time of day, hours 0 to 23
};

enum FormatZeitDarstellung : int {
    FormatZeitDarstellungSekunden = 0,     ///< hours ":" minutes ":" seconds; the seconds are always 00
    FormatZeitDarstellungStunden = 1,      ///< whole hours
    FormatZeitDarstellungHundertstel = 2,  ///< hours "," hundredths of an hour
    FormatZeitDarstellungMinuten = 3,      ///< hours ":" minutes
};

/// A date with a time of day, as the date formats write and read it.
struct NkFoDateTime {
    SHORT year;    ///< 1753 to 9999
    SHORT month;   ///< 1 to 12
    SHORT day;     ///< 1 to the length of the month
    SHORT hour;    ///< 0 to 23
    SHORT minute;  ///< 0 to 59
    SHORT second;  ///< 0 to 59

    friend constexpr bool operator==(const NkFoDateTime& a, const NkFoDateTime& b) noexcept {
        return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
               a.minute == b.minute && a.second == b.second;
    }
    friend constexpr bool operator!=(const NkFoDateTime& a, const NkFoDateTime& b) noexcept {
        return !(a == b);
    }
};

namespace nkfo {

struct Origin;

/// What a format of each kind remembers: the constructor's arguments, checked and ready for use.
struct TextSettings {
    ULONG length;  // 0: unlimited
    ULONG valid;
    FormatAuffuellen side;
    char fill;
};
struct BoolSettings {
    LPCTSTR words[2];  // false, true
    FormatModus modus;
};
struct SignSettings {
    FormatVorzeichen place;
    FormatVorzeichenWelches which;
};
struct NumberSettings {
    ULONG most;  // characters before the decimal separator
    ULONG mostPlaces;
    ULONG fewest;
    ULONG fewestPlaces;
    SignSettings sign;
    char decimal;    // NUL: none
    char thousands;  // NUL: none
    char fill;
    char fillPlaces;
};
struct DateSettings {
    FormatDatumArt order;
    FormatDatumJahr year;
    FormatDatumMonat month;
    char separator;  // NUL: none
    char fill;       // NUL: as many characters as needed
};
struct TimeSettings {
    FormatZeitArt art;
    FormatZeitDarstellung display;
    SignSettings sign;
    ULONG most;  // digits of the hours
    ULONG fewest;
    char fill;
};

}  // namespace nkfo

class NKDT_API NkFormat {
  public:
    /// @name Constructors
    /// One for each kind of value. All throw error NkFoFehlerEinstellung for a number that is none of an
    /// enumeration, and for a fill character that is a digit 1 to 9, a sign or a separator of the same
    /// format. A filling that is not used (0 as its count, FormatAuffuellenNicht) may name a blank or NUL.
    /// @{

    /// Truth values.
    /// @param usLanguage language id of the words: 1031 German, 1033 English; any other is refused, whatever
    /// the mode.
    NkFormat(FormatModus modus, USHORT usLanguage);

    /// Texts and characters.
    /// @param ulLength greatest length; 0: unlimited, and nothing is filled
    /// @param ulValid  sum of kulNkFoValidDigits, ...; or kulNkFoValidAll. Concerns the text itself, not its
    /// fill characters
    /// @param auffuellen,cFill on which side a text is filled up to @p ulLength, and with what
    NkFormat(ULONG ulLength, ULONG ulValid, FormatAuffuellen auffuellen, char cFill);

    /// Dates and date-times.
    /// @param nFill 1: day and month number always take two characters, a missing one is @p cFill; 0: as many
    /// as needed
    NkFormat(FormatDatumArt art, FormatDatumTrenner trenner, FormatDatumJahr jahr, FormatDatumMonat monat,
             int nFill, char cFill);

    /// Numbers: whole, double and decimal.
    /// @param ulMost most characters before the decimal separator: a sign in front, fill characters and
    /// digits count, thousands separators do not. More are refused. From 2147483647 on there is no limit.
    /// @param ulMostPlaces most places behind it. More are rounded when writing and refused when reading.
    /// From 2147483647 on there is no limit; without a decimal separator it counts as 0.
    /// @param nFewest,cFill fewest digits before the separator, at most @p ulMost. Fill "0" stands behind the
    /// sign and is grouped like the digits; any other fill stands in front of everything.
    /// @param nFewestPlaces,cFillPlaces fewest places, at most @p ulMostPlaces. A value without places that
    /// is filled with other than "0" shows one more fill character in the place of the separator.
    ///
    /// Equal decimal and thousands separators are refused.
    NkFormat(ULONG ulMost, ULONG ulMostPlaces, FormatDezimalTrenner dezimal, FormatTausenderTrenner tausender,
             FormatVorzeichen vorzeichen, FormatVorzeichenWelches welches, int nFewest, char cFill,
             int nFewestPlaces, char cFillPlaces);

    /// Durations and times of day.
    /// @param ulMost most digits of the hours, fill characters included; more are refused
    /// @param nFewest,cFill fewest digits of the hours, at most @p ulMost; the fill stands as in numbers
    NkFormat(FormatZeitArt art, FormatZeitDarstellung darstellung, FormatVorzeichen vorzeichen,
             FormatVorzeichenWelches welches, ULONG ulMost, int nFewest, char cFill);
    /// @}

    NkFormat(const NkFormat&) noexcept = default;
    NkFormat& operator=(const NkFormat&) = delete;

    /// @name Writing and reading
    /// Each operation throws error NkFoFehlerArt when the format was built for another kind of value. Writing
    /// throws error NkFoFehlerWert for a value that the format cannot show, reading error NkFoFehlerText for
    /// a text that is none of the format's, a null pointer included.
    /// @{

    /// The text up to its first NUL, checked for length and valid characters, and filled.
    CString FormatText(std::string_view text) const;
    /// The text without its fill characters on the filled side, checked in the same way (fill characters
    /// count for the length). A text all of fill gives an empty text.
    CString ParseText(LPCTSTR pszText) const;

    /// A character as a text of length 1; NUL gives the empty text.
    CString FormatChar(TCHAR ch) const;
    /// The text's one character; NUL for the empty text. A text all of fill gives the fill character where it
    /// is valid, else NUL.
    TCHAR ParseChar(LPCTSTR pszText) const;

    CString FormatBool(BOOL fValue) const;
    /// TRUE or FALSE. Letter case and blanks at the ends do not matter; only what the format itself writes is
    /// read.
    BOOL ParseBool(LPCTSTR pszText) const;

    CString FormatLong(LONG nValue) const;
    /// A number without decimal places other than zeros, in the range of a LONG.
    LONG ParseLong(LPCTSTR pszText) const;
    CString FormatShort(SHORT nValue) const;
    /// The same in the range of a SHORT.
    SHORT ParseShort(LPCTSTR pszText) const;

    /// @param plain "-" in front of a negative number, digits, and "." with the held places if there are any.
    /// Held places stay, rounded half away from zero to the most places, filled up to the fewest.
    CString FormatDecimalText(std::string_view plain) const;
    /// The number as plain decimal text with the places that were read; zero without a sign, no superfluous
    /// zeros in front.
    CString ParseDecimalText(LPCTSTR pszText) const;

    /// Written from the shortest decimal that reads as the same double. NaN and infinity are refused.
    CString FormatDouble(double dValue) const;
    /// The double nearest to the number; refused when the number is too large, or too small to differ from 0.
    double ParseDouble(LPCTSTR pszText) const;

    /// The date and, unless the time of day is 00:00:00, a blank and hh:mm:ss. A date that does not exist, or
    /// outside the years 1753 to 9999, is refused.
    CString FormatDateTime(const NkFoDateTime& value) const;
    /// The date and, after one blank, h or hh ":" mm and optionally ":" ss; without them 00:00:00. With
    /// separators day and month have one or two characters and the year four or two digits, whatever the
    /// setting; without separators every part stands in full width. Throws error NkFoFehlerUhr when the
    /// current year is needed and cannot be read.
    NkFoDateTime ParseDateTime(LPCTSTR pszText) const;
    /// The date alone; the time of day is neither checked nor written.
    CString FormatDate(const NkFoDateTime& value) const;
    /// As ParseDateTime(), but a time of day is refused.
    NkFoDateTime ParseDate(LPCTSTR pszText) const;

    /// A duration or time of day from whole hours and the part below the hour: hundredths of an hour under
    /// FormatZeitDarstellungHundertstel (0 to 99), else minutes (0 to 59). When either part is negative, both
    /// are.
    CString FormatTime(LONG nHours, LONG nSubHour) const;
    /// Reads both parts; of a negative duration both are negative (or 0). The part below the hour may be
    /// absent and is 0 then. Nothing is stored when the text is refused.
    void ParseTime(LPCTSTR pszText, LONG& rnHours, LONG& rnSubHour) const;
    /// @}

    /// How a time format shows the part below the hour. Throws error NkFoFehlerArt for a format of another
    /// kind.
    FormatZeitDarstellung GetZeitDarstellung() const;

  private:
    enum class Kind : unsigned char { Text, Bool, Number, Date, Time };
    union Settings {
        nkfo::TextSettings text;
        nkfo::BoolSettings truth;
        nkfo::NumberSettings number;
        nkfo::DateSettings date;
        nkfo::TimeSettings time;
    };

    const nkfo::TextSettings& TextOf(const nkfo::Origin& origin) const;
    const nkfo::BoolSettings& BoolOf(const nkfo::Origin& origin) const;
    const nkfo::NumberSettings& NumberOf(const nkfo::Origin& origin) const;
    const nkfo::DateSettings& DateOf(const nkfo::Origin& origin) const;
    const nkfo::TimeSettings& TimeOf(const nkfo::Origin& origin) const;

    Settings m_settings;
    Kind m_kind;
};
