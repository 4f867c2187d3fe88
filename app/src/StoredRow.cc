#include "StoredRow.h"

#include <algorithm>
#include <memory>

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

/// The value of the key column that a text names.
std::unique_ptr<Cell> keyCell(const BoundColumn& column, const std::string& text) {
    const std::string what = "the key";
    std::unique_ptr<Cell> cell = makeCellFor(column);
    try {
        cell->value().SetFromOFL(ansi(text, what));
    } catch (const UsageError&) {
        throw;
    } catch (...) {
        throw UsageError(what + " \"" + text + "\" is no value of column " + column.name + ": " +
                         takeCaughtText());
    }
    if (!cell->value().IsDefined()) throw UsageError(what + " is empty");
    return cell;
}

}  // namespace

StoredRow::StoredRow(CDatabase& database, const CString& table, const std::string& key,
                     const Selection& selection)
    : m_database(database),
      m_table(table),
      m_columns(columnsOf(database, table, selection)),
      m_key(findKey(keyColumnOf(database, table))),
      m_title(table) {
    read(key);
}

std::size_t StoredRow::findKey(const CString& name) const {
    const auto& bound = m_columns.bound;
    const auto found =
        std::find_if(bound.begin(), bound.end(), [&](const auto& c) { return c.ansiName == name; });
    if (found == bound.end()) {
        throw UsageError("the key of table " + visible(m_table) + ", column " + visible(name) +
                         ", cannot be bound, so no row of it can be named");
    }
    return static_cast<std::size_t>(found - bound.begin());
}

void StoredRow::read(const std::string& key) {
    const BoundColumn& column = m_columns.bound[m_key];
    const std::unique_ptr<Cell> wanted = keyCell(column, key);
    m_condition = CDatabase::QuoteName(column.ansiName) + " = " + quotedLiteral(*wanted);
    Selection one;
    one.filter = utf8(m_condition.View());
    TableReader reader(m_database, m_table, m_columns.bound, one);
    // A database may find a row whose key is only similar.
    if (!reader.next() || !column.cell->equals(*wanted)) {
        throw DataError("table " + visible(m_table) + " has no row with the key " + column.name + " = " +
                        key);
    }
    m_texts = textsOf(m_columns.bound);
    m_title += ", " + column.ansiName + " " + column.cell->value().ConvToOFL();
    for (BoundColumn& each : m_columns.bound)
        each.cell->value().SetModified(FALSE);
}

std::vector<std::size_t> StoredRow::modified() const {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < m_columns.bound.size(); ++i) {
        if (m_columns.bound[i].cell->value().IsModified()) columns.push_back(i);
    }
    return columns;
}

StoredRow::Saved StoredRow::save() {
    const std::vector<std::size_t> columns = modified();
    if (columns.empty()) return {Saved::nothing, {}};
    CDatabaseTransaction transaction(m_database);
    Saved saved = writeLocked(columns);
    if (saved.outcome != Saved::done) return saved;
    transaction.Commit();

    for (const std::size_t i : columns)
        m_columns.bound[i].cell->value().SetModified(FALSE);
    return saved;
}

// An update that changes nothing takes the row's lock in every database. The rows are released with the
// recordset, before the commit.
StoredRow::Saved StoredRow::writeLocked(const std::vector<std::size_t>& columns) {
    const CString key = CDatabase::QuoteName(m_columns.bound[m_key].ansiName);
    const CString lock =
        "UPDATE " + CDatabase::QuoteName(m_table) + " SET " + key + " = " + key + " WHERE " + m_condition;
    if (m_database.ExecuteSQL(lock) == 0) return {Saved::deleted, {}};

    CDatabaseRecordset row(m_database);
    row.OpenTable(m_table, CDatabaseRecordset::updatable, m_condition);
    std::vector<std::unique_ptr<Cell>> now;
    for (const BoundColumn& column : m_columns.bound) {
        now.push_back(makeCellFor(column));
        now.back()->bind(row, column.ansiName);
    }
    if (!row.MoveNext()) return {Saved::deleted, {}};
    Saved overtaken{Saved::overtaken, {}};
    for (std::size_t i = 0; i < now.size(); ++i) {
        now[i]->fetch(row);
        if (textOf(*now[i]) != m_texts[i]) overtaken.columns.push_back(i);
    }
    if (!overtaken.columns.empty()) return overtaken;

    row.Edit();
    for (const std::size_t i : columns) {
        now[i]->value().Assign(m_columns.bound[i].cell->value());
        now[i]->store(row);
    }
    row.Update();
    return {Saved::done, columns};
}

}  // namespace nkdt::app
