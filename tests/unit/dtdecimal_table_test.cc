// Holds NkDtDecimal against the table decimal_values.tsv, which tests/models/decimal_values.py generates from
// the rules; the model explains the columns.
//
// A row is carried out as it stands: build the operands in their states, apply the operation, write error,
// result and final state the way the table writes them, compare.

#include <bit>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <nkdec/Decimal96.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkeh/NkEhBasis.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Currency.h>
#include <nkfw/Exception.h>
#include <nkfw/Recordset.h>

#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::size_t kMinimumRows = 60'000;
constexpr std::size_t kReportedMismatches = 20;
constexpr std::size_t kRowsToOneUnderValgrind = 41;  // prime, since operations take turns

// --- The table's notation ---------------------------------------------------------------------

// Cuts the part before the next separator off the rest; all of it when there is none.
std::string_view take(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest = end == std::string_view::npos ? ""sv : rest.substr(end + 1);
    return part;
}

template <class Integer = INT>
Integer number(std::string_view cell, int base = 10) {
    Integer value = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value, base);
    if (error != std::errc() || end != cell.data() + cell.size()) {
        throw std::invalid_argument("not a number in the table: " + std::string(cell));
    }
    return value;
}

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string unquoted(std::string_view cell) {
    return std::string(cell.substr(1, cell.size() - 2));
}

std::string hexOf(const BYTE* bytes, std::size_t count) {
    constexpr auto digits = "0123456789abcdef"sv;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

valuetest::Bytes bytesOf(std::string_view hex) {
    valuetest::Bytes bytes;
    for (std::size_t i = 0; hex != "empty" && i + 1 < hex.size(); i += 2) {
        bytes.push_back(number<BYTE>(hex.substr(i, 2), 16));
    }
    return bytes;
}

double doubleOf(std::string_view hex) {
    return std::bit_cast<double>(number<ULONGLONG>(hex, 16));
}

std::string hexOf(double value) {
    const auto bits = std::bit_cast<ULONGLONG>(value);
    BYTE bytes[8];
    for (std::size_t i = 0; i < 8; ++i)
        bytes[i] = static_cast<BYTE>(bits >> (56 - 8 * i));
    return hexOf(bytes, 8);
}

DEC recordOf(std::string_view hex) {
    const valuetest::Bytes bytes = bytesOf(hex);
    DEC record;
    std::memcpy(&record, bytes.data(), sizeof record);
    return record;
}

std::string hexOf(const DEC& record) {
    BYTE bytes[sizeof record];
    std::memcpy(bytes, &record, sizeof record);
    return hexOf(bytes, sizeof bytes);
}

// count:status
COleCurrency currencyOf(std::string_view cell) {
    CURRENCY units{};
    units.int64 = number<LONGLONG>(take(cell, ':'));
    COleCurrency currency(units);
    currency.SetStatus(cell == "valid"     ? COleCurrency::valid
                       : cell == "invalid" ? COleCurrency::invalid
                                           : COleCurrency::null);
    return currency;
}

std::string textOf(const COleCurrency& currency) {
    return std::to_string(currency.m_cur.int64) +
           (currency.GetStatus() == COleCurrency::valid ? ":valid" : ":none");
}

// operation, default, left and right; then error, cause, result and final state, still in one piece
struct Row {
    explicit Row(std::string_view text) : line(text) {
        operation = take(text, '\t');
        defaultMode = static_cast<NkDtWorkingMode>(number(take(text, '\t')));
        left = take(text, '\t');
        right = take(text, '\t');
        outcome = text;
    }

    std::string_view line;
    std::string_view operation;
    NkDtWorkingMode defaultMode;
    std::string_view left;
    std::string_view right;
    std::string_view outcome;
};

// --- Operands ---------------------------------------------------------------------------------

// mode:defined:mantissa:scale:modified
struct State {
    explicit State(std::string_view cell) {
        mode = static_cast<NkDtWorkingMode>(number(take(cell, ':')));
        defined = number(take(cell, ':'));
        const Decimal96 mantissa(take(cell, ':'));
        stored = Decimal96::fromMantissa(mantissa.mantissaHigh(), mantissa.mantissaLow(),
                                         number<SHORT>(take(cell, ':')));
        modified = number(cell);
    }

    NkDtWorkingMode mode;
    BOOL defined;
    Decimal96 stored;
    BOOL modified;
};

// Only a value in mode 2 stores a number while it stays undefined; and only a change of the default gets an
// undefined value into mode 2.
NkDtDecimal undefinedWith(const Decimal96& stored) {
    NkDtDecimal x(NkDtWmMissing);
    const valuetest::DefaultMode defaultMode(NkDtWmDefined);
    x.SetWorkingMode(NkDtWmDefault);
    x = NkDtDecimal(stored);
    return x;
}

NkDtDecimal operandOf(std::string_view cell) {
    const State wanted(cell);
    NkDtDecimal x = wanted.defined ? NkDtDecimal(wanted.stored) : undefinedWith(wanted.stored);
    if (x.GetWorkingMode() != wanted.mode) x.SetWorkingMode(wanted.mode);
    x.SetModified(wanted.modified);
    return x;
}

// Without the point and the zeros in front: the mantissa.
std::string digitsOf(std::string_view text) {
    std::string digits;
    for (const char c : text) {
        if (c != '.' && c != '-' && (c != '0' || !digits.empty())) digits += c;
    }
    return digits.empty() ? "0" : (text.front() == '-' ? "-" : "") + digits;
}

std::string mantissaOf(const DEC& record) {
    const ULONGLONG magnitude = static_cast<ULONGLONG>(record.high) << 32 | record.low;
    return (record.sign != 0 ? "-" : "") + std::to_string(magnitude);
}

// Scales that no computing gives come from records, which show them.
std::string storedIn(const NkDtDecimal& value) {
    NkDtDecimal x(value);
    x.SetWorkingMode(NkDtWmDefined);
    const INT scale = x.GetPrecision();
    BOOL defined = FALSE;
    const bool isPlain = scale >= 0 && scale <= Decimal96::maxScale;
    return (isPlain ? digitsOf(x.ConvToSQL().GetValue()) : mantissaOf(x.ConvToBTR(defined))) + ":" +
           std::to_string(scale);
}

std::string stateOf(const NkDtDecimal& x) {
    return std::to_string(x.GetWorkingMode()) + ":" + std::to_string(x.IsDefined()) + ":" + storedIn(x) +
           ":" + std::to_string(x.IsModified());
}

// "mode modified undefined" or "mode modified "text""
NkDtString textOperand(std::string_view cell) {
    const auto mode = static_cast<NkDtWorkingMode>(number(take(cell, ' ')));
    const BOOL modified = number(take(cell, ' '));
    NkDtString text(mode);
    if (cell != "undefined") text = unquoted(cell).c_str();
    text.SetModified(modified);
    return text;
}

// mode:defined:stored:modified of another number class
template <class Value, class Stored>
Value numberOperand(std::string_view cell, Stored (*read)(std::string_view)) {
    Value value(static_cast<NkDtWorkingMode>(number(take(cell, ':'))));
    const BOOL defined = number(take(cell, ':'));
    const Stored stored = read(take(cell, ':'));
    if (defined) value = stored;
    value.SetModified(number(cell));
    return value;
}

INT intOf(std::string_view cell) {
    return number(cell);
}

const NkFormat& formatOf(std::string_view name) {
    static const NkFormat german(2147483647, 2147483647, FormatDezimalTrennerKomma,
                                 FormatTausenderTrennerPunkt, FormatVorzeichenVorn, FormatVorzeichenNurMinus,
                                 0, '0', 0, '0');
    static const NkFormat amount(12, 2, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                                 FormatVorzeichenHinten, FormatVorzeichenNurMinus, 0, '0', 2, '0');
    return name == "german" ? german : amount;
}

// "x+y", "x<=y", "Assign(y)"
bool hasDecimalOnTheRight(std::string_view operation) {
    return operation == "Assign(y)" || (operation.size() <= 4 && operation.ends_with('y'));
}

// --- One row under way -------------------------------------------------------------------------

class Case {
  public:
    explicit Case(const Row& row) : m_row(row) {
        if (row.left != "-") m_x.emplace(operandOf(row.left));
        if (hasDecimalOnTheRight(row.operation) && row.right != "self") m_y.emplace(operandOf(row.right));
    }

    // Operands; y is x itself where the table says "self".
    NkDtDecimal& x() { return *m_x; }
    const NkDtDecimal& y() { return m_y ? *m_y : *m_x; }
    INT n() const { return number(m_row.right); }
    double d() const { return doubleOf(m_row.right); }
    std::string_view right() const { return m_row.right; }

    void yields(const NkDtDecimal& result) { m_result = stateOf(result); }
    void yieldsNumber(LONGLONG result) { m_result = std::to_string(result); }
    void yieldsTruth(bool result) { m_result = result ? "1" : "0"; }
    void yieldsText(std::string result) { m_result = std::move(result); }

    void fails(std::string error, ULONG cause = 0) {
        m_error = std::move(error);
        m_cause = cause;
    }

    // What is wrong before the operation starts; empty if the operands are as the row has them.
    std::string wrongOperand() const {
        if (m_x && stateOf(*m_x) != m_row.left) return "left operand became " + stateOf(*m_x);
        if (m_y && stateOf(*m_y) != m_row.right) return "right operand became " + stateOf(*m_y);
        return {};
    }

    bool rightIsUnchanged() const { return !m_y || stateOf(*m_y) == m_row.right; }

    std::string outcome() const {
        return m_error + "\t" + std::to_string(m_cause) + "\t" + m_result + "\t" +
               (m_x ? stateOf(*m_x) : "-"s);
    }

  private:
    const Row& m_row;
    std::optional<NkDtDecimal> m_x;
    std::optional<NkDtDecimal> m_y;
    std::string m_error = "0";
    ULONG m_cause = 0;
    std::string m_result = "-";
};

// --- The operations by the table's names ---------------------------------------------------------

using Operations = std::map<std::string, void (*)(Case&), std::less<>>;

void addDecimals(Operations& operations) {
    operations["x+y"] = [](Case& c) { c.yields(c.x() + c.y()); };
    operations["x-y"] = [](Case& c) { c.yields(c.x() - c.y()); };
    operations["x*y"] = [](Case& c) { c.yields(c.x() * c.y()); };
    operations["x/y"] = [](Case& c) { c.yields(c.x() / c.y()); };
    operations["x%y"] = [](Case& c) { c.yields(c.x() % c.y()); };
    operations["x<y"] = [](Case& c) { c.yieldsTruth(c.x() < c.y()); };
    operations["x>y"] = [](Case& c) { c.yieldsTruth(c.x() > c.y()); };
    operations["x<=y"] = [](Case& c) { c.yieldsTruth(c.x() <= c.y()); };
    operations["x>=y"] = [](Case& c) { c.yieldsTruth(c.x() >= c.y()); };
    operations["x==y"] = [](Case& c) { c.yieldsTruth(c.x() == c.y()); };
    operations["x!=y"] = [](Case& c) { c.yieldsTruth(c.x() != c.y()); };
    operations["x+=y"] = [](Case& c) { c.x() += c.y(); };
    operations["x-=y"] = [](Case& c) { c.x() -= c.y(); };
    operations["x=y"] = [](Case& c) { c.x() = c.y(); };
    operations["Assign(y)"] = [](Case& c) { c.x().Assign(c.y()); };
    operations["++x"] = [](Case& c) { ++c.x(); };
    operations["x++"] = [](Case& c) { c.x()++; };
    operations["--x"] = [](Case& c) { --c.x(); };
    operations["x--"] = [](Case& c) { c.x()--; };
}

// A plain number of a row, which the names call `letter`.
template <auto read>
void addPlainNumbers(Operations& operations, const std::string& letter) {
    operations["x+" + letter] = [](Case& c) { c.yields(c.x() + (c.*read)()); };
    operations["x-" + letter] = [](Case& c) { c.yields(c.x() - (c.*read)()); };
    operations["x*" + letter] = [](Case& c) { c.yields(c.x() * (c.*read)()); };
    operations["x/" + letter] = [](Case& c) { c.yields(c.x() / (c.*read)()); };
    operations["x%" + letter] = [](Case& c) { c.yields(c.x() % (c.*read)()); };
    operations[letter + "+x"] = [](Case& c) { c.yields((c.*read)() + c.x()); };
    operations[letter + "-x"] = [](Case& c) { c.yields((c.*read)() - c.x()); };
    operations[letter + "*x"] = [](Case& c) { c.yields((c.*read)() * c.x()); };
    operations[letter + "/x"] = [](Case& c) { c.yields((c.*read)() / c.x()); };
    operations[letter + "%x"] = [](Case& c) { c.yields((c.*read)() % c.x()); };
    operations["x<" + letter] = [](Case& c) { c.yieldsTruth(c.x() < (c.*read)()); };
    operations["x>" + letter] = [](Case& c) { c.yieldsTruth(c.x() > (c.*read)()); };
    operations["x<=" + letter] = [](Case& c) { c.yieldsTruth(c.x() <= (c.*read)()); };
    operations["x>=" + letter] = [](Case& c) { c.yieldsTruth(c.x() >= (c.*read)()); };
    operations["x==" + letter] = [](Case& c) { c.yieldsTruth(c.x() == (c.*read)()); };
    operations["x!=" + letter] = [](Case& c) { c.yieldsTruth(c.x() != (c.*read)()); };
    operations[letter + "<x"] = [](Case& c) { c.yieldsTruth((c.*read)() < c.x()); };
    operations[letter + ">x"] = [](Case& c) { c.yieldsTruth((c.*read)() > c.x()); };
    operations[letter + "<=x"] = [](Case& c) { c.yieldsTruth((c.*read)() <= c.x()); };
    operations[letter + ">=x"] = [](Case& c) { c.yieldsTruth((c.*read)() >= c.x()); };
    operations[letter + "==x"] = [](Case& c) { c.yieldsTruth((c.*read)() == c.x()); };
    operations[letter + "!=x"] = [](Case& c) { c.yieldsTruth((c.*read)() != c.x()); };
    operations["x+=" + letter] = [](Case& c) { c.x() += (c.*read)(); };
    operations["x-=" + letter] = [](Case& c) { c.x() -= (c.*read)(); };
    operations["x=" + letter] = [](Case& c) { c.x() = (c.*read)(); };
}

void addConstruction(Operations& operations) {
    operations["T(mode)"] = [](Case& c) { c.yields(NkDtDecimal(static_cast<NkDtWorkingMode>(c.n()))); };
    operations["T(n)"] = [](Case& c) { c.yields(NkDtDecimal(c.n())); };
    operations["T(d)"] = [](Case& c) { c.yields(NkDtDecimal(c.d())); };
    operations["T(text)"] = [](Case& c) {
        const std::string text = c.right() == "null" ? "" : unquoted(c.right());
        const LPCTSTR given = c.right() == "null" ? nullptr : text.c_str();
        c.yields(NkDtDecimal(given));
    };
    operations["T(string)"] = [](Case& c) { c.yields(NkDtDecimal(textOperand(c.right()))); };
    operations["T(long)"] = [](Case& c) { c.yields(NkDtDecimal(numberOperand<NkDtLong>(c.right(), intOf))); };
    operations["T(short)"] = [](Case& c) {
        c.yields(NkDtDecimal(numberOperand<NkDtShort>(c.right(), intOf)));
    };
    operations["T(double)"] = [](Case& c) {
        c.yields(NkDtDecimal(numberOperand<NkDtDouble>(c.right(), doubleOf)));
    };
    operations["T(currency)"] = [](Case& c) { c.yields(NkDtDecimal(currencyOf(c.right()))); };
    operations["T(x)"] = [](Case& c) { c.yields(NkDtDecimal(std::as_const(c.x()))); };
    operations["T(move(x))"] = [](Case& c) { c.yields(NkDtDecimal(std::move(c.x()))); };
    operations["NewObject"] = [](Case& c) {
        const std::unique_ptr<NkDtBasis> made(c.x().NewObject());
        c.yields(dynamic_cast<const NkDtDecimal&>(*made));
    };
}

void addStateAndRounding(Operations& operations) {
    operations["x=currency"] = [](Case& c) { c.x() = currencyOf(c.right()); };
    operations["Assign(long)"] = [](Case& c) { c.x().Assign(numberOperand<NkDtLong>(c.right(), intOf)); };
    operations["Assign(string)"] = [](Case& c) { c.x().Assign(textOperand(c.right())); };
    operations["Clear"] = [](Case& c) { c.x().Clear(); };
    operations["IsDefined"] = [](Case& c) { c.yieldsNumber(c.x().IsDefined()); };
    operations["IsMissing"] = [](Case& c) { c.yieldsNumber(c.x().IsMissing()); };
    operations["IsNull"] = [](Case& c) { c.yieldsNumber(c.x().IsNull()); };
    operations["IsDecimal0"] = [](Case& c) { c.yieldsNumber(c.x().IsDecimal0()); };
    operations["GetPrecision"] = [](Case& c) { c.yieldsNumber(c.x().GetPrecision()); };
    operations["SetModified(n)"] = [](Case& c) { c.x().SetModified(c.n()); };
    operations["SetWorkingMode(n)"] = [](Case& c) {
        c.x().SetWorkingMode(static_cast<NkDtWorkingMode>(c.n()));
    };
    operations["Truncate"] = [](Case& c) { c.x().Truncate(number<USHORT>(c.right())); };
    operations["Round"] = [](Case& c) {
        std::string_view kind = c.right();
        const auto power = number<SHORT>(take(kind, ':'));
        c.x().Round(power, static_cast<NkDtDecimal::Rundungsart>(number(kind)));
    };
}

// "null" or a quoted text
void setFromSql(Case& c) {
    if (c.right() == "null") {
        c.x().SetFromSQL(nullptr);
    } else {
        c.x().SetFromSQL(unquoted(c.right()).c_str());
    }
}

void setFromRecordSet(Case& c) {
    CRecordset rs;
    const bool isNull = c.right() == "null";
    const CString field(isNull ? "5" : unquoted(c.right()).c_str());
    rs.SetFieldNull(const_cast<CString*>(&field), isNull ? TRUE : FALSE);
    c.x().SetFromRecordSet(rs, field);
}

void convToRecordSet(Case& c) {
    constexpr INT roomForAnyNumber = 40;
    CRecordset rs;
    CString field;
    std::strcpy(field.GetBuffer(roomForAnyNumber), "untouched");
    field.ReleaseBuffer();
    rs.SetFieldNull(&field, c.x().IsDefined());  // the opposite of what is to come
    c.x().ConvToRecordSet(rs, field);
    const bool isNull = rs.IsFieldNull(&field) != FALSE;
    c.yieldsText(!isNull                              ? quoted(field.GetString())
                 : field.GetString() == "untouched"sv ? "null"s
                                                      : "null, but written"s);
}

// A format by name: one is given, the other one the object's own.
const NkFormat* chosenFormat(Case& c, std::string_view name) {
    if (name == "german") return &formatOf(name);
    c.x().SetFormat(name == "amount" ? &formatOf(name) : nullptr);
    return nullptr;
}

void convToOfl(Case& c, std::string_view name) {
    c.yieldsText(quoted(c.x().ConvToOFL(chosenFormat(c, name)).GetString()));
}

// A format's name and a quoted text
void setFromOfl(Case& c) {
    std::string_view text = c.right();
    const NkFormat* const format = chosenFormat(c, take(text, ' '));
    c.x().SetFromOFL(unquoted(text).c_str(), format);
}

// "version flag null", "version flag undefined" or "version flag "text""
void setFromExtern(Case& c) {
    std::string_view rest = c.right();
    const auto version = number<USHORT>(take(rest, ' '));
    const BOOL flag = number(take(rest, ' '));
    if (rest == "null") return c.x().SetFromExtern(nullptr, flag, version);
    NkDtString text(NkDtWmMissing);
    if (rest != "undefined") text = unquoted(rest).c_str();
    c.x().SetFromExtern(&text, flag, version);
}

void convToExtern(Case& c) {
    BOOL defined = -1;
    USHORT version = 0;
    const NkDtString text = c.x().ConvToExtern(defined, version);
    c.yieldsText(std::to_string(defined) + " " + std::to_string(version) + " " +
                 (text.IsDefined() ? quoted(text.GetValue()) : "undefined"));
}

// A flag and a record
void setFromBtr(Case& c) {
    std::string_view record = c.right();
    const BOOL flag = number(take(record, ' '));
    c.x().SetFromBTR(recordOf(record), flag);
}

void convToBtr(Case& c) {
    BOOL defined = -1;
    const DEC record = c.x().ConvToBTR(defined);
    c.yieldsText(std::to_string(defined) + " " + hexOf(record));
}

void addConversions(Operations& operations) {
    operations["GetValue"] = [](Case& c) { c.yieldsText(hexOf(c.x().GetValue())); };
    operations["double(x)"] = [](Case& c) { c.yieldsText(hexOf(static_cast<double>(c.x()))); };
    operations["currency(x)"] = [](Case& c) {
        const COleCurrency currency = c.x();
        c.yieldsText(textOf(currency));
    };
    operations["DecimalToAscii"] = [](Case& c) {
        char buffer[Decimal96::textSize];
        c.yieldsText(quoted(c.x().DecimalToAscii(buffer)));
    };
    operations["SetFromSQL"] = setFromSql;
    operations["ConvToSQL"] = [](Case& c) { c.yieldsText(quoted(c.x().ConvToSQL().GetValue())); };
    operations["SetFromRecordSet"] = setFromRecordSet;
    operations["ConvToRecordSet"] = convToRecordSet;
    operations["SetFromOFL"] = setFromOfl;
    operations["SetFromOFL(null)"] = [](Case& c) { c.x().SetFromOFL(nullptr); };
    operations["ConvToOFL"] = [](Case& c) { convToOfl(c, "plain"); };
    operations["ConvToOFL(german)"] = [](Case& c) { convToOfl(c, "german"); };
    operations["ConvToOFL(amount)"] = [](Case& c) { convToOfl(c, "amount"); };
    operations["SetFromExtern"] = setFromExtern;
    operations["ConvToExtern"] = convToExtern;
    operations["SetFromBTR"] = setFromBtr;
    operations["ConvToBTR"] = convToBtr;
    operations["CompareDec"] = [](Case& c) { c.yieldsNumber(c.x().CompareDec(recordOf(c.right()))); };
    operations["Store"] = [](Case& c) {
        const valuetest::Bytes bytes = valuetest::stored(c.x());
        c.yieldsText(hexOf(bytes.data(), bytes.size()));
    };
    operations["Load"] = [](Case& c) { valuetest::load(c.x(), bytesOf(c.right())); };
}

Operations allOperations() {
    Operations operations;
    addDecimals(operations);
    addPlainNumbers<&Case::n>(operations, "n");
    addPlainNumbers<&Case::d>(operations, "d");
    addConstruction(operations);
    addStateAndRounding(operations);
    addConversions(operations);
    return operations;
}

// --- The whole table -----------------------------------------------------------------------------

// Empty if the row holds, else what happened instead.
std::string deviation(const Row& row, void (*operation)(Case&)) {
    const valuetest::DefaultMode defaultMode(row.defaultMode);
    Case c(row);
    if (std::string wrong = c.wrongOperand(); !wrong.empty()) return wrong;
    try {
        operation(c);
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        c.fails(std::to_string(error->GetErrorNumber()), error->GetCauseNumber());
    } catch (CArchiveException* caught) {
        caught->Delete();
        c.fails("archive");
    }
    if (c.outcome() != row.outcome) return c.outcome();
    return c.rightIsUnchanged() ? ""s : "the right operand changed"s;
}

std::string tableText() {
    const char* const folder = std::getenv("NKDT_TABLES");
    std::ifstream file(std::string(folder ? folder : NKDT_TABLES) + "/decimal_values.tsv", std::ios::binary);
    std::string text;
    // In large pieces: bytes one by one are what takes longest under valgrind.
    std::vector<char> piece(1 << 16);
    while (file) {
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
    }
    return text;
}

TEST(DecimalValueTable, DecimalFollowsEveryRowInEveryStateAndMode) {
    const std::string table = tableText();
    std::string_view rest = table;
    ASSERT_EQ(take(rest, '\n'), "operation\tdefault\tleft\tright\terror\tcause\tresult\tafter");

    const Operations operations = allOperations();
    const std::size_t step = nktest::isUnderValgrind() ? kRowsToOneUnderValgrind : 1;
    std::map<std::string_view, std::size_t> rowsOf;
    std::size_t rows = 0;
    std::size_t mismatches = 0;
    std::string report;
    while (!rest.empty()) {
        const std::string_view line = take(rest, '\n');
        ++rowsOf[line.substr(0, line.find('\t'))];
        if (++rows % step != 0) continue;
        const Row row(line);
        const auto operation = operations.find(row.operation);
        const std::string actual =
            operation == operations.end() ? "unknown operation" : deviation(row, operation->second);
        if (!actual.empty() && ++mismatches <= kReportedMismatches) {
            report += "\n  " + std::string(row.line) + "\n    got: " + actual;
        }
    }

    EXPECT_EQ(mismatches, 0U) << "of " << rows << " rows; the first ones:" << report;
    EXPECT_GE(rows, kMinimumRows);
    for (const auto& entry : operations) {
        EXPECT_GT(rowsOf[entry.first], 0U) << "no row tries " << entry.first;
    }
}

}  // namespace
