#pragma once

/// @file
/// Rows of the tables that hold value classes against their models. A row is carried out as it stands: build
/// the operands in their states, apply the operation, write error, result and final state the way the table
/// writes them, compare.

#include <nkdt/NkDtString.h>
#include <nkeh/NkEhBasis.h>
#include <nkfw/Exception.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ValueTesting.h"
#include "support/TableReader.h"

namespace valuetest {

/// What stands on the right of an operation, and what the operation comes to, are left in one piece.
struct TableRow {
    /// @param name the class, for a table of one class that does not name it
    explicit TableRow(std::string_view text, std::string_view name = {}) : line(text), className(name) {
        if (className.empty()) className = nktest::take(text, '\t');
        operation = nktest::take(text, '\t');
        defaultMode = static_cast<NkDtWorkingMode>(nktest::number(nktest::take(text, '\t')));
        left = nktest::take(text, '\t');
        right = nktest::take(text, '\t');
        outcome = text;
    }

    std::string_view line;
    std::string_view className;
    std::string_view operation;
    NkDtWorkingMode defaultMode;
    std::string_view left;
    std::string_view right;
    std::string_view outcome;
};

/// An error as the tables write it.
struct RaisedError {
    std::string number = "0";
    ULONG cause = 0;
    std::string text = "-";  ///< of the cause; of the error itself when it replaces none

    std::string numbers() const { return number + "\t" + std::to_string(cause); }
};

template <class Operation>
RaisedError raisedBy(Operation&& operation) {
    try {
        std::forward<Operation>(operation)();
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        const ULONG cause = error->GetCauseNumber();
        return {std::to_string(error->GetErrorNumber()), cause,
                cause != 0 ? error->GetCauseText() : error->GetErrorText()};
    } catch (CArchiveException* caught) {
        caught->Delete();
        return {"archive", 0, "-"};
    }
    return {};
}

/// "mode modified undefined" or "mode modified "text"".
inline NkDtString textOperand(std::string_view cell) {
    const auto mode = static_cast<NkDtWorkingMode>(nktest::number(nktest::take(cell, ' ')));
    const BOOL modified = nktest::number(nktest::take(cell, ' '));
    NkDtString text(mode);
    if (cell != "undefined") text = nktest::unquoted(cell).c_str();
    text.SetModified(modified);
    return text;
}

/// A quoted text or "null", for the time of a call.
class TextArgument {
  public:
    explicit TextArgument(std::string_view cell)
        : m_isNull(cell == "null"), m_text(m_isNull ? std::string() : nktest::unquoted(cell)) {}
    operator LPCTSTR() const { return m_isNull ? nullptr : m_text.c_str(); }

  private:
    bool m_isNull;
    std::string m_text;
};

/// "version flag null", "version flag undefined", the same with ":mode", or "version flag "text"".
template <class Value>
void setFromExtern(Value& value, std::string_view cell) {
    const auto version = nktest::number<USHORT>(nktest::take(cell, ' '));
    const BOOL flag = nktest::number(nktest::take(cell, ' '));
    if (cell == "null") return value.SetFromExtern(nullptr, flag, version);
    if (cell.starts_with("undefined")) {
        nktest::take(cell, ':');
        const auto mode = cell.empty() ? NkDtWmMissing : static_cast<NkDtWorkingMode>(nktest::number(cell));
        const NkDtString undefined(mode);
        return value.SetFromExtern(&undefined, flag, version);
    }
    const NkDtString text(nktest::unquoted(cell).c_str());
    value.SetFromExtern(&text, flag, version);
}

/// "flag version undefined" or "flag version "text"".
template <class Value>
std::string convToExtern(const Value& value) {
    BOOL defined = -1;
    USHORT version = 0;
    const NkDtString text = value.ConvToExtern(defined, version);
    return std::to_string(defined) + " " + std::to_string(version) + " " +
           (text.IsDefined() ? nktest::inQuotes(text.GetValue()) : "undefined");
}

/// The value's archive bytes.
template <class Value>
std::string storedHex(Value& value) {
    const Bytes bytes = stored(value);
    return nktest::hexOf(bytes.data(), bytes.size());
}

}  // namespace valuetest
