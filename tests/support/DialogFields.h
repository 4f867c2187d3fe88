#pragma once

/// @file
/// A field of a dialog for each value class: what it shows, what a person types, what the class refuses.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>

namespace dialogtest {

/// A value as a dialog shows it, another one as a person types it, and what its class refuses.
template <class Value>
struct Field;

/// The classes that take every text of their own default format use that one.
struct DefaultFormatRefuses {
    static const NkFormat* refusing() { return nullptr; }
};

template <>
struct Field<NkDtLong> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtLong";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtLong&)";
    static NkDtLong value() { return NkDtLong(-1234567); }
    static constexpr const char* shown = "-1234567";
    static constexpr const char* typed = " 42 ";
    static NkDtLong read() { return NkDtLong(42); }
    static constexpr const char* refused = "12a";
    static const NkFormat& format() {
        static const NkFormat format(20, 0, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                                     FormatVorzeichenHinten, FormatVorzeichenNurMinus, 0, '0', 0, '0');
        return format;
    }
    static constexpr const char* formatted = "1.234.567-";
};

template <>
struct Field<NkDtShort> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtShort";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtShort&)";
    static NkDtShort value() { return NkDtShort(-32768); }
    static constexpr const char* shown = "-32768";
    static constexpr const char* typed = "42";
    static NkDtShort read() { return NkDtShort(42); }
    static constexpr const char* refused = "32768";
    static const NkFormat& format() { return Field<NkDtLong>::format(); }
    static constexpr const char* formatted = "32.768-";
};

template <>
struct Field<NkDtDouble> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtDouble";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtDouble&)";
    static NkDtDouble value() { return NkDtDouble(-1234.25); }
    static constexpr const char* shown = "-1.234,25";
    static constexpr const char* typed = "0,5";
    static NkDtDouble read() { return NkDtDouble(0.5); }
    static constexpr const char* refused = "1234.25";
    static const NkFormat& format() {
        static const NkFormat format(20, 3, FormatDezimalTrennerPunkt, FormatTausenderTrennerOhne,
                                     FormatVorzeichenVorn, FormatVorzeichenPlusUndMinus, 0, '0', 3, '0');
        return format;
    }
    static constexpr const char* formatted = "-1234.250";
};

template <>
struct Field<NkDtDecimal> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtDecimal";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtDecimal&)";
    static NkDtDecimal value() { return NkDtDecimal("-1234.250"); }
    static constexpr const char* shown = "-1234.250";
    static constexpr const char* typed = "0.5";
    static NkDtDecimal read() { return NkDtDecimal("0.5"); }
    static constexpr const char* refused = "1,5";
    static const NkFormat& format() {
        static const NkFormat format(2147483647, 2147483647, FormatDezimalTrennerKomma,
                                     FormatTausenderTrennerPunkt, FormatVorzeichenVorn,
                                     FormatVorzeichenNurMinus, 0, '0', 0, '0');
        return format;
    }
    static constexpr const char* formatted = "-1.234,250";
};

template <>
struct Field<NkDtBool> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtBool";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtBool&)";
    static NkDtBool value() { return NkDtBool(TRUE); }
    static constexpr const char* shown = "Ja";
    static constexpr const char* typed = "NEIN";
    static NkDtBool read() { return NkDtBool(FALSE); }
    static constexpr const char* refused = "vielleicht";
    static const NkFormat& format() {
        static const NkFormat format(FormatModusKreuz, 1031);
        return format;
    }
    static constexpr const char* formatted = "X";
};

template <>
struct Field<NkDtChar> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtChar";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtChar&)";
    static NkDtChar value() { return NkDtChar('\xDF'); }
    static constexpr const char* shown = "\xDF";
    static constexpr const char* typed = "\x80";
    static NkDtChar read() { return NkDtChar('\x80'); }
    static constexpr const char* refused = "ab";
    static const NkFormat& format() {
        static const NkFormat format(1, kulNkFoValidLetters, FormatAuffuellenNicht, ' ');
        return format;
    }
    static constexpr const char* formatted = "\xDF";
};

template <>
struct Field<NkDtDateTime> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtDateTime";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtDateTime&)";
    static NkDtDateTime value() { return NkDtDateTime(29, 2, 2004, 13, 5, 9); }
    static constexpr const char* shown = "29.02.2004 13:05:09";
    static constexpr const char* typed = "1.12.1753";
    static NkDtDateTime read() { return NkDtDateTime(1, 12, 1753, 0, 0, 0); }
    static constexpr const char* refused = "29.02.2003";
    static const NkFormat& format() {
        static const NkFormat format(FormatDatumArtJahrMonatTag, FormatDatumTrennerBindestrich,
                                     FormatDatumJahrVierstellig, FormatDatumMonatZahl, 1, '0');
        return format;
    }
    static constexpr const char* formatted = "2004-02-29 13:05:09";
};

template <>
struct Field<NkDtDateZp> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtDateZp";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtDateZp&)";
    static NkDtDateZp value() { return NkDtDateZp(29, 2, 2004); }
    static constexpr const char* shown = "29.02.2004";
    static constexpr const char* typed = "01.12.1753";
    static NkDtDateZp read() { return NkDtDateZp(1, 12, 1753); }
    static constexpr const char* refused = "31.12.1752";
    static const NkFormat& format() { return Field<NkDtDateTime>::format(); }
    static constexpr const char* formatted = "2004-02-29";
};

template <>
struct Field<NkDtString> {
    static constexpr const char* name = "NkDtString";
    static constexpr const char* signature = "DDX_NkDtString(CDataExchange*,int,NkDtString&)";
    static NkDtString value() { return NkDtString("M\xFCller & S\xF6hne, \x80 5"); }
    static constexpr const char* shown = "M\xFCller & S\xF6hne, \x80 5";
    static constexpr const char* typed = " \xC4pfel ";
    static NkDtString read() { return NkDtString(" \xC4pfel "); }
    static constexpr const char* refused = "abc";
    static const NkFormat* refusing() {
        static const NkFormat format(0, kulNkFoValidDigits, FormatAuffuellenNicht, ' ');
        return &format;
    }
    static const NkFormat& format() {
        static const NkFormat format(20, kulNkFoValidAll, FormatAuffuellenAmAnfang, '*');
        return format;
    }
    static constexpr const char* formatted = "*M\xFCller & S\xF6hne, \x80 5";
};

template <>
struct Field<NkDtTime> : DefaultFormatRefuses {
    static constexpr const char* name = "NkDtTime";
    static constexpr const char* signature = "DDX_NkDtTyp(CDataExchange*,int,NkDtTime&)";
    static NkDtTime value() { return NkDtTime(-105, -30); }
    static constexpr const char* shown = "-105:30";
    static constexpr const char* typed = "7,25";
    static NkDtTime read() { return NkDtTime(7, 15); }
    static constexpr const char* refused = "7:60";
    static const NkFormat& format() {
        static const NkFormat format(FormatZeitArtDauer, FormatZeitDarstellungHundertstel,
                                     FormatVorzeichenHinten, FormatVorzeichenNurMinus, 7, 0, '0');
        return format;
    }
    static constexpr const char* formatted = "105,50-";
};

}  // namespace dialogtest
