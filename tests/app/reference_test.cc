#include <tuple>

#include "AppTest.h"

using namespace nktest;

namespace {

/// The sample database of the reference data, loaded once for this program.
class ReferenceDatabase {
  public:
    static const ReferenceDatabase* instance() {
        const char* const folder = std::getenv("NKDT_REFERENCE_DATA");
        if (folder == nullptr) return nullptr;
        static const ReferenceDatabase database{std::string(folder) + "/northwind.sql"};
        return &database;
    }
    std::string path() const { return m_folder.file("reference.db"); }

  private:
    explicit ReferenceDatabase(const std::string& script) {
        const std::string command = "(echo 'BEGIN;'; cat '" + script + "'; echo 'COMMIT;') | sqlite3 '" +
                                    path() + "' >'" + m_folder.file("log") + "' 2>&1";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("the reference database cannot be loaded");
    }

    TemporaryFolder m_folder;
};

class Reference : public testing::Test {
  protected:
    void SetUp() override {
        if (ReferenceDatabase::instance() == nullptr) GTEST_SKIP() << "NKDT_REFERENCE_DATA is not set";
        source = ReferenceDatabase::instance()->path();
    }

    std::string source;
    TemporaryFolder folder;
};

/// A table in a format into a database.
class ReferenceTransfer
    : public Reference,
      public testing::WithParamInterface<std::tuple<const char*, const char*, CDatabase::Dbms>> {};

std::string nameOf(
    const testing::TestParamInfo<std::tuple<const char*, const char*, CDatabase::Dbms>>& info) {
    std::string name = std::string(std::get<0>(info.param)) + "_" + std::get<1>(info.param) +
                       (std::get<2>(info.param) == CDatabase::postgresql ? "_PostgreSQL" : "_SQLite");
    std::erase(name, ' ');
    return name;
}

}  // namespace

TEST_F(Reference, PassesTheCheck) {
    const Outcome outcome =
        call({"check", source, "Customers", "Orders", "Order Details", "Products", "Employees", "--strict"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_THAT(outcome.out, HasSubstr("Table Customers, 93 rows"));
    EXPECT_THAT(outcome.out, HasSubstr("Table Orders, 830 rows"));
    EXPECT_THAT(outcome.out, HasSubstr("Table Order Details, 2155 rows"));
    EXPECT_THAT(outcome.out, HasSubstr("Table Products, 77 rows"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("Region +NkDtString +93 +62 +93 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("Freight +NkDtDecimal +830 +0 +830 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("OrderDate +NkDtDateTime +830 +0 +830 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("ShippedDate +NkDtDateTime +830 +21 +830 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("BirthDate +NkDtDateZp +9 +0 +9 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("Photo +not bindable\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("Discount +NkDtDouble +2155 +0 +2155 +0 +0\n"));
}

TEST_F(Reference, HasTheTotalsThatTheDatabaseCountsInCents) {
    for (const auto& [table, column] :
         {std::pair("Orders", "Freight"), {"Order Details", "UnitPrice"}, {"Products", "UnitPrice"}}) {
        const std::string from = std::string(" FROM \"") + table + "\"";
        const std::string inCents = std::string("ROUND(") + column + " * 100)";
        ASSERT_EQ(valueOf(source, "SELECT COUNT(*)" + from + " WHERE ABS(" + column + " * 100 - " + inCents +
                                      ") > 0.000001"),
                  "0");
        std::string cents = valueOf(source, "SELECT SUM(CAST(" + inCents + " AS INTEGER))" + from);
        ASSERT_GT(cents.size(), 2U);
        const Outcome outcome = call({"check", source, table, "--columns", column, "--format", "plain"});
        EXPECT_THAT(outcome.out, HasSubstr(std::string("Total: column ") + column + ", " +
                                           cents.insert(cents.size() - 2, ".") + "\n"));
    }
}

TEST_F(Reference, HasTimesWithFractionsThatAreDates) {
    EXPECT_EQ(valueOf(source, "SELECT COUNT(*) FROM Orders WHERE OrderDate LIKE '____-__-__ 00:00:00.000'"),
              "830");
    const Outcome outcome = call({"show", source, "Orders", "--columns", "OrderDate,ShippedDate", "--where",
                                  "OrderID IN (10248, 11077)", "--sort", "OrderID"});
    EXPECT_EQ(outcome.out,
              "OrderDate   ShippedDate\n"
              "----------  -----------\n"
              "04.07.1996  16.07.1996\n"
              "06.05.1998\n");
}

TEST_F(Reference, ShowsLettersBeyondAscii) {
    const Outcome outcome = call({"show", source, "Customers", "--columns", "CustomerID,City", "--where",
                                  "CustomerID IN ('ANATR', 'OTTIK')"});
    EXPECT_EQ(outcome.out,
              "CustomerID  City\n"
              "----------  -----------\n"
              "ANATR       México D.F.\n"
              "OTTIK       Köln\n");
}

TEST_P(ReferenceTransfer, GivesATableWithTheSameExternalTexts) {
    const auto& [table, format, dbms] = GetParam();
    std::string target = makeDatabase(folder, "leer.db", {});
    if (dbms == CDatabase::postgresql) {
        if (PostgresServer::instance() == nullptr)
            GTEST_SKIP() << "PostgreSQL's server programs are not installed";
        target = PostgresServer::instance()->connectionString();
        CDatabase db;
        db.Open(target.c_str());
        db.ExecuteSQL("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
    }
    const std::string file = folder.file("table");
    ASSERT_EQ(call({"export", source, table, "--format", format, "--output", file}).status, 0);
    const Outcome imported = call({"import", target, table, "--format", format, "--input", file, "--create"});
    ASSERT_EQ(imported.status, 0) << imported.err;
    const Outcome compared = call({"compare", source, table, target, table});
    EXPECT_THAT(compared.out, HasSubstr("The tables are the same")) << compared.err;
    EXPECT_EQ(compared.status, 0);
    EXPECT_EQ(call({"check", target, table, "--strict"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(Tables, ReferenceTransfer,
                         testing::Combine(testing::Values("Customers", "Orders", "Order Details", "Products",
                                                          "Employees"),
                                          testing::Values("extern", "sql", "archive"),
                                          testing::Values(CDatabase::sqlite, CDatabase::postgresql)),
                         nameOf);
