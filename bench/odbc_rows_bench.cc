/// @file
/// Reading 200,000 rows of two whole numbers and two texts from an SQLite file into values through a
/// recordset, beside a plain loop that fetches into bound C buffers and looks at nothing.
///
/// The plain loop lets the driver turn texts into numbers without a check; the recordset checks each number
/// and converts each text from UTF-8 to code page 1252. Both use the same connection text.

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include <unistd.h>

#include "BenchSupport.h"
#include "NewRequests.h"
#include "nkdt/NkDt.h"
#include "nkdt/RecordPool.h"
#include "nkdt/odbc/Odbc.h"
#include "nkdt/odbc/SqlApi.h"

namespace bench {

namespace {

constexpr int rows = 200000;
constexpr const char* query = "SELECT Nummer, Menge, Name, Bemerkung FROM Posten";

/// A database of its own, removed in the end.
class Database {
  public:
    Database()
        : m_path(std::filesystem::temp_directory_path() /
                 ("nkdt_bench_" + std::to_string(::getpid()) + ".db")) {
        CDatabase database;
        database.Open(m_path.c_str(), CDatabase::createMissing);
        CDatabaseTransaction transaction(database);
        database.ExecuteSQL(
            "CREATE TABLE Posten (Nummer INTEGER PRIMARY KEY, Menge INTEGER, Name VARCHAR(40), "
            "Bemerkung VARCHAR(80))");
        CDatabaseStatement insert(database, "INSERT INTO Posten VALUES (?, ?, ?, ?)");
        const std::vector<int> amounts = numbers(rows);
        for (int i = 0; i < rows; ++i) {
            insert.SetValue(1, std::to_string(i + 1), CDatabaseColumn::integer);
            insert.SetValue(2, std::to_string(amounts[static_cast<std::size_t>(i)]),
                            CDatabaseColumn::integer);
            insert.SetValue(3, text(8 + static_cast<std::size_t>(i) % 17, static_cast<unsigned>(i) % 97));
            insert.SetValue(4, text(20 + static_cast<std::size_t>(i) % 41, static_cast<unsigned>(i) % 89));
            insert.Execute();
            m_sum += i + 1 + amounts[static_cast<std::size_t>(i)];
        }
        transaction.Commit();
    }
    ~Database() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& path() const { return m_path.native(); }
    /// What all whole numbers add up to.
    long long sum() const { return m_sum; }

    static const Database& instance() {
        static const Database database;
        return database;
    }

  private:
    std::filesystem::path m_path;
    long long m_sum = 0;
};

/// What is computed from all rows, so that both ways are seen to read them.
struct Totals {
    long long numbers = 0;
    std::size_t characters = 0;
};

void check(benchmark::State& state, const Totals& totals) {
    if (totals.numbers != Database::instance().sum() || totals.characters == 0)
        state.SkipWithError("the rows were not read as they were written");
}

// The plain loop

void require(SQLRETURN result, const char* call) {
    if (!SQL_SUCCEEDED(result)) throw std::runtime_error(call);
}

/// A handle of the driver manager, freed in the end.
class Handle {
  public:
    Handle(SQLSMALLINT type, SQLHANDLE parent) : m_type(type) {
        require(SQLAllocHandle(type, parent, &m_handle), "SQLAllocHandle");
    }
    ~Handle() { SQLFreeHandle(m_type, m_handle); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    SQLHANDLE get() const { return m_handle; }

  private:
    SQLSMALLINT m_type;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

class PlainConnection {
  public:
    explicit PlainConnection(const std::string& path)
        : m_environment(SQL_HANDLE_ENV, SQL_NULL_HANDLE), m_connection(connectionOf(m_environment)) {
        std::string target = "Driver=SQLite3;Database=" + path + ";NoCreat=1;StepAPI=1;Timeout=5000";
        require(SQLDriverConnect(m_connection->get(), nullptr, reinterpret_cast<SQLCHAR*>(target.data()),
                                 SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
                "SQLDriverConnect");
    }
    ~PlainConnection() { SQLDisconnect(m_connection->get()); }
    PlainConnection(const PlainConnection&) = delete;
    PlainConnection& operator=(const PlainConnection&) = delete;
    SQLHANDLE get() const { return m_connection->get(); }

  private:
    static std::unique_ptr<Handle> connectionOf(const Handle& environment) {
        require(SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION,
                              reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
                "SQLSetEnvAttr");
        return std::make_unique<Handle>(SQL_HANDLE_DBC, environment.get());
    }

    Handle m_environment;
    std::unique_ptr<Handle> m_connection;
};

void bind(const Handle& statement, SQLUSMALLINT column, SQLSMALLINT type, void* buffer, SQLLEN size,
          SQLLEN& indicator) {
    require(SQLBindCol(statement.get(), column, type, buffer, size, &indicator), "SQLBindCol");
}

Totals readPlain(const PlainConnection& connection) {
    const Handle statement(SQL_HANDLE_STMT, connection.get());
    SQLINTEGER number = 0;
    SQLINTEGER amount = 0;
    char name[256];
    char remark[256];
    SQLLEN indicators[4] = {};
    bind(statement, 1, SQL_C_SLONG, &number, 0, indicators[0]);
    bind(statement, 2, SQL_C_SLONG, &amount, 0, indicators[1]);
    bind(statement, 3, SQL_C_CHAR, name, sizeof name, indicators[2]);
    bind(statement, 4, SQL_C_CHAR, remark, sizeof remark, indicators[3]);
    std::string sql = query;
    require(SQLExecDirect(statement.get(), reinterpret_cast<SQLCHAR*>(sql.data()), SQL_NTS), "SQLExecDirect");

    Totals totals;
    SQLRETURN result = SQL_SUCCESS;
    while (SQL_SUCCEEDED(result = SQLFetch(statement.get()))) {
        totals.numbers += number + amount;
        totals.characters += static_cast<std::size_t>(indicators[2] + indicators[3]);
    }
    if (result != SQL_NO_DATA) throw std::runtime_error("SQLFetch");
    return totals;
}

// The recordset

/// Reads all rows into values.
/// @param afterRow called after each row with its number
template <class AfterRow>
Totals readValues(const CDatabase& database, AfterRow afterRow) {
    CDatabaseRecordset recordset(database);
    recordset.OpenQuery(query);
    long numberField = 0;
    long amountField = 0;
    CString nameField;
    CString remarkField;
    recordset.BindLong("Nummer", numberField);
    recordset.BindLong("Menge", amountField);
    recordset.BindText("Name", nameField);
    recordset.BindText("Bemerkung", remarkField);

    NkDtLong number;
    NkDtLong amount;
    NkDtString name;
    NkDtString remark;
    Totals totals;
    while (recordset.MoveNext()) {
        number.SetFromRecordSet(recordset, numberField);
        amount.SetFromRecordSet(recordset, amountField);
        name.SetFromRecordSet(recordset, nameField);
        remark.SetFromRecordSet(recordset, remarkField);
        totals.numbers += number.GetValue() + amount.GetValue();
        totals.characters += static_cast<std::size_t>(name.GetLength() + remark.GetLength());
        afterRow(recordset.GetRowNumber());
    }
    return totals;
}

void plainLoop(benchmark::State& state) {
    const PlainConnection connection(Database::instance().path());
    for (auto _ : state) {
        check(state, readPlain(connection));
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

void recordsetLoop(benchmark::State& state) {
    CDatabase database;
    database.Open(Database::instance().path().c_str());
    for (auto _ : state) {
        check(state, readValues(database, [](LONGLONG) {}));
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

/// The library's requests for memory in the second half of the rows, when every buffer has grown. The pool of
/// the records is off, since it would hide some.
void requests(benchmark::State& state) {
    CDatabase database;
    database.Open(Database::instance().path().c_str());
    const bool wasOn = nkdt::enableRecordPool(false);
    std::size_t inSecondHalf = 0;
    for (auto _ : state) {
        const RequestCount probe;
        const auto soFar = [&] { return probe.value() + newRequests(); };
        std::size_t inFirstHalf = 0;
        std::size_t inAll = 0;
        check(state, readValues(database, [&](LONGLONG row) {
                  if (row == rows / 2) inFirstHalf = soFar();
                  if (row == rows) inAll = soFar();
              }));
        inSecondHalf = inAll - inFirstHalf;
    }
    nkdt::enableRecordPool(wasOn);
    state.counters["per_row"] = static_cast<double>(inSecondHalf) / (rows / 2);
}

BENCHMARK(plainLoop)->Name("read_200000_rows/limit_bound_buffers")->Unit(benchmark::kMillisecond);
BENCHMARK(recordsetLoop)->Name("read_200000_rows/recordset_into_values")->Unit(benchmark::kMillisecond);
BENCHMARK(requests)->Name("requests/recordset_into_values")->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace bench
