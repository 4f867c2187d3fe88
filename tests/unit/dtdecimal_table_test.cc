// Holds NkDtDecimal against the table decimal_values.tsv, which tests/models/decimal_values.py generates from
// the rules; the model explains the columns.

#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <nkdec/Decimal96.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Currency.h>
#include <nkfw/Recordset.h>

#include "ValueTable.h"
#include "support/Instruments.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using namespace nktest;
using nktest::hexOf;
using valuetest::textOperand;
using Row = valuetest::TableRow;

constexpr std::size_t kMinimumRows = 60'000;
constexpr std::size_t kRowsToOneUnderValgrind = 41;  // prime, since operations take turns

// --- The table's notation ---------------------------------------------------------------------

DEC recordOf(std::string_view hex) {
    const valuetest::Bytes bytes = nktest::bytesOf(hex);
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

    void carryOut(void (*operation)(Case&)) {
        m_error = valuetest::raisedBy([&] { operation(*this); });
    }

    // What is wrong before the operation starts; empty if the operands are as the row has them.
    std::string wrongOperand() const {
        if (m_x && stateOf(*m_x) != m_row.left) return "left operand became " + stateOf(*m_x);
        if (m_y && stateOf(*m_y) != m_row.right) return "right operand became " + stateOf(*m_y);
        return {};
    }

    bool rightIsUnchanged() const { return !m_y || stateOf(*m_y) == m_row.right; }

    std::string outcome() const {
        return m_error.numbers() + "\t" + m_result + "\t" + (m_x ? stateOf(*m_x) : "-"s);
    }

  private:
    const Row& m_row;
    std::optional<NkDtDecimal> m_x;
    std::optional<NkDtDecimal> m_y;
    valuetest::RaisedError m_error;
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
        const valuetest::TextArgument text(c.right());
        c.yields(NkDtDecimal(static_cast<LPCTSTR>(text)));
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
    c.yieldsText(!isNull                              ? inQuotes(field.GetString())
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
    c.yieldsText(inQuotes(c.x().ConvToOFL(chosenFormat(c, name)).GetString()));
}

// A format's name and a quoted text
void setFromOfl(Case& c) {
    std::string_view text = c.right();
    const NkFormat* const format = chosenFormat(c, take(text, ' '));
    c.x().SetFromOFL(unquoted(text).c_str(), format);
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
        c.yieldsText(inQuotes(c.x().DecimalToAscii(buffer)));
    };
    operations["SetFromSQL"] = [](Case& c) { c.x().SetFromSQL(valuetest::TextArgument(c.right())); };
    operations["ConvToSQL"] = [](Case& c) { c.yieldsText(inQuotes(c.x().ConvToSQL().GetValue())); };
    operations["SetFromRecordSet"] = setFromRecordSet;
    operations["ConvToRecordSet"] = convToRecordSet;
    operations["SetFromOFL"] = setFromOfl;
    operations["SetFromOFL(null)"] = [](Case& c) { c.x().SetFromOFL(nullptr); };
    operations["ConvToOFL"] = [](Case& c) { convToOfl(c, "plain"); };
    operations["ConvToOFL(german)"] = [](Case& c) { convToOfl(c, "german"); };
    operations["ConvToOFL(amount)"] = [](Case& c) { convToOfl(c, "amount"); };
    operations["SetFromExtern"] = [](Case& c) { valuetest::setFromExtern(c.x(), c.right()); };
    operations["ConvToExtern"] = [](Case& c) { c.yieldsText(valuetest::convToExtern(c.x())); };
    operations["SetFromBTR"] = setFromBtr;
    operations["ConvToBTR"] = convToBtr;
    operations["CompareDec"] = [](Case& c) { c.yieldsNumber(c.x().CompareDec(recordOf(c.right()))); };
    operations["Store"] = [](Case& c) { c.yieldsText(valuetest::storedHex(c.x())); };
    operations["Load"] = [](Case& c) { valuetest::load(c.x(), nktest::bytesOf(c.right())); };
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
    c.carryOut(operation);
    if (c.outcome() != row.outcome) return c.outcome();
    return c.rightIsUnchanged() ? ""s : "the right operand changed"s;
}

TEST(DecimalValueTable, DecimalFollowsEveryRowInEveryStateAndMode) {
    const std::string table = readTable("decimal_values.tsv");
    std::string_view rest = table;
    ASSERT_EQ(take(rest, '\n'), "operation\tdefault\tleft\tright\terror\tcause\tresult\tafter");

    const Operations operations = allOperations();
    const std::size_t step = nktest::isUnderValgrind() ? kRowsToOneUnderValgrind : 1;
    Findings findings;
    while (!rest.empty()) {
        const std::string_view line = take(rest, '\n');
        findings.count(line.substr(0, line.find('\t')));
        if (findings.rows() % step != 0) continue;
        const Row row(line, "Decimal");
        const auto operation = operations.find(row.operation);
        findings.note(
            line, operation == operations.end() ? "unknown operation" : deviation(row, operation->second));
    }
    findings.expectNone();
    EXPECT_GE(findings.rows(), kMinimumRows);
    findings.expectAllTried(operations);
}

}  // namespace
