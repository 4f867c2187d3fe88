#pragma once

/// @file
/// What the tests of the value classes share: errors as values, states as texts, archives as bytes.

#include <nkcp/CodePage.h>
#include <nkdt/NkDtBasis.h>
#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtExcep.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkeh/NkEhBasis.h>
#include <nkfw/Archive.h>
#include <nkfw/Exception.h>
#include <nkfw/File.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

/// All but the fraction, which no value holds.
inline bool operator==(const TIMESTAMP_STRUCT& a, const TIMESTAMP_STRUCT& b) {
    return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second;
}

namespace valuetest {

/// The process default working mode for a scope.
class DefaultMode {
  public:
    explicit DefaultMode(NkDtWorkingMode mode) : m_before(NkDtGetDefaultWorkingMode()) {
        NkDtSetDefaultWorkingMode(mode);
    }
    ~DefaultMode() { NkDtSetDefaultWorkingMode(m_before); }
    DefaultMode(const DefaultMode&) = delete;
    DefaultMode& operator=(const DefaultMode&) = delete;

  private:
    NkDtWorkingMode m_before;
};

/// UTF-8, as the sources are written in, as text of the library.
inline std::string cp1252(std::string_view utf8) {
    std::string text;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf8(utf8, text).complete) << utf8;
    return text;
}

// --- Errors -----------------------------------------------------------------------------------

using ErrorPtr = std::unique_ptr<NkEhBasis>;

/// The error that the operation raises, or null.
template <class Operation>
ErrorPtr errorOf(Operation&& operation) {
    try {
        std::forward<Operation>(operation)();
    } catch (NkEhBasis* caught) {
        return ErrorPtr(caught);
    }
    return nullptr;
}

/// The error that the operation raises; a failure of the test, and an error without number, if it raises none
/// or another one.
template <class Operation>
ErrorPtr expectError(ULONG number, Operation&& operation) {
    ErrorPtr error = errorOf(std::forward<Operation>(operation));
    if (error == nullptr) {
        ADD_FAILURE() << "no error, expected error " << number;
        error.reset(new NkEhBasis("", "", "", "", 0, 0, 0, nullptr, FALSE, 0, FALSE));
    } else {
        EXPECT_EQ(error->GetErrorNumber(), number) << error->Report().GetString();
    }
    return error;
}

/// Error 1 in place of the error @p cause.
template <class Operation>
ErrorPtr expectReplaced(ULONG cause, Operation&& operation) {
    ErrorPtr error = expectError(NkDtErrFolgefehler, std::forward<Operation>(operation));
    EXPECT_EQ(error->GetCauseNumber(), cause) << error->Report().GetString();
    EXPECT_FALSE(error->IsLogged());
    return error;
}

/// Where an operation's error says that it comes from.
struct ErrorCase {
    const char* name;
    std::function<void()> operation;
    ULONG number;
    const char* module;
    std::string classText;
    const char* function;
    BOOL final = TRUE;
    ULONG cause = 0;
};

inline void expectOrigins(const std::vector<ErrorCase>& cases) {
    for (const ErrorCase& each : cases) {
        SCOPED_TRACE(each.name);
        const ErrorPtr error = expectError(each.number, each.operation);
        EXPECT_STREQ(error->GetSourceFile(), each.module);
        EXPECT_EQ(error->GetClassText(), each.classText);
        EXPECT_STREQ(error->GetFunctionText(), each.function);
        EXPECT_EQ(error->IsLogged(), each.final);
        EXPECT_EQ(error->GetCauseNumber(), each.cause);
        EXPECT_EQ(error->GetTextNumber(), 0U);
        EXPECT_EQ(error->GetClassification1(), 1U);
        EXPECT_EQ(error->GetClassification2(), 1U);
        EXPECT_TRUE(error->IsKindOf(NkDtExcep::GetThisClass()));
    }
}

/// The framework exception that the operation throws; a failure of the test if it throws none.
template <class Exception, class Operation>
int expectException(Operation&& operation) {
    try {
        std::forward<Operation>(operation)();
    } catch (Exception* caught) {
        int cause = 0;
        if constexpr (requires { caught->m_cause; }) cause = caught->m_cause;
        caught->Delete();
        return cause;
    }
    ADD_FAILURE() << "no " << Exception::GetThisClass()->m_lpszClassName;
    return -1;
}

// --- States -----------------------------------------------------------------------------------

/// "defined", "missing", "null" or "undefined" (in mode 2), and " modified".
inline std::string stateOf(const NkDtBasis& value) {
    std::string state = value.IsDefined()   ? "defined"
                        : value.IsMissing() ? "missing"
                        : value.IsNull()    ? "null"
                                            : "undefined";
    if (value.IsModified()) state += " modified";
    return state;
}

/// The bytes of the text with its length; NUL is shown as "\0".
inline std::string bytesOf(const NkDtString& value) {
    std::string bytes;
    for (INT i = 0; i < value.GetLength(); ++i) {
        if (value[i] == '\0') {
            bytes += "\\0";
        } else {
            bytes += value[i];
        }
    }
    return bytes;
}

/// "'text' length/allocation length state".
inline std::string describe(const NkDtString& value) {
    return "'" + bytesOf(value) + "' " + std::to_string(value.GetLength()) + "/" +
           std::to_string(value.GetAllocLength()) + " " + stateOf(value);
}

/// The stored value as a text, whether it is defined or not: the external text, where that tells it and
/// people can read it.
template <class Value>
std::string textOf(const Value& value) {
    if constexpr (std::is_base_of_v<NkDtChar, Value>) {
        const TCHAR ch = value;
        return ch == '\0' ? std::string() : std::string(1, ch);
    } else if constexpr (std::is_base_of_v<NkDtBool, Value>) {
        NkDtBool null(value);
        null.SetWorkingMode(NkDtWmNull);  // a null value is read as it is stored
        return std::to_string(null.GetValue());
    } else if constexpr (std::is_base_of_v<NkDtDecimal, Value>) {
        char text[33];
        return value.DecimalToAscii(text);
    } else if constexpr (std::is_base_of_v<NkDtDateTime, Value>) {
        return static_cast<LPCTSTR>(value.MakeFormatString(1101));
    } else if constexpr (std::is_base_of_v<NkDtTime, Value>) {
        NkDtTime ticks(value);
        ticks.SetWorkingMode(NkDtWmDefined);  // SQL tells the ticks, but of a defined value alone
        return static_cast<LPCTSTR>(ticks.ConvToSQL());
    } else {
        BOOL defined = FALSE;
        USHORT version = 0;
        if constexpr (std::is_base_of_v<NkDtDouble, Value>) {
            const NkDtDouble number(static_cast<double>(value));
            return static_cast<LPCTSTR>(number.ConvToExtern(defined, version));
        } else {
            return static_cast<LPCTSTR>(value.ConvToExtern(defined, version));
        }
    }
}

/// "stored value state".
inline std::string describe(const NkDtLong& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtShort& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtDouble& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtDecimal& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtTime& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtDateTime& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtBool& value) {
    return textOf(value) + " " + stateOf(value);
}
inline std::string describe(const NkDtChar& value) {
    return "'" + textOf(value) + "' " + stateOf(value);
}

/// The four working modes as they can be passed, for loops.
inline constexpr NkDtWorkingMode kModes[] = {NkDtWmMissing, NkDtWmNull, NkDtWmDefined, NkDtWmDefault};
/// The three that can be stored.
inline constexpr NkDtWorkingMode kStoredModes[] = {NkDtWmMissing, NkDtWmNull, NkDtWmDefined};

// --- Archives ---------------------------------------------------------------------------------

using Bytes = std::vector<BYTE>;

/// What the body writes into an archive.
template <class Body>
Bytes written(Body&& body) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    std::forward<Body>(body)(archive);
    archive.Close();
    const BYTE* const data = file.GetData();
    return data == nullptr ? Bytes() : Bytes(data, data + file.GetLength());
}

/// Runs the body with an archive of these bytes.
template <class Body>
void reading(const Bytes& bytes, Body&& body) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    std::forward<Body>(body)(archive);
}

template <class Value>
Bytes stored(Value& value) {
    return written([&](CArchive& archive) { value.Serialize(archive); });
}

template <class Value>
void load(Value& value, const Bytes& bytes) {
    reading(bytes, [&](CArchive& archive) { value.Serialize(archive); });
}

// --- One value of each class -------------------------------------------------------------------

/// What the typed tests need to know of a class: some values that differ, the empty one first.
template <class Value>
struct Sample;

template <>
struct Sample<NkDtLong> {
    static constexpr const char* name = "NkDtLong";
    static constexpr NkDtTyps typ = NkDtTypLong;
    static constexpr const char* module = ".\\dtlong.cc";
    static constexpr const char* emptyText = "0";  // external text of the empty value
    using Field = long;
    static NkDtLong empty() { return NkDtLong(0); }
    static NkDtLong one() { return NkDtLong(2147483647); }
    static NkDtLong other() { return NkDtLong(-17); }
    static constexpr const char* oneText = "2147483647";
    static constexpr const char* otherText = "-17";
    static Field oneField() { return 2147483647; }
    static Field otherField() { return -17; }
    static void setFromSql(NkDtLong& value, bool one) { value.SetFromSQL(one ? 2147483647L : -17L); }
    static constexpr const char* oneSql = "2147483647";
};

template <>
struct Sample<NkDtShort> {
    static constexpr const char* name = "NkDtShort";
    static constexpr NkDtTyps typ = NkDtTypShort;
    static constexpr const char* module = ".\\dtshort.cc";
    static constexpr const char* emptyText = "0";
    using Field = int;
    static NkDtShort empty() { return NkDtShort(0); }
    static NkDtShort one() { return NkDtShort(32767); }
    static NkDtShort other() { return NkDtShort(-17); }
    static constexpr const char* oneText = "32767";
    static constexpr const char* otherText = "-17";
    static Field oneField() { return 32767; }
    static Field otherField() { return -17; }
    static void setFromSql(NkDtShort& value, bool one) { value.SetFromSQL(one ? short{32767} : short{-17}); }
    static constexpr const char* oneSql = "32767";
};

template <>
struct Sample<NkDtString> {
    static constexpr const char* name = "NkDtString";
    static constexpr NkDtTyps typ = NkDtTypString;
    static constexpr const char* module = ".\\dtstrfkt.cc";
    static constexpr const char* emptyText = "";
    using Field = CString;
    static NkDtString empty() { return NkDtString(""); }
    static NkDtString one() { return NkDtString("M\xFCller"); }
    static NkDtString other() { return NkDtString("a text that is too long for a block of the pool"); }
    static constexpr const char* oneText = "M\xFCller";
    static constexpr const char* otherText = "a text that is too long for a block of the pool";
    static Field oneField() { return CString("M\xFCller"); }
    static Field otherField() { return CString("a text that is too long for a block of the pool"); }
    static void setFromSql(NkDtString& value, bool one) {
        const std::string text = one ? oneText : otherText;
        value.SetFromSQL(text.c_str(), static_cast<INT>(text.size()), 1252);
    }
    static constexpr const char* oneSql = "'M\xFCller'";
};

template <>
struct Sample<NkDtChar> {
    static constexpr const char* name = "NkDtChar";
    static constexpr NkDtTyps typ = NkDtTypChar;
    static constexpr const char* module = ".\\dtchar.cc";
    static constexpr const char* emptyText = "";
    using Field = CString;
    static NkDtChar empty() { return NkDtChar('\0'); }
    static NkDtChar one() { return NkDtChar('\xFC'); }
    static NkDtChar other() { return NkDtChar('a'); }
    static constexpr const char* oneText = "\xFC";
    static constexpr const char* otherText = "a";
    static Field oneField() { return CString("\xFC"); }
    static Field otherField() { return CString("a"); }
    static void setFromSql(NkDtChar& value, bool one) { value.SetFromSQL(one ? '\xFC' : 'a', 1252); }
    static constexpr const char* oneSql = "'\xFC'";
};

template <>
struct Sample<NkDtBool> {
    static constexpr const char* name = "NkDtBool";
    static constexpr NkDtTyps typ = NkDtTypBool;
    static constexpr const char* module = ".\\dtbool.cc";
    static constexpr const char* emptyText = "0";
    using Field = BOOL;
    static NkDtBool empty() { return NkDtBool(FALSE); }
    static NkDtBool one() { return NkDtBool(TRUE); }
    static NkDtBool other() { return NkDtBool(FALSE); }
    static constexpr const char* oneText = "1";
    static constexpr const char* otherText = "0";
    static Field oneField() { return TRUE; }
    static Field otherField() { return FALSE; }
    static void setFromSql(NkDtBool& value, bool one) { value.SetFromSQL(one ? '1' : '0'); }
    static constexpr const char* oneSql = "'1'";
};

template <>
struct Sample<NkDtDouble> {
    static constexpr const char* name = "NkDtDouble";
    static constexpr NkDtTyps typ = NkDtTypDouble;
    static constexpr const char* module = ".\\dtdouble.cc";
    static constexpr const char* emptyText = "0";
    using Field = double;
    static NkDtDouble empty() { return NkDtDouble(0.0); }
    static NkDtDouble one() { return NkDtDouble(1234.5); }
    static NkDtDouble other() { return NkDtDouble(-0.25); }
    static constexpr const char* oneText = "1234.5";
    static constexpr const char* otherText = "-0.25";
    static Field oneField() { return 1234.5; }
    static Field otherField() { return -0.25; }
    static void setFromSql(NkDtDouble& value, bool one) { value.SetFromSQL(one ? 1234.5 : -0.25); }
    static constexpr const char* oneSql = "1234.5";
};

template <>
struct Sample<NkDtDecimal> {
    static constexpr const char* name = "NkDtDecimal";
    static constexpr NkDtTyps typ = NkDtTypDecimal;
    static constexpr const char* module = ".\\Dtdecima.cc";
    static constexpr const char* emptyText = "0";
    using Field = CString;
    static NkDtDecimal empty() { return NkDtDecimal(0); }
    static NkDtDecimal one() { return NkDtDecimal("1234.50"); }
    static NkDtDecimal other() { return NkDtDecimal("-9876543210987654321.0625"); }
    static constexpr const char* oneText = "1234.5";
    static constexpr const char* otherText = "-9876543210987654321.0625";
    static Field oneField() { return CString("1234.50"); }
    static Field otherField() { return CString("-9876543210987654321.0625"); }
    static void setFromSql(NkDtDecimal& value, bool one) { value.SetFromSQL(one ? "1234.50" : otherText); }
    static constexpr const char* oneSql = "1234.50";
};

template <>
struct Sample<NkDtTime> {
    static constexpr const char* name = "NkDtTime";
    static constexpr NkDtTyps typ = NkDtTypTime;
    static constexpr const char* module = ".\\dttime.cc";
    static constexpr const char* emptyText = "0";
    using Field = LONG;
    static NkDtTime empty() { return NkDtTime(0, 0); }
    static NkDtTime one() { return NkDtTime(25, 30); }
    static NkDtTime other() { return NkDtTime(-105, -30); }
    static constexpr const char* oneText = "30600";  // ticks
    static constexpr const char* otherText = "-126600";
    static Field oneField() { return 30600; }
    static Field otherField() { return -126600; }
    static void setFromSql(NkDtTime& value, bool one) { value.SetFromSQL(one ? 30600 : -126600); }
    static constexpr const char* oneSql = "30600";
};

template <>
struct Sample<NkDtDateTime> {
    static constexpr const char* name = "NkDtDateTime";
    static constexpr NkDtTyps typ = NkDtTypDateTime;
    static constexpr const char* module = ".\\Dtdatime.cc";
    static constexpr const char* emptyText = "01.01.1900 00:00:00";
    using Field = TIMESTAMP_STRUCT;
    static NkDtDateTime empty() { return NkDtDateTime(1, 1, 1900); }
    static NkDtDateTime one() { return NkDtDateTime(5, 3, 2004, 14, 7, 0); }
    static NkDtDateTime other() { return NkDtDateTime(29, 2, 2000, 0, 30, 0); }
    static constexpr const char* oneText = "05.03.2004 14:07:00";
    static constexpr const char* otherText = "29.02.2000 00:30:00";
    static Field oneField() { return {2004, 3, 5, 14, 7, 0, 0}; }
    static Field otherField() { return {2000, 2, 29, 0, 30, 0, 0}; }
    static void setFromSql(NkDtDateTime& value, bool one) {
        value.SetFromSQL(one ? "M\xE4r  5 2004 02:07PM" : "Feb 29 2000 12:30AM");
    }
    static constexpr const char* oneSql = "'05.03.2004 14:07'";
};

template <>
struct Sample<NkDtDateZp> {
    static constexpr const char* name = "NkDtDateZp";
    static constexpr NkDtTyps typ = NkDtTypDateZp;
    static constexpr const char* module = ".\\Dtdatzp.cc";
    static constexpr const char* emptyText = "01.01.1900 00:00:00";
    using Field = TIMESTAMP_STRUCT;
    static NkDtDateZp empty() { return NkDtDateZp(1, 1, 1900); }
    static NkDtDateZp one() { return NkDtDateZp(5, 3, 2004); }
    static NkDtDateZp other() { return NkDtDateZp(29, 2, 2000); }
    static constexpr const char* oneText = "05.03.2004 00:00:00";
    static constexpr const char* otherText = "29.02.2000 00:00:00";
    static Field oneField() { return {2004, 3, 5, 0, 0, 0, 0}; }
    static Field otherField() { return {2000, 2, 29, 0, 0, 0, 0}; }
    static void setFromSql(NkDtDateZp& value, bool one) {
        value.SetFromSQL(one ? "M\xE4r  5 2004 12:00AM" : "Feb 29 2000 12:00AM");
    }
    static constexpr const char* oneSql = "'05.03.2004 00:00'";
};

/// How the samples are shown without a format, and their external texts; of most classes it is all one text,
/// and one module has all operations.
template <class Value>
struct Forms {
    static constexpr const char* oneShown = Sample<Value>::oneText;
    static constexpr const char* otherShown = Sample<Value>::otherText;
    static constexpr const char* oneExtern = Sample<Value>::oneText;
    static constexpr const char* otherExtern = Sample<Value>::otherText;
    static constexpr const char* undefinedExtern = Sample<Value>::emptyText;
    static constexpr const char* module = Sample<Value>::module;  // of the conversions
};
template <>
struct Forms<NkDtDecimal> {
    static constexpr const char* oneShown = "1234.50";
    static constexpr const char* otherShown = "-9876543210987654321.0625";
    static constexpr const char* oneExtern = "1.23450E+003";
    static constexpr const char* otherExtern = "-9.8765432109876543210625E+018";
    static constexpr const char* undefinedExtern = "";
    static constexpr const char* module = ".\\Dtdecfkt.cc";
};
template <>
struct Forms<NkDtDouble> {
    static constexpr const char* module = Sample<NkDtDouble>::module;
    static constexpr const char* oneShown = "1.234,5";
    static constexpr const char* otherShown = "-0,25";
    static constexpr const char* oneExtern = "1234.5";
    static constexpr const char* otherExtern = "-0.25";
    static constexpr const char* undefinedExtern = "";
};
template <>
struct Forms<NkDtTime> {
    static constexpr const char* module = Sample<NkDtTime>::module;
    static constexpr const char* oneShown = "25:30";
    static constexpr const char* otherShown = "-105:30";
    static constexpr const char* oneExtern = "C01000000013000";
    static constexpr const char* otherExtern = "C-04000000093000";
    static constexpr const char* undefinedExtern = "";
};
template <>
struct Forms<NkDtDateTime> {
    static constexpr const char* module = ".\\Dtdatimo.cc";
    static constexpr const char* oneShown = "05.03.2004 14:07:00";
    static constexpr const char* otherShown = "29.02.2000 00:30:00";
    static constexpr const char* oneExtern = "C05032004140700";
    static constexpr const char* otherExtern = "C29022000003000";
    static constexpr const char* undefinedExtern = "";
};
template <>
struct Forms<NkDtDateZp> {
    static constexpr const char* module = ".\\Dtdatimo.cc";
    static constexpr const char* oneShown = "05.03.2004";
    static constexpr const char* otherShown = "29.02.2000";
    static constexpr const char* oneExtern = "D05032004";
    static constexpr const char* otherExtern = "D29022000";
    static constexpr const char* undefinedExtern = "";
};
template <>
struct Forms<NkDtBool> {
    static constexpr const char* module = Sample<NkDtBool>::module;
    static constexpr const char* oneShown = "Ja";
    static constexpr const char* otherShown = "Nein";
    static constexpr const char* oneExtern = "J";
    static constexpr const char* otherExtern = "N";
    static constexpr const char* undefinedExtern = "";
};

/// The classes whose constructors, `Clear` and conversions show error 1 whatever failed inside.
template <class Value>
inline constexpr bool replacesErrors =
    std::is_base_of_v<NkDtTime, Value> || std::is_base_of_v<NkDtDateTime, Value>;

/// The error that the class raises when it refuses something from outside; its number and text, or those of
/// its cause, are the ones given.
template <class Value, class Operation>
ErrorPtr expectRefused(ULONG number, const std::string& text, Operation&& operation) {
    ErrorPtr error;
    if constexpr (replacesErrors<Value>) {
        error = expectReplaced(number, std::forward<Operation>(operation));
        EXPECT_EQ(error->GetCauseText(), text);
    } else {
        error = expectError(number, std::forward<Operation>(operation));
        EXPECT_EQ(error->GetErrorText(), text);
        EXPECT_TRUE(error->IsLogged());
    }
    return error;
}

/// An application's own class derived from a value class, with what that keeps protected.
template <class Value>
class Derived : public Value {
  public:
    Derived() = default;
    explicit Derived(const Value& value) : Value(value) {}
    using Value::IsHusk;
    using Value::operator=;
    void SetModified(BOOL fModified) override {
        ++calls;
        Value::SetModified(fModified);
    }

    int calls = 0;
};

/// The empty value of a mode, unmodified; in mode 2 defined, where a date would be built with the clock's
/// time.
template <class Value>
Value emptyIn(NkDtWorkingMode mode) {
    Value value(mode);
    value.Clear();
    value.SetModified(FALSE);
    return value;
}

/// A value in each of the states that a program can bring it into.
template <class Value>
std::vector<Value> states() {
    std::vector<Value> values;
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            Value undefined = emptyIn<Value>(mode);
            undefined.SetModified(modified);
            values.push_back(undefined);
            Value defined(mode);
            defined = Sample<Value>::one();
            defined.SetModified(modified);
            values.push_back(defined);
        }
    }
    return values;
}

using ValueClasses = ::testing::Types<NkDtLong, NkDtShort, NkDtDouble, NkDtDecimal, NkDtTime, NkDtDateTime,
                                      NkDtDateZp, NkDtString, NkDtChar, NkDtBool>;

struct ClassNames {
    template <class Value>
    static std::string GetName(int) {
        return Sample<Value>::name;
    }
};

}  // namespace valuetest
