// Holds NkDtLong and NkDtShort against the truth table integers.tsv, which tests/models/integers.py
// generates from the rules; the model explains the columns and names every rule.
//
// A row is carried out as it stands: build the operands in their states, apply the operation,
// write error, result and final state the way the table writes them, compare.

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkeh/NkEhBasis.h>
#include <nkfw/Archive.h>
#include <nkfw/Exception.h>
#include <nkfw/File.h>

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::size_t kMinimumRows = 25'000;  // of each class
constexpr std::size_t kReportedMismatches = 20;

// --- The table's notation ---------------------------------------------------------------------

// Cuts the part before the next separator off the rest; all of it when there is none.
std::string_view take(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest = end == std::string_view::npos ? ""sv : rest.substr(end + 1);
    return part;
}

LONGLONG number(std::string_view text) {
    LONGLONG value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::invalid_argument("not a number in the table: " + std::string(text));
    }
    return value;
}

INT intNumber(std::string_view text) {
    return static_cast<INT>(number(text));
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

std::vector<BYTE> bytesOf(std::string_view hex) {
    std::vector<BYTE> bytes;
    for (std::size_t i = 0; hex != "empty" && i + 1 < hex.size(); i += 2) {
        BYTE byte = 0;
        std::from_chars(hex.data() + i, hex.data() + i + 2, byte, 16);
        bytes.push_back(byte);
    }
    return bytes;
}

struct Row {
    explicit Row(std::string_view text) : line(text) {
        className = take(text, '\t');
        operation = take(text, '\t');
        defaultMode = intNumber(take(text, '\t'));
        left = take(text, '\t');
        right = take(text, '\t');
        outcome = text;
    }

    std::string_view line;
    std::string_view className;
    std::string_view operation;
    INT defaultMode = 0;
    std::string_view left;
    std::string_view right;
    std::string_view outcome;  // error, cause, result and final state, still in one piece
};

// --- Operands ---------------------------------------------------------------------------------

// mode:defined:stored:modified
struct State {
    explicit State(std::string_view cell) {
        mode = static_cast<NkDtWorkingMode>(intNumber(take(cell, ':')));
        defined = intNumber(take(cell, ':'));
        stored = intNumber(take(cell, ':'));
        modified = intNumber(cell);
    }

    NkDtWorkingMode mode;
    BOOL defined;
    INT stored;
    BOOL modified;
};

template <class Whole>
struct Kind;

template <>
struct Kind<NkDtLong> {
    using Native = long;
    using Stored = INT;
    using Sibling = NkDtShort;
    static constexpr auto name = "Long"sv;
};

template <>
struct Kind<NkDtShort> {
    using Native = short;
    using Stored = SHORT;
    using Sibling = NkDtLong;
    static constexpr auto name = "Short"sv;
};

// An object in a wanted state, reached the way a program reaches it: an undefined value that still
// has a stored number comes from an archive, an undefined 0 in mode 2 from a failed +=.
template <class Whole>
class Operand : public Whole {
  public:
    explicit Operand(const State& wanted) : Whole(wanted.mode) {
        Whole& self = *this;
        if (wanted.defined) {
            self = wanted.stored;
        } else if (wanted.stored != 0) {
            loadUndefined(static_cast<typename Kind<Whole>::Stored>(wanted.stored));
        } else if (wanted.mode == NkDtWmDefined) {
            self += Whole(NkDtWmMissing);
        }
        self.SetModified(wanted.modified);
    }

    using Whole::Serialize;

    void load(const std::vector<BYTE>& bytes) {
        CMemFile file;
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::load);
        Serialize(archive);
    }

    std::string store() {
        CMemFile file;
        CArchive archive(&file, CArchive::store);
        Serialize(archive);
        archive.Close();
        return hexOf(file.GetData(), static_cast<std::size_t>(file.GetLength()));
    }

  private:
    void loadUndefined(typename Kind<Whole>::Stored stored) {
        CMemFile file;
        CArchive out(&file, CArchive::store);
        out << INT{FALSE} << stored;
        out.Close();
        file.Seek(0, CFile::begin);
        CArchive in(&file, CArchive::load);
        Serialize(in);
    }
};

// The external text shows the stored number of an undefined object too.
template <class Whole>
std::string stateOf(const Whole& x) {
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString stored = x.ConvToExtern(defined, version);
    return std::to_string(x.GetWorkingMode()) + ":" + std::to_string(x.IsDefined()) + ":" +
           stored.GetValue() + ":" + std::to_string(x.IsModified());
}

// "mode modified undefined" or "mode modified "text""
NkDtString textOperand(std::string_view cell) {
    const auto mode = static_cast<NkDtWorkingMode>(intNumber(take(cell, ' ')));
    const BOOL modified = intNumber(take(cell, ' '));
    NkDtString text(mode);
    if (cell != "undefined") {
        text = unquoted(cell).c_str();
    }
    text.SetModified(modified);
    return text;
}

// --- One row under way -------------------------------------------------------------------------

template <class Whole>
class Case {
  public:
    explicit Case(const Row& row) : m_row(row) {
        if (row.left != "-") {
            m_x.emplace(State(row.left));
        }
        if (row.operation.find('y') != std::string_view::npos && row.right != "self") {
            m_y.emplace(State(row.right));
        }
    }

    // Operands; y is x itself where the table says "self".
    Operand<Whole>& operand() { return *m_x; }
    Whole& x() { return *m_x; }
    const Whole& y() { return m_y ? *m_y : *m_x; }
    Whole&& temporary() { return std::move(static_cast<Whole&>(*m_y)); }
    INT n() const { return intNumber(m_row.right); }
    LONGLONG wide() const { return number(m_row.right); }
    std::string_view right() const { return m_row.right; }
    Operand<typename Kind<Whole>::Sibling> sibling() const {
        return Operand<typename Kind<Whole>::Sibling>(State(m_row.right));
    }

    void yields(const Whole& result) { m_result = stateOf(result); }
    void yields(LONGLONG result) { m_result = std::to_string(result); }
    void yieldsText(std::string result) { m_result = std::move(result); }

    void fails(std::string error, ULONG cause = 0) {
        m_error = std::move(error);
        m_cause = cause;
    }

    // What is wrong before the operation starts; empty if the operands are as the row has them.
    std::string wrongOperand() const {
        if (m_x && stateOf<Whole>(*m_x) != m_row.left) {
            return "left operand became " + stateOf<Whole>(*m_x);
        }
        if (m_y && stateOf<Whole>(*m_y) != m_row.right) {
            return "right operand became " + stateOf<Whole>(*m_y);
        }
        return {};
    }

    bool rightIsUnchanged() const { return !m_y || stateOf<Whole>(*m_y) == m_row.right; }

    std::string outcome() const {
        return m_error + "\t" + std::to_string(m_cause) + "\t" + m_result + "\t" +
               (m_x ? stateOf<Whole>(*m_x) : "-"s);
    }

  private:
    const Row& m_row;
    std::optional<Operand<Whole>> m_x;
    std::optional<Operand<Whole>> m_y;
    std::string m_error = "0";
    ULONG m_cause = 0;
    std::string m_result = "-";
};

// --- The operations by the table's names ---------------------------------------------------------

template <class Whole>
using Operations = std::map<std::string_view, std::function<void(Case<Whole>&)>>;

template <class Whole>
void addArithmetic(Operations<Whole>& operations) {
    using C = Case<Whole>;
    operations["x+y"] = [](C& c) { c.yields(c.x() + c.y()); };
    operations["x-y"] = [](C& c) { c.yields(c.x() - c.y()); };
    operations["x*y"] = [](C& c) { c.yields(c.x() * c.y()); };
    operations["x/y"] = [](C& c) { c.yields(c.x() / c.y()); };
    operations["x+n"] = [](C& c) { c.yields(c.x() + c.n()); };
    operations["x-n"] = [](C& c) { c.yields(c.x() - c.n()); };
    operations["x*n"] = [](C& c) { c.yields(c.x() * c.n()); };
    operations["x/n"] = [](C& c) { c.yields(c.x() / c.n()); };
    operations["n+x"] = [](C& c) { c.yields(c.n() + c.x()); };
    operations["n-x"] = [](C& c) { c.yields(c.n() - c.x()); };
    operations["n*x"] = [](C& c) { c.yields(c.n() * c.x()); };
    operations["n/x"] = [](C& c) { c.yields(c.n() / c.x()); };
    operations["x+=y"] = [](C& c) { c.x() += c.y(); };
    operations["x-=y"] = [](C& c) { c.x() -= c.y(); };
    operations["x+=n"] = [](C& c) { c.x() += c.n(); };
    operations["x-=n"] = [](C& c) { c.x() -= c.n(); };
    operations["++x"] = [](C& c) { ++c.x(); };
    operations["x++"] = [](C& c) { c.x()++; };
    operations["--x"] = [](C& c) { --c.x(); };
    operations["x--"] = [](C& c) { c.x()--; };
}

template <class Whole>
void addComparisons(Operations<Whole>& operations) {
    using C = Case<Whole>;
    operations["x<y"] = [](C& c) { c.yields(LONGLONG{c.x() < c.y()}); };
    operations["x>y"] = [](C& c) { c.yields(LONGLONG{c.x() > c.y()}); };
    operations["x<=y"] = [](C& c) { c.yields(LONGLONG{c.x() <= c.y()}); };
    operations["x>=y"] = [](C& c) { c.yields(LONGLONG{c.x() >= c.y()}); };
    operations["x==y"] = [](C& c) { c.yields(LONGLONG{c.x() == c.y()}); };
    operations["x!=y"] = [](C& c) { c.yields(LONGLONG{c.x() != c.y()}); };
    operations["x<n"] = [](C& c) { c.yields(LONGLONG{c.x() < c.n()}); };
    operations["x>n"] = [](C& c) { c.yields(LONGLONG{c.x() > c.n()}); };
    operations["x<=n"] = [](C& c) { c.yields(LONGLONG{c.x() <= c.n()}); };
    operations["x>=n"] = [](C& c) { c.yields(LONGLONG{c.x() >= c.n()}); };
    operations["x==n"] = [](C& c) { c.yields(LONGLONG{c.x() == c.n()}); };
    operations["x!=n"] = [](C& c) { c.yields(LONGLONG{c.x() != c.n()}); };
    operations["n<x"] = [](C& c) { c.yields(LONGLONG{c.n() < c.x()}); };
    operations["n>x"] = [](C& c) { c.yields(LONGLONG{c.n() > c.x()}); };
    operations["n<=x"] = [](C& c) { c.yields(LONGLONG{c.n() <= c.x()}); };
    operations["n>=x"] = [](C& c) { c.yields(LONGLONG{c.n() >= c.x()}); };
    operations["n==x"] = [](C& c) { c.yields(LONGLONG{c.n() == c.x()}); };
    operations["n!=x"] = [](C& c) { c.yields(LONGLONG{c.n() != c.x()}); };
}

template <class Whole>
void addConstruction(Operations<Whole>& operations) {
    using C = Case<Whole>;
    operations["T(mode)"] = [](C& c) { c.yields(Whole(static_cast<NkDtWorkingMode>(c.n()))); };
    operations["T(n)"] = [](C& c) { c.yields(Whole(c.n())); };
    operations["T(text)"] = [](C& c) { c.yields(Whole(unquoted(c.right()).c_str())); };
    operations["T(string)"] = [](C& c) { c.yields(Whole(textOperand(c.right()))); };
    operations["T(sibling)"] = [](C& c) {
        const auto source = c.sibling();
        const typename Kind<Whole>::Sibling& sibling = source;
        c.yields(Whole(sibling));
    };
    operations["T(x)"] = [](C& c) { c.yields(Whole(std::as_const(c.x()))); };
    operations["T(move(x))"] = [](C& c) { c.yields(Whole(std::move(c.x()))); };
    operations["NewObject"] = [](C& c) {
        const std::unique_ptr<NkDtBasis> made(c.x().NewObject());
        c.yields(dynamic_cast<const Whole&>(*made));
    };
    if constexpr (std::is_same_v<Whole, NkDtShort>) {
        operations["T(short)"] = [](C& c) { c.yields(NkDtShort(static_cast<SHORT>(c.n()))); };
    }
}

template <class Whole>
void addStateAndAssignment(Operations<Whole>& operations) {
    using C = Case<Whole>;
    operations["x=y"] = [](C& c) { c.x() = c.y(); };
    operations["x=move(y)"] = [](C& c) { c.x() = c.temporary(); };
    operations["x=n"] = [](C& c) { c.x() = c.n(); };
    operations["Assign(y)"] = [](C& c) { c.x().Assign(c.y()); };
    operations["Assign(sibling)"] = [](C& c) { c.x().Assign(c.sibling()); };
    operations["Assign(string)"] = [](C& c) { c.x().Assign(textOperand(c.right())); };
    operations["Clear"] = [](C& c) { c.x().Clear(); };
    operations["IsDefined"] = [](C& c) { c.yields(LONGLONG{c.x().IsDefined()}); };
    operations["IsMissing"] = [](C& c) { c.yields(LONGLONG{c.x().IsMissing()}); };
    operations["IsNull"] = [](C& c) { c.yields(LONGLONG{c.x().IsNull()}); };
    operations["SetModified(n)"] = [](C& c) { c.x().SetModified(c.n()); };
    operations["GetAndResetModified(n)"] = [](C& c) { c.yields(LONGLONG{c.x().GetAndResetModified(c.n())}); };
    operations["SetWorkingMode(n)"] = [](C& c) { c.x().SetWorkingMode(static_cast<NkDtWorkingMode>(c.n())); };
}

// "version flag null", "version flag undefined:mode" or "version flag "text""
template <class Whole>
void setFromExtern(Case<Whole>& c) {
    std::string_view rest = c.right();
    const auto version = static_cast<USHORT>(intNumber(take(rest, ' ')));
    const BOOL flag = intNumber(take(rest, ' '));
    if (rest == "null") {
        c.x().SetFromExtern(nullptr, flag, version);
    } else if (rest.starts_with("undefined:")) {
        take(rest, ':');
        const NkDtString undefined(static_cast<NkDtWorkingMode>(intNumber(rest)));
        c.x().SetFromExtern(&undefined, flag, version);
    } else {
        const NkDtString text(unquoted(rest).c_str());
        c.x().SetFromExtern(&text, flag, version);
    }
}

template <class Whole>
void addConversions(Operations<Whole>& operations) {
    using C = Case<Whole>;
    using Native = typename Kind<Whole>::Native;
    operations["GetValue"] = [](C& c) { c.yields(LONGLONG{c.x().GetValue()}); };
    operations["native(x)"] = [](C& c) {
        const Native value = c.x();
        c.yields(LONGLONG{value});
    };
    operations["SetFromSQL(n)"] = [](C& c) { c.x().SetFromSQL(static_cast<Native>(c.wide())); };
    operations["SetFromOFL(\"\")"] = [](C& c) { c.x().SetFromOFL(""); };
    operations["SetFromOFL(null)"] = [](C& c) { c.x().SetFromOFL(nullptr); };
    operations["SetFromExtern"] = &setFromExtern<Whole>;
    operations["ConvToSQL"] = [](C& c) { c.yieldsText(quoted(c.x().ConvToSQL().GetValue())); };
    operations["ConvToExtern"] = [](C& c) {
        BOOL defined = -1;
        USHORT version = 0;
        const NkDtString text = c.x().ConvToExtern(defined, version);
        c.yieldsText(std::to_string(defined) + " " + std::to_string(version) + " " + quoted(text.GetValue()));
    };
    operations["Store"] = [](C& c) { c.yieldsText(c.operand().store()); };
    operations["Load"] = [](C& c) { c.operand().load(bytesOf(c.right())); };
}

template <class Whole>
Operations<Whole> allOperations() {
    Operations<Whole> operations;
    addArithmetic(operations);
    addComparisons(operations);
    addConstruction(operations);
    addStateAndAssignment(operations);
    addConversions(operations);
    return operations;
}

// --- The whole table -----------------------------------------------------------------------------

class DefaultModeGuard {
  public:
    DefaultModeGuard() = default;
    DefaultModeGuard(const DefaultModeGuard&) = delete;
    DefaultModeGuard& operator=(const DefaultModeGuard&) = delete;
    ~DefaultModeGuard() { NkDtSetDefaultWorkingMode(m_before); }

  private:
    const NkDtWorkingMode m_before = NkDtGetDefaultWorkingMode();
};

// Empty if the row holds, else what happened instead.
template <class Whole>
std::string deviation(const Row& row, const std::function<void(Case<Whole>&)>& operation) {
    NkDtSetDefaultWorkingMode(static_cast<NkDtWorkingMode>(row.defaultMode));
    Case<Whole> c(row);
    if (std::string wrong = c.wrongOperand(); !wrong.empty()) {
        return wrong;
    }
    try {
        operation(c);
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        c.fails(std::to_string(error->GetErrorNumber()), error->GetCauseNumber());
    } catch (CArchiveException* caught) {
        caught->Delete();
        c.fails("archive");
    }
    if (c.outcome() != row.outcome) {
        return c.outcome();
    }
    return row.operation == "x=move(y)" || c.rightIsUnchanged() ? ""s : "the right operand changed"s;
}

// Rows that a native type of fewer bits cannot express do not apply.
template <class Whole>
bool applies(const Row& row) {
    return row.operation != "SetFromSQL(n)" ||
           static_cast<typename Kind<Whole>::Native>(number(row.right)) == number(row.right);
}

std::string tableText() {
    const char* const folder = std::getenv("NKDT_TABLES");
    std::ifstream file(std::string(folder ? folder : NKDT_TABLES) + "/integers.tsv", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

template <class Whole>
void holdAgainstTable() {
    const std::string table = tableText();
    std::string_view rest = table;
    ASSERT_EQ(take(rest, '\n'), "class\toperation\tdefault\tleft\tright\terror\tcause\tresult\tafter");

    const Operations<Whole> operations = allOperations<Whole>();
    std::map<std::string_view, std::size_t> rowsOf;
    std::size_t rows = 0;
    std::size_t mismatches = 0;
    std::string report;
    const DefaultModeGuard guard;
    while (!rest.empty()) {
        const Row row(take(rest, '\n'));
        if (row.className != Kind<Whole>::name || !applies<Whole>(row)) {
            continue;
        }
        ++rows;
        ++rowsOf[row.operation];
        const auto operation = operations.find(row.operation);
        const std::string actual =
            operation == operations.end() ? "unknown operation" : deviation<Whole>(row, operation->second);
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

TEST(WholeNumberTable, LongFollowsEveryRowInEveryStateAndMode) {
    holdAgainstTable<NkDtLong>();
}

TEST(WholeNumberTable, ShortFollowsEveryRowInEveryStateAndMode) {
    holdAgainstTable<NkDtShort>();
}

}  // namespace
