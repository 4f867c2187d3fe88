#include "nkdt/odbc/DatabaseRecordset.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Catalog.h"
#include "DateExchange.h"
#include "DecimalExchange.h"
#include "Diagnostics.h"
#include "RowColumn.h"
#include "RowWriter.h"
#include "Statement.h"
#include "Text.h"

using namespace nkdt::odbc;

namespace {

constexpr CRuntimeClass classDatabaseRecordset{"CDatabaseRecordset", sizeof(CDatabaseRecordset), 0, nullptr,
                                               &CRecordset::GetThisClass};

bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept {
    const auto lower = [](char ch) {
        return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

bool isNothing(LPCTSTR text) noexcept {
    return text == nullptr || *text == '\0';
}

}  // namespace

class NKDT_HIDDEN CDatabaseRecordset::Impl {
  public:
    enum class State { closed, opened, reading, ended, broken };
    enum class Editing { none, change, addition };

    explicit Impl(const CDatabase& database) : m_database(database) {}

    void close() noexcept;
    void openTable(LPCTSTR table, Access access, LPCTSTR filter, LPCTSTR sort);
    void openQuery(LPCTSTR sql);

    RowColumn& columnToBind(LPCTSTR name);
    void bindDate(LPCTSTR name, TIMESTAMP_STRUCT& field, bool fieldOfDates);
    bool fetch();
    /// Fills the bound fields from the row; what is refused is in refusals().
    void readFields(CRecordset& fields);
    const std::vector<std::pair<RowColumn*, Refusal>>& refusals() const noexcept { return m_refusals; }
    CDBException* exceptionFor(const RowColumn* column, const Refusal& refusal) const;

    void edit();
    void addNew(CRecordset& fields);
    bool update(CRecordset& fields);
    void cancel(CRecordset& fields);
    void erase();

    const std::vector<CDatabaseColumn>& columns() const noexcept { return m_columns; }
    bool isOpen() const noexcept { return m_state != State::closed; }
    bool isTable() const noexcept { return !m_table.empty(); }
    bool isEnded() const noexcept { return m_state == State::ended; }
    LONGLONG rowNumber() const noexcept { return m_rowNumber; }
    CDatabase::Dbms dbms() const { return m_database.GetConnection()->dbms(); }
    void setBestFit(bool bestFit) noexcept {
        m_option = bestFit ? nkcp::Unmappable::bestFit : nkcp::Unmappable::refuse;
    }

  private:
    RowColumn& addColumn(const CDatabaseColumn& column);
    void addIdentifyingColumns();
    void startReading();
    std::string selectText() const;
    int resultNumber(std::size_t index) const;
    bool hasRow() const noexcept { return m_state == State::reading && m_rowNumber > 0 && !m_deleted; }
    void requireRow() const;
    void requireWriter() const;
    bool isChanged(const RowColumn& column, const CRecordset& fields) const;
    bool isToBeWritten(const RowColumn& column, const CRecordset& fields) const;
    RowColumns takeOutgoing(const CRecordset& fields);
    std::string rowName() const;

    /// Runs a piece of work and names the row in what it throws.
    template <class Work>
    void inRow(Work work) const;

    const CDatabase& m_database;
    nkcp::Unmappable m_option = nkcp::Unmappable::refuse;
    State m_state = State::closed;
    Editing m_editing = Editing::none;
    LONGLONG m_rowNumber = 0;
    LONGLONG m_added = 0;
    bool m_deleted = false;

    std::string m_table;  // quoted; empty for a query
    std::string m_filter;
    std::string m_sort;
    bool m_byKey = false;
    std::vector<CDatabaseColumn> m_columns;
    std::vector<std::unique_ptr<RowColumn>> m_row;
    RowColumns m_identifying;
    std::vector<std::pair<RowColumn*, Refusal>> m_refusals;
    std::unique_ptr<RowWriter> m_writer;
    std::unique_ptr<Statement> m_rows;  // last, for its columns' buffers are above
};

void CDatabaseRecordset::Impl::close() noexcept {
    m_rows.reset();
    m_writer.reset();
    m_refusals.clear();
    m_identifying.clear();
    m_row.clear();
    m_columns.clear();
    m_table.clear();
    m_filter.clear();
    m_sort.clear();
    m_state = State::closed;
    m_editing = Editing::none;
    m_rowNumber = 0;
    m_added = 0;
    m_deleted = false;
}

void CDatabaseRecordset::Impl::openTable(LPCTSTR table, Access access, LPCTSTR filter, LPCTSTR sort) {
    close();
    m_columns = m_database.GetColumns(table);
    m_table = quotedName(table);
    if (!isNothing(filter)) m_filter = utf8FromCp1252(filter);
    if (!isNothing(sort)) m_sort = utf8FromCp1252(sort);
    m_byKey = std::any_of(m_columns.begin(), m_columns.end(),
                          [](const CDatabaseColumn& c) { return c.nKeyPosition > 0; });
    if (access == updatable) m_writer = std::make_unique<RowWriter>(m_database.GetConnection(), m_table);
    m_state = State::opened;
}

void CDatabaseRecordset::Impl::openQuery(LPCTSTR sql) {
    close();
    auto rows = std::make_unique<Statement>(m_database.GetConnection());
    rows->executeDirect(utf8FromCp1252(sql == nullptr ? "" : sql));
    const int count = rows->columnCount();
    if (count == 0) fail("07005", "Die Anweisung liefert keine Zeilen");
    for (int number = 1; number <= count; ++number)
        m_columns.push_back(rows->describeColumn(number));
    m_rows = std::move(rows);
    m_state = State::opened;
}

RowColumn& CDatabaseRecordset::Impl::addColumn(const CDatabaseColumn& column) {
    const auto found =
        std::find_if(m_row.begin(), m_row.end(), [&](const auto& c) { return &c->column() == &column; });
    if (found != m_row.end()) return **found;
    m_row.push_back(std::make_unique<RowColumn>(column, dbms()));
    return *m_row.back();
}

RowColumn& CDatabaseRecordset::Impl::columnToBind(LPCTSTR name) {
    if (m_state != State::opened)
        fail("HY010", "Spalten werden nach dem Öffnen und vor der ersten Zeile gebunden");
    const std::string_view wanted = name == nullptr ? "" : name;
    auto found = std::find_if(m_columns.begin(), m_columns.end(),
                              [&](const auto& c) { return c.strName.View() == wanted; });
    if (found == m_columns.end()) {
        found = std::find_if(m_columns.begin(), m_columns.end(),
                             [&](const auto& c) { return equalIgnoringCase(c.strName.View(), wanted); });
    }
    if (found == m_columns.end()) {
        fail("42S22", "Die Spalte " + quotedExcerpt(utf8FromCp1252(wanted)) + " gibt es nicht");
    }
    RowColumn& column = addColumn(*found);
    if (column.exchange)
        fail("HY000", "Die Spalte " + quotedExcerpt(utf8FromCp1252(wanted)) + " ist schon gebunden");
    return column;
}

void CDatabaseRecordset::Impl::bindDate(LPCTSTR name, TIMESTAMP_STRUCT& field, bool fieldOfDates) {
    RowColumn& column = columnToBind(name);
    column.digits = RowColumn::Digits::asTold;
    column.exchange = exchangeDate(field, DateColumn(column.column(), dbms(), fieldOfDates, isTable()));
}

// Reading
// ------------------------------------------------------------------------------------------------------------

// A row is found again by its key, or else by everything in it but what follows from the rest.
void CDatabaseRecordset::Impl::addIdentifyingColumns() {
    for (const CDatabaseColumn& column : m_columns) {
        if (m_byKey ? column.nKeyPosition > 0 : !column.fGenerated)
            m_identifying.push_back(&addColumn(column));
    }
}

std::string CDatabaseRecordset::Impl::selectText() const {
    std::string sql = "SELECT ";
    const char* link = "";
    for (const auto& column : m_row) {
        sql += link;
        sql += column->expression();
        link = ", ";
    }
    sql += " FROM " + m_table;
    if (!m_filter.empty()) sql += " WHERE " + m_filter;
    if (!m_sort.empty()) sql += " ORDER BY " + m_sort;
    return sql;
}

// A table's columns are selected as they are needed; a query's stand where the query has them.
int CDatabaseRecordset::Impl::resultNumber(std::size_t index) const {
    if (!m_table.empty()) return static_cast<int>(index) + 1;
    return static_cast<int>(&m_row[index]->column() - m_columns.data()) + 1;
}

void CDatabaseRecordset::Impl::startReading() {
    if (m_writer) addIdentifyingColumns();
    if (m_row.empty()) addColumn(m_columns.front());
    if (!m_table.empty()) {
        m_rows = std::make_unique<Statement>(m_database.GetConnection());
        m_rows->executeDirect(selectText());
    }
    for (std::size_t i = 0; i < m_row.size(); ++i)
        m_row[i]->bind(*m_rows, resultNumber(i));
}

// Behind the last row the handle is freed at once: it would keep its lock.
bool CDatabaseRecordset::Impl::fetch() {
    if (m_state == State::closed) fail("HY010", "Die Zeilenmenge ist nicht geöffnet");
    if (m_state == State::broken) fail("24000", "Das Lesen ist nach einem Fehler abgebrochen");
    if (m_state == State::ended) return false;
    m_editing = Editing::none;
    m_deleted = false;
    const State before = std::exchange(m_state, State::broken);  // until the row is there
    bool asked = before != State::opened;
    try {
        if (!asked) startReading();
        asked = true;
        if (m_rows->fetch()) {
            for (const auto& column : m_row)
                column->complete(*m_rows);
            ++m_rowNumber;
            m_state = State::reading;
            return true;
        }
    } catch (CDBException* e) {
        m_rows.reset();
        if (asked)
            e->m_strError =
                messageFromUtf8("Zeile " + std::to_string(m_rowNumber + 1) + ": ") + e->m_strError;
        throw;
    }
    m_rows.reset();
    m_state = State::ended;
    return false;
}

void CDatabaseRecordset::Impl::readFields(CRecordset& fields) {
    m_refusals.clear();
    for (const auto& column : m_row) {
        if (!column->exchange) continue;
        FieldExchange& exchange = *column->exchange;
        const CrossingValue value = column->value();
        bool null = value.null;
        column->refused = false;
        if (!null) {
            try {
                exchange.read(value, m_option);
            } catch (Refusal& refusal) {
                m_refusals.emplace_back(column.get(), std::move(refusal));
                column->refused = true;
                null = true;
            }
        }
        if (null) exchange.clear();
        fields.SetFieldNull(exchange.field(), null ? TRUE : FALSE);
    }
}

std::string CDatabaseRecordset::Impl::rowName() const {
    if (m_editing == Editing::addition) return "Neue Zeile " + std::to_string(m_added + 1);
    return "Zeile " + std::to_string(m_rowNumber);
}

CDBException* CDatabaseRecordset::Impl::exceptionFor(const RowColumn* column, const Refusal& refusal) const {
    auto exception =
        std::make_unique<CDBException>(SQL_ERROR, refusal.state, 0, messageFromUtf8(refusal.text));
    CString place = messageFromUtf8(rowName());
    if (column != nullptr) {
        exception->m_strColumn = column->column().strName;
        place += ", Spalte " + exception->m_strColumn;
    }
    exception->m_strError = place + ": " + exception->m_strReason;
    return exception.release();
}

// Writing
// ------------------------------------------------------------------------------------------------------------

template <class Work>
void CDatabaseRecordset::Impl::inRow(Work work) const {
    try {
        work();
    } catch (const Refusal& refusal) {
        throw exceptionFor(nullptr, refusal);
    } catch (CDBException* e) {
        e->m_strError = messageFromUtf8(rowName() + ": ") + e->m_strError;
        throw;
    }
}

void CDatabaseRecordset::Impl::requireRow() const {
    if (!hasRow()) fail("24000", "Es gibt keine aktuelle Zeile");
}

void CDatabaseRecordset::Impl::requireWriter() const {
    if (!m_writer) fail("HY000", "Die Zeilenmenge ist nicht zum Schreiben geöffnet");
}

void CDatabaseRecordset::Impl::edit() {
    requireWriter();
    requireRow();
    m_editing = Editing::change;
}

void CDatabaseRecordset::Impl::addNew(CRecordset& fields) {
    requireWriter();
    m_editing = Editing::addition;
    for (const auto& column : m_row) {
        if (!column->exchange) continue;
        column->exchange->clear();
        fields.SetFieldNull(column->exchange->field(), TRUE);
    }
}

// A refused value left its field null; as long as it stays so, the column is not touched.
bool CDatabaseRecordset::Impl::isChanged(const RowColumn& column, const CRecordset& fields) const {
    const bool null = fields.IsFieldNull(column.exchange->field()) != FALSE;
    const CrossingValue value = column.value();
    if (null) return !value.null && !column.refused;
    return value.null || column.refused || !column.exchange->holds(value, m_option);
}

// In a new row, a null leaves a generated column to the database.
bool CDatabaseRecordset::Impl::isToBeWritten(const RowColumn& column, const CRecordset& fields) const {
    if (m_editing == Editing::change) return isChanged(column, fields);
    return !column.column().fGenerated || !fields.IsFieldNull(column.exchange->field());
}

// The columns that are to be written, with their outgoing values.
RowColumns CDatabaseRecordset::Impl::takeOutgoing(const CRecordset& fields) {
    RowColumns columns;
    for (const auto& column : m_row) {
        if (!column->exchange || !isToBeWritten(*column, fields)) continue;
        try {
            if (column->column().fGenerated)
                throw Refusal{"428C9", "die Datenbank berechnet den Wert selbst"};
            column->outgoing.setNull();
            if (!fields.IsFieldNull(column->exchange->field())) column->exchange->write(column->outgoing);
        } catch (const Refusal& refusal) {
            throw exceptionFor(column.get(), refusal);
        }
        columns.push_back(column.get());
    }
    return columns;
}

bool CDatabaseRecordset::Impl::update(CRecordset& fields) {
    if (m_editing == Editing::none) fail("HY010", "Es wird keine Zeile bearbeitet");
    const RowColumns columns = takeOutgoing(fields);
    const bool addition = m_editing == Editing::addition;
    if (addition && columns.empty()) fail("HY000", "Keine Spalte ist gebunden");
    if (!columns.empty()) {
        inRow([&] {
            addition ? m_writer->insert(columns) : m_writer->update(columns, m_identifying, m_byKey);
        });
    }
    m_editing = Editing::none;
    if (!addition) {
        for (RowColumn* column : columns)
            column->keepOutgoing();
        return !columns.empty();
    }
    ++m_added;
    if (hasRow()) readFields(fields);
    return true;
}

void CDatabaseRecordset::Impl::cancel(CRecordset& fields) {
    m_editing = Editing::none;
    if (hasRow()) readFields(fields);
}

void CDatabaseRecordset::Impl::erase() {
    requireWriter();
    requireRow();
    m_editing = Editing::none;
    inRow([&] { m_writer->erase(m_identifying, m_byKey); });
    m_deleted = true;
}

// The interface
// ------------------------------------------------------------------------------------------------------

CDatabaseRecordset::CDatabaseRecordset(const CDatabase& database)
    : m_impl(std::make_unique<Impl>(database)) {}

CDatabaseRecordset::~CDatabaseRecordset() = default;

const CRuntimeClass* CDatabaseRecordset::GetThisClass() noexcept {
    return &classDatabaseRecordset;
}

void CDatabaseRecordset::OpenTable(LPCTSTR lpszTable, Access nAccess, LPCTSTR lpszFilter, LPCTSTR lpszSort) {
    m_impl->openTable(lpszTable, nAccess, lpszFilter, lpszSort);
}

void CDatabaseRecordset::OpenQuery(LPCTSTR lpszSQL) {
    m_impl->openQuery(lpszSQL);
}

void CDatabaseRecordset::Close() noexcept {
    m_impl->close();
}

BOOL CDatabaseRecordset::IsOpen() const noexcept {
    return m_impl->isOpen() ? TRUE : FALSE;
}

const std::vector<CDatabaseColumn>& CDatabaseRecordset::GetColumns() const noexcept {
    return m_impl->columns();
}

void CDatabaseRecordset::BindShort(LPCTSTR lpszColumn, int& nField) {
    m_impl->columnToBind(lpszColumn).exchange = exchangeShort(nField);
    SetFieldNull(&nField, TRUE);
}

void CDatabaseRecordset::BindLong(LPCTSTR lpszColumn, long& nField) {
    m_impl->columnToBind(lpszColumn).exchange = exchangeLong(nField);
    SetFieldNull(&nField, TRUE);
}

void CDatabaseRecordset::BindLong(LPCTSTR lpszColumn, LONG& nField) {
    m_impl->columnToBind(lpszColumn).exchange = exchangeLong(nField);
    SetFieldNull(&nField, TRUE);
}

void CDatabaseRecordset::BindBool(LPCTSTR lpszColumn, BOOL& fField) {
    RowColumn& column = m_impl->columnToBind(lpszColumn);
    column.exchange = exchangeBool(fField, column.keepsWhatItIsGiven());
    SetFieldNull(&fField, TRUE);
}

void CDatabaseRecordset::BindDouble(LPCTSTR lpszColumn, double& dField) {
    RowColumn& column = m_impl->columnToBind(lpszColumn);
    column.digits = RowColumn::Digits::ofDouble;
    column.exchange =
        exchangeDouble(dField, DoubleCapacity(column.column(), m_impl->dbms()), column.takesNumbers());
    SetFieldNull(&dField, TRUE);
}

// A column of texts holds no doubles, and a query's expressions are its own.
void CDatabaseRecordset::BindDecimal(LPCTSTR lpszColumn, CString& strField) {
    RowColumn& column = m_impl->columnToBind(lpszColumn);
    const bool doublesInFull = column.takesNumbers() && m_impl->isTable();
    column.digits = doublesInFull ? RowColumn::Digits::ofDecimal : RowColumn::Digits::asTold;
    column.exchange =
        exchangeDecimal(strField, DecimalCapacity(column.column(), m_impl->dbms()), doublesInFull);
    SetFieldNull(&strField, TRUE);
}

void CDatabaseRecordset::BindDateTime(LPCTSTR lpszColumn, TIMESTAMP_STRUCT& tsField) {
    m_impl->bindDate(lpszColumn, tsField, false);
    SetFieldNull(&tsField, TRUE);
}

void CDatabaseRecordset::BindDate(LPCTSTR lpszColumn, TIMESTAMP_STRUCT& tsField) {
    m_impl->bindDate(lpszColumn, tsField, true);
    SetFieldNull(&tsField, TRUE);
}

void CDatabaseRecordset::BindChar(LPCTSTR lpszColumn, CString& strField) {
    RowColumn& column = m_impl->columnToBind(lpszColumn);
    column.digits = RowColumn::Digits::asTold;
    column.exchange = exchangeChar(strField, column.keepsWhatItIsGiven());
    SetFieldNull(&strField, TRUE);
}

void CDatabaseRecordset::BindText(LPCTSTR lpszColumn, CString& strField) {
    RowColumn& column = m_impl->columnToBind(lpszColumn);
    column.digits = RowColumn::Digits::asTold;
    column.exchange = exchangeText(strField);
    SetFieldNull(&strField, TRUE);
}

void CDatabaseRecordset::SetBestFit(BOOL fBestFit) noexcept {
    m_impl->setBestFit(fBestFit != FALSE);
}

void CDatabaseRecordset::PrepareText(CString& strField, INT nLength) {
    reserveText(strField, static_cast<std::size_t>(std::max(nLength, 0)));
}

// All fields are filled before the first refusal is told, so that none keeps a value of the row before.
BOOL CDatabaseRecordset::MoveNext() {
    if (!m_impl->fetch()) return FALSE;
    m_impl->readFields(*this);
    for (const auto& [column, refusal] : m_impl->refusals()) {
        OnRefused(column->column(), column->exchange->field(), m_impl->exceptionFor(column, refusal));
    }
    return TRUE;
}

BOOL CDatabaseRecordset::IsEOF() const noexcept {
    return m_impl->isEnded() ? TRUE : FALSE;
}

LONGLONG CDatabaseRecordset::GetRowNumber() const noexcept {
    return m_impl->rowNumber();
}

void CDatabaseRecordset::Edit() {
    m_impl->edit();
}

void CDatabaseRecordset::AddNew() {
    m_impl->addNew(*this);
}

BOOL CDatabaseRecordset::Update() {
    return m_impl->update(*this) ? TRUE : FALSE;
}

void CDatabaseRecordset::CancelUpdate() {
    m_impl->cancel(*this);
}

void CDatabaseRecordset::Delete() {
    m_impl->erase();
}

void CDatabaseRecordset::OnRefused(const CDatabaseColumn&, const void*, CDBException* pException) {
    throw pException;
}
