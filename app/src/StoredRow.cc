#include "StoredRow.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "Error.h"
#include "SqlLiteral.h"
#include "Text.h"

namespace nkdt::app {

namespace {

/// A text that two values of a column share only if they are the same.
CString textOf(const Cell& cell) {
    return CString(cell.statementLiteral().GetValue());
}

std::vector<CString> textsOf(const BoundColumns& columns) {
    std::vector<CString> texts;
    for (const BoundColumn& column : columns)
        texts.push_back(textOf(*column.cell));
    return texts;
}

std::string listOf(const std::vector<const CDatabaseColumn*>& columns) {
    std::string names;
    for (const CDatabaseColumn* column : columns)
        names += (names.empty() ? "" : ", ") + visible(column->strName);
    return names;
}

CString keyColumnOf(const CDatabase& database, const CString& table) {
    requireTable(database, table);
    const std::vector<CDatabaseColumn> declared = database.GetColumns(table);
    std::vector<const CDatabaseColumn*> key;
    for (const CDatabaseColumn& column : declared) {
        if (column.nKeyPosition != 0) key.push_back(&column);
    }
    if (key.empty())
        throw UsageError("table " + visible(table) + " has no primary key, so no row of it can be named");
    if (key.size() > 1) {
        throw UsageError("the primary key of table " + visible(table) + " has several columns (" +
                         listOf(key) + "), and a row is named by one");
    }
    return key.front()->strName;
}

/// The selection with the key in any case.
Selection withKey(Selection selection, const CString& key) {
    if (!selection.columns.empty()) selection.columns.insert(selection.columns.begin(), utf8(key.View()));
    return selection;
}

/// The values of the key column that a text can mean: what a person reads in it goes before what a statement
/// does.
std::vector<std::unique_ptr<Cell>> keysNamedBy(const std::string& text, const BoundColumn& column) {
    const CString key = ansi(text, "the key");
    if (key.IsEmpty()) throw UsageError("the key is empty");
    std::vector<std::unique_ptr<Cell>> keys;
    std::string refusal;
    const auto readBy = [&](auto&& set) {
        std::unique_ptr<Cell> cell = makeCellFor(column);
        try {
            set(*cell);
        } catch (...) {
            const std::string reason = takeCaughtText();
            if (refusal.empty()) refusal = ": " + reason;
            return;
        }
        const bool another = keys.empty() || !keys.front()->equals(*cell);
        if (cell->value().IsDefined() && another) keys.push_back(std::move(cell));
    };
    readBy([&](Cell& cell) { cell.value().SetFromOFL(key); });
    readBy([&](Cell& cell) { cell.setStatementText(NkDtString(key)); });
    if (keys.empty()) {
        throw UsageError("the key \"" + text + "\" is no value of column " + column.name + refusal);
    }
    return keys;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// Whether a row that the database found has the key. A text may have been filled up with blanks: a database
/// that tells them apart has not found it.
bool isKey(const Cell& found, const Cell& wanted) {
    if (wanted.value().GetDtTyp() != NkDtTypString) return found.equals(wanted);
    return found.value().IsDefined() &&
           withoutTrailingBlanks(found.text().GetValue()) == withoutTrailingBlanks(wanted.text().GetValue());
}

/// The row as it is now, in the transaction that holds its lock.
class LockedRow {
  public:
    LockedRow(const CDatabase& database, const CString& table, const CString& condition,
              const BoundColumns& columns)
        : m_columns(columns), m_row(database) {
        m_row.OpenTable(table, CDatabaseRecordset::updatable, condition);
        for (const BoundColumn& column : columns) {
            m_cells.push_back(makeCellFor(column));
            m_cells.back()->bind(m_row, column.ansiName);
        }
    }

    /// false if it is not there.
    bool read() {
        if (!m_row.MoveNext()) return false;
        for (const auto& cell : m_cells)
            cell->fetch(m_row);
        return true;
    }

    std::vector<std::size_t> columnsWithOtherTexts(const std::vector<CString>& texts) const {
        std::vector<std::size_t> columns;
        for (std::size_t i = 0; i < m_cells.size(); ++i) {
            if (textOf(*m_cells[i]) != texts[i]) columns.push_back(i);
        }
        return columns;
    }

    /// Writes the values of some columns and returns what these refuse. If they refuse anything, the
    /// transaction is to be rolled back.
    RowForm::Refusals write(std::vector<std::size_t> columns) {
        RowForm::Refusals refusals = takeMissing(columns);
        while (!columns.empty()) {
            const std::optional<RowForm::Refusal> refusal = tryToWrite(columns, refusals.empty());
            if (!refusal) break;
            refusals.push_back(*refusal);
            std::erase(columns, refusal->column);
        }
        std::sort(refusals.begin(), refusals.end(),
                  [](const auto& a, const auto& b) { return a.column < b.column; });
        return refusals;
    }

  private:
    RowForm::Refusals takeMissing(std::vector<std::size_t>& columns) const {
        RowForm::Refusals refusals;
        std::erase_if(columns, [&](std::size_t i) {
            if (m_columns[i].nullable || m_columns[i].cell->value().IsDefined()) return false;
            refusals.push_back({i, CString("Dieses Feld darf nicht leer sein.")});
            return true;
        });
        return refusals;
    }

    // The first of the columns that refuses its value; the others are not written then. What the database
    // itself refuses counts only if they all count.
    std::optional<RowForm::Refusal> tryToWrite(const std::vector<std::size_t>& columns, bool counts) {
        m_row.Edit();
        for (const std::size_t i : columns) {
            m_cells[i]->value().Assign(m_columns[i].cell->value());
            m_cells[i]->store(m_row);
        }
        try {
            m_row.Update();
            return std::nullopt;
        } catch (CDBException* caught) {
            std::optional<RowForm::Refusal> refusal = refusalIn(*caught);
            if (!refusal && counts) throw;
            caught->Delete();
            m_row.CancelUpdate();
            return refusal;
        }
    }

    std::optional<RowForm::Refusal> refusalIn(const CDBException& error) const {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (m_columns[i].ansiName == error.m_strColumn) return RowForm::Refusal{i, error.m_strReason};
        }
        return std::nullopt;
    }

    const BoundColumns& m_columns;
    CDatabaseRecordset m_row;
    std::vector<std::unique_ptr<Cell>> m_cells;
};

/// Whether the database minds what the statement does, as with a key that it gives itself, or with a right
/// that is missing.
bool isStatementRefused(const CDBException& error) {
    return error.m_strState.View().starts_with("42");
}

}  // namespace

// Reading
// ----------------------------------------------------------------------------------------------------------

StoredRow::StoredRow(CDatabase& database, const CString& table, const std::string& key,
                     const Selection& selection)
    : m_database(database),
      m_table(table),
      m_keyName(keyColumnOf(database, table)),
      m_columns(columnsOf(database, table, withKey(selection, m_keyName))),
      m_key(findKey()) {
    m_columns.bound[m_key].nullable = false;
    read(key);
    m_texts = textsOf(m_columns.bound);
    m_title = m_table + ", " + m_keyName + " " + m_columns.bound[m_key].cell->value().ConvToOFL();
    for (BoundColumn& each : m_columns.bound)
        each.cell->value().SetModified(FALSE);
}

std::size_t StoredRow::findKey() const {
    const auto& bound = m_columns.bound;
    const auto found =
        std::find_if(bound.begin(), bound.end(), [&](const auto& c) { return c.ansiName == m_keyName; });
    if (found == bound.end()) {
        throw UsageError("the key of table " + visible(m_table) + ", column " + visible(m_keyName) +
                         ", cannot be bound, so no row of it can be named");
    }
    return static_cast<std::size_t>(found - bound.begin());
}

void StoredRow::read(const std::string& key) {
    const BoundColumn& column = m_columns.bound[m_key];
    for (const std::unique_ptr<Cell>& wanted : keysNamedBy(key, column)) {
        if (readBy(*wanted)) return;
    }
    throw DataError("table " + visible(m_table) + " has no row with the key " + column.name + " = " + key);
}

bool StoredRow::readBy(const Cell& key) {
    m_condition = CDatabase::QuoteName(m_keyName) + " = " + quotedLiteral(key);
    Selection one;
    one.filter = utf8(m_condition.View());
    TableReader reader(m_database, m_table, m_columns.bound, one);
    // A database may find a row whose key is only similar.
    return reader.next() && isKey(*m_columns.bound[m_key].cell, key);
}

// Saving
// ----------------------------------------------------------------------------------------------------------

StoredRow::Indices StoredRow::modified() const {
    Indices columns;
    for (std::size_t i = 0; i < m_columns.bound.size(); ++i) {
        if (m_columns.bound[i].cell->value().IsModified()) columns.push_back(i);
    }
    return columns;
}

// Where the first lock finds another row than was read, a trigger may have changed it, or left the update
// out. The second one finds what others have done, and nothing else.
StoredRow::Saved StoredRow::save() {
    const Indices columns = modified();
    if (columns.empty()) return {Saved::nothing};
    Saved saved = saveUnder(Lock::byUpdate, columns);
    if (saved.outcome == Saved::deleted || saved.outcome == Saved::overtaken)
        saved = saveUnder(Lock::withoutTrace, columns);
    if (saved.outcome == Saved::done) {
        for (const std::size_t i : columns)
            m_columns.bound[i].cell->value().SetModified(FALSE);
    }
    return saved;
}

StoredRow::Saved StoredRow::saveUnder(Lock kind, const Indices& columns) {
    try {
        CDatabaseTransaction transaction(m_database);
        const bool locked = kind == Lock::byUpdate ? lockByUpdate() : lockWithoutTrace();
        if (!locked) return {Saved::deleted};
        Saved saved = writeLocked(columns);
        if (saved.outcome == Saved::done) transaction.Commit();
        return saved;
    } catch (CDBException* caught) {
        caught->m_strError = caught->m_strReason;  // there is one row only, and nobody has to know its number
        throw;
    }
}

CString StoredRow::lockingUpdate() const {
    const CString key = CDatabase::QuoteName(m_keyName);
    return "UPDATE " + CDatabase::QuoteName(m_table) + " SET " + key + " = " + key + " WHERE ";
}

// Whether the row could be locked: it may be gone, or the database may mind the update.
bool StoredRow::lockByUpdate() {
    try {
        return m_database.ExecuteSQL(lockingUpdate() + m_condition) != 0;
    } catch (CDBException* caught) {
        if (!isStatementRefused(*caught)) throw;
        caught->Delete();
        return false;
    }
}

// SQLite locks the whole file. In other databases, the rows of a query can be locked as late as when they are
// fetched.
bool StoredRow::lockWithoutTrace() {
    if (m_database.GetDbms() == CDatabase::sqlite) {
        m_database.ExecuteSQL(lockingUpdate() + "0");
        return true;
    }
    CDatabaseRecordset row(m_database);
    row.OpenQuery("SELECT " + CDatabase::QuoteName(m_keyName) + " FROM " + CDatabase::QuoteName(m_table) +
                  " WHERE " + m_condition + " FOR UPDATE");
    return row.MoveNext() != FALSE;
}

// The row is released with its recordset, before the commit.
StoredRow::Saved StoredRow::writeLocked(const Indices& columns) {
    LockedRow row(m_database, m_table, m_condition, m_columns.bound);
    if (!row.read()) return {Saved::deleted};
    Indices changed = row.columnsWithOtherTexts(m_texts);
    if (!changed.empty()) return {Saved::overtaken, std::move(changed)};
    RowForm::Refusals refusals = row.write(columns);
    if (!refusals.empty()) return {Saved::refused, {}, std::move(refusals)};
    return {Saved::done, columns};
}

}  // namespace nkdt::app
