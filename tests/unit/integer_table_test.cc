// Holds NkDtLong and NkDtShort against the truth table integers.tsv, which tests/models/integers.py
// generates from the rules; the model explains the columns and names every rule.

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfw/Archive.h>

#include "ValueTable.h"
#include "support/Instruments.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using namespace nktest;
using valuetest::textOperand;
using Row = valuetest::TableRow;

constexpr std::size_t kMinimumRows = 25'000;        // of each class
constexpr std::size_t kRowsToOneUnderValgrind = 7;  // prime, since operations take turns

// --- Operands ---------------------------------------------------------------------------------

// mode:defined:stored:modified
struct State {
    explicit State(std::string_view cell) {
        mode = static_cast<NkDtWorkingMode>(number(take(cell, ':')));
        defined = number(take(cell, ':'));
        stored = number(take(cell, ':'));
        modified = number(cell);
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

  private:
    void loadUndefined(typename Kind<Whole>::Stored stored) {
        valuetest::load(*this,
                        valuetest::written([&](CArchive& archive) { archive << INT{FALSE} << stored; }));
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
    INT n() const { return number(m_row.right); }
    LONGLONG wide() const { return number<LONGLONG>(m_row.right); }
    std::string_view right() const { return m_row.right; }
    Operand<typename Kind<Whole>::Sibling> sibling() const {
        return Operand<typename Kind<Whole>::Sibling>(State(m_row.right));
    }

    void yields(const Whole& result) { m_result = stateOf(result); }
    void yields(LONGLONG result) { m_result = std::to_string(result); }
    void yieldsText(std::string result) { m_result = std::move(result); }

    void carryOut(const std::function<void(Case&)>& operation) {
        m_error = valuetest::raisedBy([&] { operation(*this); });
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
        return m_error.numbers() + "\t" + m_result + "\t" + (m_x ? stateOf<Whole>(*m_x) : "-"s);
    }

  private:
    const Row& m_row;
    std::optional<Operand<Whole>> m_x;
    std::optional<Operand<Whole>> m_y;
    valuetest::RaisedError m_error;
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
    operations["SetFromExtern"] = [](C& c) { valuetest::setFromExtern(c.x(), c.right()); };
    operations["ConvToSQL"] = [](C& c) { c.yieldsText(inQuotes(c.x().ConvToSQL().GetValue())); };
    operations["ConvToExtern"] = [](C& c) { c.yieldsText(valuetest::convToExtern(c.x())); };
    operations["Store"] = [](C& c) { c.yieldsText(valuetest::storedHex(c.operand())); };
    operations["Load"] = [](C& c) { valuetest::load(c.operand(), nktest::bytesOf(c.right())); };
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

// Empty if the row holds, else what happened instead.
template <class Whole>
std::string deviation(const Row& row, const std::function<void(Case<Whole>&)>& operation) {
    const valuetest::DefaultMode defaultMode(row.defaultMode);
    Case<Whole> c(row);
    if (std::string wrong = c.wrongOperand(); !wrong.empty()) {
        return wrong;
    }
    c.carryOut(operation);
    if (c.outcome() != row.outcome) {
        return c.outcome();
    }
    return row.operation == "x=move(y)" || c.rightIsUnchanged() ? ""s : "the right operand changed"s;
}

// Rows that a native type of fewer bits cannot express do not apply.
template <class Whole>
bool applies(const Row& row) {
    return row.operation != "SetFromSQL(n)" ||
           static_cast<typename Kind<Whole>::Native>(number<LONGLONG>(row.right)) ==
               number<LONGLONG>(row.right);
}

template <class Whole>
void holdAgainstTable() {
    const std::string table = readTable("integers.tsv");
    std::string_view rest = table;
    ASSERT_EQ(take(rest, '\n'), "class\toperation\tdefault\tleft\tright\terror\tcause\tresult\tafter");

    const Operations<Whole> operations = allOperations<Whole>();
    const std::size_t step = nktest::isUnderValgrind() ? kRowsToOneUnderValgrind : 1;
    Findings findings;
    while (!rest.empty()) {
        const Row row(take(rest, '\n'));
        if (row.className != Kind<Whole>::name || !applies<Whole>(row)) {
            continue;
        }
        findings.count(row.operation);
        if (findings.rows() % step != 0) continue;
        const auto operation = operations.find(row.operation);
        findings.note(row.line, operation == operations.end() ? "unknown operation"
                                                              : deviation<Whole>(row, operation->second));
    }
    findings.expectNone();
    EXPECT_GE(findings.rows(), kMinimumRows);
    findings.expectAllTried(operations);
}

TEST(WholeNumberTable, LongFollowsEveryRowInEveryStateAndMode) {
    holdAgainstTable<NkDtLong>();
}

TEST(WholeNumberTable, ShortFollowsEveryRowInEveryStateAndMode) {
    holdAgainstTable<NkDtShort>();
}

}  // namespace
