#pragma once

/// @file
/// Dates and durations as the tables of their models show them, and how the rows of such a table are carried
/// out.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtTime.h>
#include <nkfw/Archive.h>

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "ValueTable.h"

namespace calendartable {

using nktest::number;
using nktest::take;

// --- States -----------------------------------------------------------------------------------

/// mode:defined:year:month:day:hour:minute:second:modified, the fields as stored. A date has a time of day
/// too, which its own archive leaves out.
inline std::string stateOf(const NkDtDateTime& x) {
    auto& value = const_cast<NkDtDateTime&>(x);
    const auto bytes = valuetest::written([&](CArchive& archive) { value.NkDtDateTime::Serialize(archive); });
    INT defined = 0, second = 0, minute = 0, hour = 0, year = 0, month = 0, day = 0;
    valuetest::reading(bytes, [&](CArchive& archive) {
        archive >> defined >> second >> minute >> hour >> year >> month >> day;
    });
    std::string state = std::to_string(x.GetWorkingMode()) + ":" + std::to_string(defined);
    for (const LONGLONG field : {year + LONGLONG{1900}, month + LONGLONG{1}, LONGLONG{day}, LONGLONG{hour},
                                 LONGLONG{minute}, LONGLONG{second}})
        state += ":" + std::to_string(field);
    return state + ":" + std::to_string(x.IsModified());
}

/// mode:defined:ticks:time mode:modified
inline std::string stateOf(const NkDtTime& x) {
    const auto bytes = valuetest::stored(const_cast<NkDtTime&>(x));
    INT defined = 0, ticks = 0;
    valuetest::reading(bytes, [&](CArchive& archive) { archive >> defined >> ticks; });
    return std::to_string(x.GetWorkingMode()) + ":" + std::to_string(defined) + ":" + std::to_string(ticks) +
           ":" + std::to_string(x.GetMode()) + ":" + std::to_string(x.IsModified());
}

/// What a cell says of the mode, which an object is made with, before the rest.
inline NkDtWorkingMode modeOf(std::string_view state) {
    return static_cast<NkDtWorkingMode>(number(take(state, ':')));
}

/// An archive brings any definedness and any fields, whatever the mode.
inline void bringTo(NkDtDateTime& x, std::string_view state) {
    take(state, ':');
    const INT defined = number(take(state, ':'));
    const INT year = number(take(state, ':')), month = number(take(state, ':')),
              day = number(take(state, ':'));
    const INT hour = number(take(state, ':')), minute = number(take(state, ':'));
    const INT second = number(take(state, ':'));
    const auto bytes = valuetest::written([&](CArchive& archive) {
        archive << defined << second << minute << hour << year - 1900 << month - 1 << day;
    });
    valuetest::reading(bytes, [&](CArchive& archive) { x.NkDtDateTime::Serialize(archive); });
    x.SetModified(number(state));
}

inline void bringTo(NkDtTime& x, std::string_view state) {
    take(state, ':');
    const INT defined = number(take(state, ':')), ticks = number(take(state, ':'));
    valuetest::load(x, valuetest::written([&](CArchive& archive) { archive << defined << ticks; }));
    x.SetMode(static_cast<NkDtTime::TimeMode>(number(take(state, ':'))));
    x.SetModified(number(state));
}

// --- One row under way ------------------------------------------------------------------------

template <class Value>
class Case {
  public:
    explicit Case(const valuetest::TableRow& row) : m_row(row) {
        if (row.left != "-") {
            m_x.emplace(modeOf(row.left));
            bringTo(*m_x, row.left);
        }
    }

    Value& x() { return *m_x; }
    const Value& y() { return rightValue<Value>(); }
    /// The right operand as a value of any class.
    template <class Other>
    const Other& rightValue() {
        const auto value = std::make_shared<Other>(modeOf(m_row.right));
        bringTo(*value, m_row.right);
        if (stateOf(*value) != m_row.right) throw std::logic_error("right operand became " + stateOf(*value));
        m_rightState = [value] { return stateOf(*value); };
        return *value;
    }
    std::string_view right() const { return m_row.right; }
    template <class Integer = INT>
    Integer n() const {
        return number<Integer>(m_row.right);
    }

    void yields(const NkDtDateTime& result) { m_result = stateOf(result); }
    void yields(const NkDtTime& result) { m_result = stateOf(result); }
    void yieldsNumber(LONGLONG result) { m_result = std::to_string(result); }
    void yieldsText(std::string result) { m_result = std::move(result); }

    /// Empty if the row holds, else what happened instead.
    std::string deviation(const std::function<void(Case&)>& operation) {
        if (m_x && stateOf(*m_x) != m_row.left) return "left operand became " + stateOf(*m_x);
        m_error = valuetest::raisedBy([&] { operation(*this); });
        if (outcome() != m_row.outcome) return outcome();
        return m_rightState && m_rightState() != m_row.right ? "right operand is now " + m_rightState() : "";
    }

  private:
    /// The table leaves out the texts of the format library and of archives.
    bool leavesTextOut() const {
        return (m_row.operation.starts_with("SetFromOFL") || m_row.operation.starts_with("ConvToOFL") ||
                m_row.operation == "Load") &&
               nktest::split(m_row.outcome, '\t').at(2) == "-";
    }

    std::string outcome() const {
        return m_error.numbers() + "\t" + (leavesTextOut() ? "-" : m_error.text) + "\t" + m_result + "\t" +
               (m_x ? stateOf(*m_x) : "-");
    }

    const valuetest::TableRow& m_row;
    std::optional<Value> m_x;
    std::function<std::string()> m_rightState;
    valuetest::RaisedError m_error;
    std::string m_result = "-";
};

template <class Value>
using Operations = std::map<std::string, std::function<void(Case<Value>&)>, std::less<>>;

/// The operations that tell no class from another.
template <class Value>
void addCommonOperations(Operations<Value>& operations) {
    using C = Case<Value>;
    operations["T(mode)"] = [](C& c) { c.yields(Value(static_cast<NkDtWorkingMode>(c.n()))); };
    operations["T(x)"] = [](C& c) { c.yields(Value(std::as_const(c.x()))); };
    operations["NewObject"] = [](C& c) {
        const std::unique_ptr<NkDtBasis> made(c.x().NewObject());
        EXPECT_TRUE(made->GetRuntimeClass() == Value::GetThisClass());
        c.yields(dynamic_cast<const Value&>(*made));
    };
    operations["x=y"] = [](C& c) { c.x() = c.y(); };
    operations["Assign(y)"] = [](C& c) { c.x().Assign(c.y()); };
    operations["Clear"] = [](C& c) { c.x().Clear(); };
    operations["x<y"] = [](C& c) { c.yieldsNumber(c.x() < c.y()); };
    operations["x>y"] = [](C& c) { c.yieldsNumber(c.x() > c.y()); };
    operations["x<=y"] = [](C& c) { c.yieldsNumber(c.x() <= c.y()); };
    operations["x>=y"] = [](C& c) { c.yieldsNumber(c.x() >= c.y()); };
    operations["x==y"] = [](C& c) { c.yieldsNumber(c.x() == c.y()); };
    operations["x!=y"] = [](C& c) { c.yieldsNumber(c.x() != c.y()); };
    operations["String(x)"] = [](C& c) {
        const NkDtString text(c.x());
        c.yieldsText(text.IsDefined() ? nktest::inQuotes(text.GetValue()) : "undefined");
    };
    operations["ConvToOFL"] = [](C& c) { c.yieldsText(nktest::inQuotes(c.x().ConvToOFL().GetString())); };
    operations["SetFromOFL"] = [](C& c) { c.x().SetFromOFL(valuetest::TextArgument(c.right())); };
    operations["ConvToExtern"] = [](C& c) { c.yieldsText(valuetest::convToExtern(c.x())); };
    operations["SetFromExtern"] = [](C& c) { valuetest::setFromExtern(c.x(), c.right()); };
    operations["Store"] = [](C& c) { c.yieldsText(valuetest::storedHex(c.x())); };
    operations["Load"] = [](C& c) { valuetest::load(c.x(), nktest::bytesOf(c.right())); };
}

/// Sets the value from a field that is null or what @p read makes of the right operand.
template <class Field, class Value, class Read>
void setFromField(Case<Value>& c, Read&& read) {
    CRecordset rs;
    Field field{};
    const bool isNull = c.right() == "null";
    if (!isNull) field = read(c.right());
    rs.SetFieldNull(&field, isNull ? TRUE : FALSE);
    c.x().SetFromRecordSet(rs, field);
}

/// Writes the value to a field that holds @p before and says the opposite of what is to come.
template <class Field, class Value, class Show>
void showField(Case<Value>& c, Field before, Show&& show) {
    CRecordset rs;
    Field field = before;
    rs.SetFieldNull(&field, c.x().IsDefined());
    c.x().ConvToRecordSet(rs, field);
    const bool isNull = rs.IsFieldNull(&field) != FALSE;
    c.yieldsText(!isNull ? show(field) : show(field) == show(before) ? "null" : "null, but written");
}

// --- The whole table --------------------------------------------------------------------------

/// Holds the class against all rows of its name.
template <class Value>
void holdAgainstTable(const std::string& file, std::string_view className,
                      const Operations<Value>& operations, std::size_t fewestRows, std::size_t step = 1) {
    const std::string table = nktest::readTable(file);
    std::string_view rest = table;
    ASSERT_EQ(take(rest, '\n'), "class\toperation\tdefault\tleft\tright\terror\tcause\ttext\tresult\tafter");
    nktest::Findings findings;
    while (!rest.empty()) {
        const valuetest::TableRow row(take(rest, '\n'));
        if (row.className != className) continue;
        findings.count(row.operation);
        if (findings.rows() % step != 0) continue;
        const auto operation = operations.find(row.operation);
        if (operation == operations.end()) {
            findings.note(row.line, "unknown operation");
            continue;
        }
        try {
            const valuetest::DefaultMode defaultMode(row.defaultMode);
            findings.note(row.line, Case<Value>(row).deviation(operation->second));
        } catch (const std::exception& failure) {
            findings.note(row.line, failure.what());
        }
    }
    findings.expectNone();
    EXPECT_GE(findings.rows(), fewestRows);
    findings.expectAllTried(operations);
}

}  // namespace calendartable
