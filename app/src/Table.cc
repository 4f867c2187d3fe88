#include "Table.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <optional>
#include <utility>

#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

using Declared = std::vector<CDatabaseColumn>;

const CDatabaseColumn* findColumn(const Declared& columns, std::string_view ansiName) {
    const auto with = [&](auto&& same) {
        const auto found = std::find_if(columns.begin(), columns.end(),
                                        [&](const auto& c) { return same(c.strName.View(), ansiName); });
        return found == columns.end() ? nullptr : &*found;
    };
    const CDatabaseColumn* const exact = with([](std::string_view a, std::string_view b) { return a == b; });
    return exact != nullptr ? exact : with(equalIgnoringCase);
}

const CDatabaseColumn& requireColumn(const Declared& columns, const std::string& name, const CString& table) {
    const CDatabaseColumn* const found = findColumn(columns, ansi(name, "the column"));
    if (found == nullptr) throw UsageError("table " + visible(table) + " has no column \"" + name + "\"");
    return *found;
}

// A name that has commas of its own goes before several names.
std::vector<const CDatabaseColumn*> columnsNamedBy(const std::string& names, const Declared& columns,
                                                   const CString& table) {
    if (const CDatabaseColumn* const whole = findColumn(columns, ansi(names, "the column"))) return {whole};
    std::vector<const CDatabaseColumn*> named;
    for (std::size_t start = 0; start <= names.size();) {
        const std::size_t end = std::min(names.find(',', start), names.size());
        const CDatabaseColumn& column = requireColumn(columns, names.substr(start, end - start), table);
        if (std::find(named.begin(), named.end(), &column) != named.end())
            throw UsageError("--columns names the column " + visible(column.strName) + " twice");
        named.push_back(&column);
        start = end + 1;
    }
    return named;
}

std::vector<const CDatabaseColumn*> chosenColumns(const Declared& columns,
                                                  const std::vector<std::string>& names,
                                                  const CString& table) {
    std::vector<const CDatabaseColumn*> chosen;
    for (const std::string& name : names) {
        for (const CDatabaseColumn* column : columnsNamedBy(name, columns, table)) {
            if (std::find(chosen.begin(), chosen.end(), column) == chosen.end()) chosen.push_back(column);
        }
    }
    if (names.empty()) {
        for (const CDatabaseColumn& column : columns)
            chosen.push_back(&column);
    }
    return chosen;
}

const ColumnKind& requireKind(const std::string& type) {
    const ColumnKind* const kind = findKind(type);
    if (kind == nullptr) throw UsageError("there is no type \"" + type + "\"; there are " + kindNames());
    return *kind;
}

using Overrides = std::map<const CDatabaseColumn*, const ColumnKind*>;

Overrides overridesOf(const Declared& columns, const std::vector<std::string>& as, const CString& table) {
    Overrides overrides;
    for (const std::string& text : as) {
        const std::size_t sign = text.rfind('=');
        if (sign == std::string::npos) throw UsageError("--as takes COLUMN=TYPE, not \"" + text + "\"");
        const CDatabaseColumn& column = requireColumn(columns, text.substr(0, sign), table);
        if (!overrides.emplace(&column, &requireKind(text.substr(sign + 1))).second) {
            throw UsageError("--as names the column " + visible(column.strName) + " twice");
        }
    }
    return overrides;
}

bool isConnectionString(const std::string& target) {
    return target.find('=') != std::string::npos;
}

}  // namespace

void openDatabase(CDatabase& database, const std::string& target) {
    if (!isConnectionString(target)) {
        struct stat status {};
        if (target.empty()) throw UsageError("no database is named");
        if (target.find(';') != std::string::npos) {
            throw UsageError("the path \"" + target + "\" has a \";\", which the driver takes for its end");
        }
        const int failed = ::stat(target.c_str(), &status) == 0 ? 0 : errno;
        if (failed == ENOENT || failed == ENOTDIR)
            throw UsageError("there is no database file \"" + target + "\"");
        if (failed == 0 && S_ISDIR(status.st_mode))
            throw UsageError("\"" + target + "\" is a folder, not a database file");
    }
    database.Open(target.c_str(), CDatabase::openExisting);
}

void requireTable(const CDatabase& database, const CString& table) {
    if (database.HasTable(table)) return;
    constexpr std::size_t mostNamed = 20;
    const std::vector<CString> tables = database.GetTables();
    std::string names;
    for (std::size_t i = 0; i < std::min(tables.size(), mostNamed); ++i)
        names += (i == 0 ? "; there are " : ", ") + visible(tables[i]);
    if (tables.size() > mostNamed) names += " and " + std::to_string(tables.size() - mostNamed) + " more";
    throw UsageError("there is no table \"" + visible(table) + "\"" + names);
}

TableColumns columnsOf(const CDatabase& database, const CString& table, const Selection& selection) {
    requireTable(database, table);
    const Declared declared = database.GetColumns(table);
    const Overrides overrides = overridesOf(declared, selection.as, table);
    TableColumns columns;
    for (const CDatabaseColumn* column : chosenColumns(declared, selection.columns, table)) {
        const std::string name = visible(column->strName);
        const auto overridden = overrides.find(column);
        const ColumnKind* const kind =
            overridden != overrides.end() ? overridden->second : kindFor(column->nType);
        if (kind != nullptr) {
            columns.bound.push_back({name, column->strName, kind, kind->makeCell(),
                                     column->fNullable != FALSE, column->fGenerated != FALSE});
            if (selection.plain) columns.bound.back().cell->value().SetFormat(nullptr);
        } else {
            columns.leftOut.push_back({name, visible(column->strTypeName), "not bindable"});
        }
    }
    if (columns.bound.empty()) {
        throw DataError("no column of table " + visible(table) +
                        " can be bound by its type; --as COLUMN=TYPE binds one");
    }
    return columns;
}

std::unique_ptr<Cell> makeCellFor(const BoundColumn& column) {
    std::unique_ptr<Cell> cell = column.kind->makeCell();
    cell->value().SetFormat(column.cell->value().GetFormat());
    return cell;
}

void tellLeftOut(Console& console, const CString& table, const std::string& column, const std::string& why) {
    console.tell("table " + visible(table) + ", column " + column + " is left out: " + why);
}

void tellLeftOut(Console& console, const CString& table, const std::vector<LeftOutColumn>& leftOut) {
    for (const LeftOutColumn& column : leftOut) {
        const std::string type = column.type.empty() ? "" : " (" + column.type + ")";
        tellLeftOut(console, table, column.name + type, column.advice());
    }
}

// Reading
// ----------------------------------------------------------------------------------------------------------

namespace {

std::string askedBy(const Selection& selection) {
    std::string text;
    if (!selection.filter.empty()) text = "the condition \"" + selection.filter + "\"";
    if (!selection.sort.empty())
        text += (text.empty() ? "" : ", ") + ("the order \"" + selection.sort + "\"");
    return text;
}

}  // namespace

TableReader::TableReader(const CDatabase& database, const CString& table, BoundColumns& columns,
                         const Selection& selection, Refusals* refusals)
    : m_columns(columns),
      m_refusals(refusals),
      m_refused(columns.size()),
      m_asked(askedBy(selection)),
      m_rows(database, *this) {
    const auto condition = [](const std::string& text, const char* what) { return ansi(text, what); };
    m_rows.OpenTable(table, CDatabaseRecordset::readOnly, condition(selection.filter, "the condition"),
                     condition(selection.sort, "the order"));
    m_rows.SetBestFit(selection.bestFit);
    for (BoundColumn& column : m_columns)
        column.cell->bind(m_rows, column.ansiName);
}

void TableReader::Rows::OnRefused(const CDatabaseColumn& column, const void* field, CDBException* exception) {
    if (m_reader.m_refusals == nullptr) CDatabaseRecordset::OnRefused(column, field, exception);
    const auto found = std::find_if(m_reader.m_columns.begin(), m_reader.m_columns.end(),
                                    [&](const BoundColumn& c) { return c.ansiName == column.strName; });
    const auto index = static_cast<std::size_t>(found - m_reader.m_columns.begin());
    m_reader.m_refused[index] = true;
    try {
        throw exception;
    } catch (...) {
        m_reader.m_refusals->refused(index, takeCaughtText());
    }
}

bool TableReader::moveNext() {
    try {
        return m_rows.MoveNext() != FALSE;
    } catch (CDBException*) {
        if (m_asked.empty() || row() != 0) throw;
        const std::string text = takeCaughtText();
        throw DataError(m_asked + ": " + text);
    }
}

bool TableReader::next() {
    std::fill(m_refused.begin(), m_refused.end(), false);
    if (!moveNext()) return false;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        BoundColumn& column = m_columns[i];
        if (m_refused[i]) {
            column.cell->value().Clear();
        } else if (m_refusals == nullptr) {
            atPlace(row(), column.name, [&] { column.cell->fetch(m_rows); });
        } else {
            try {
                column.cell->fetch(m_rows);
            } catch (...) {
                m_refusals->refused(i, placeOf(row(), column.name) + ": " + takeCaughtText());
                column.cell->value().Clear();
            }
        }
    }
    return true;
}

// Writing
// ----------------------------------------------------------------------------------------------------------

TableWriter::TableWriter(const CDatabase& database, const CString& table, BoundColumns& columns)
    : m_columns(columns), m_rows(database) {
    m_rows.OpenTable(table, CDatabaseRecordset::updatable);
    for (BoundColumn& column : m_columns) {
        if (!column.generated) column.cell->bind(m_rows, column.ansiName);
    }
}

void TableWriter::add() {
    ++m_row;
    m_rows.AddNew();
    for (BoundColumn& column : m_columns) {
        if (!column.generated) atPlace(m_row, column.name, [&] { column.cell->store(m_rows); });
    }
    m_rows.Update();
}

CString createTableStatement(const CDatabase& database, const CString& table, const BoundColumns& columns) {
    CString statement = "CREATE TABLE " + CDatabase::QuoteName(table) + " (";
    const char* link = "";
    for (const BoundColumn& column : columns) {
        statement += link;
        statement +=
            CDatabase::QuoteName(column.ansiName) + " " + column.kind->declaredType(database.GetDbms());
        link = ", ";
    }
    return statement + ")";
}

}  // namespace nkdt::app
