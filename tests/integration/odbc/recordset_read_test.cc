#include "TestDatabase.h"

using namespace nktest;

namespace {

class RecordsetReading : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute(
            "CREATE TABLE Kunden (Nummer INTEGER PRIMARY KEY, Rang SMALLINT, Kennung CHAR(1), Name "
            "VARCHAR(40), "
            "Bemerkung TEXT, Umsatz DOUBLE PRECISION)");
    }

    void openAll() {
        rs.OpenTable(table(), CDatabaseRecordset::readOnly, nullptr, "Nummer");
        rs.BindLong(column("Nummer"), number);
        rs.BindShort(column("Rang"), rank);
        rs.BindChar(column("Kennung"), mark);
        rs.BindText(column("Name"), name);
        rs.BindText(column("Bemerkung"), remark);
        rs.BindDouble(column("Umsatz"), turnover);
    }

    // PostgreSQL folds the unquoted names of CREATE TABLE.
    CString table() const { return isPostgresql() ? "kunden" : "Kunden"; }
    static CString column(LPCTSTR name) { return name; }

    CDatabaseRecordset rs{db};
    long number = -1;
    int rank = -1;
    CString mark, name, remark;
    double turnover = -1;
};

TEST_P(RecordsetReading, EveryKindOfFieldIsFilled) {
    execute("INSERT INTO Kunden VALUES (4711, -7, 'ß', 'Müller & Söhne', 'zahlt in €', 0.1)");
    openAll();
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 4711);
    EXPECT_EQ(rank, -7);
    EXPECT_EQ(mark, ansi("ß"));
    EXPECT_EQ(name, ansi("Müller & Söhne"));
    EXPECT_EQ(remark, ansi("zahlt in €"));
    EXPECT_EQ(turnover, 0.1);
    EXPECT_EQ(rs.GetRowNumber(), 1);
    EXPECT_FALSE(rs.IsEOF());
    EXPECT_FALSE(rs.MoveNext());
    EXPECT_TRUE(rs.IsEOF());
    EXPECT_EQ(rs.GetRowNumber(), 1);
    EXPECT_FALSE(rs.MoveNext());
}

TEST_P(RecordsetReading, NullIsKnownByTheFieldsAddress) {
    execute(
        "INSERT INTO Kunden VALUES (1, 1, 'a', 'b', 'c', 1.5), (2, NULL, NULL, NULL, NULL, NULL), (3, 3, "
        "'d', '', 'f', 2)");
    openAll();
    EXPECT_TRUE(rs.IsFieldNull(&name)) << "before the first row";
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_FALSE(rs.IsFieldNull(&name));
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_FALSE(rs.IsFieldNull(&number));
    for (const void* field :
         {static_cast<const void*>(&rank), static_cast<const void*>(&mark), static_cast<const void*>(&name),
          static_cast<const void*>(&remark), static_cast<const void*>(&turnover)}) {
        EXPECT_TRUE(rs.IsFieldNull(field));
    }
    EXPECT_EQ(rank, 0) << "nothing is left of the row before";
    EXPECT_TRUE(name.IsEmpty());
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_FALSE(rs.IsFieldNull(&name)) << "an empty text is a value";
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(rank, 3);
}

TEST_P(RecordsetReading, BoundsOfWholeNumbersAreValues) {
    execute("INSERT INTO Kunden (Nummer, Rang) VALUES (-2147483648, -32768), (2147483647, 32767)");
    openAll();
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, -2147483648L);
    EXPECT_EQ(rank, -32768);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 2147483647L);
    EXPECT_EQ(rank, 32767);
}

TEST_P(RecordsetReading, DoublesComeExactly) {
    if (!isPostgresql() && !extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    const double values[] = {
        0.1 + 0.2, 1.0 / 3, 1.7976931348623157e308, -2.2250738585072014e-308, 5e-324, 123456789012345680.0,
        -1e-10,    0.0};
    CDatabaseStatement insert(db, "INSERT INTO Kunden (Nummer, Umsatz) VALUES (?, ?)");
    rs.OpenTable(table(), CDatabaseRecordset::updatable, nullptr, "Nummer");
    rs.BindLong("nummer", number);
    rs.BindDouble("umsatz", turnover);
    for (std::size_t i = 0; i < std::size(values); ++i) {
        rs.AddNew();
        number = static_cast<long>(i);
        turnover = values[i];
        rs.SetFieldNull(&number, FALSE);
        rs.SetFieldNull(&turnover, FALSE);
        ASSERT_TRUE(rs.Update());
    }
    for (const double expected : values) {
        ASSERT_TRUE(rs.MoveNext());
        EXPECT_EQ(turnover, expected);
    }
}

struct Refused {
    const char* what;
    const char* expression;  // selected as column x
    const char* state;
    const char* text;
};

TEST_P(RecordsetReading, WhatDoesNotFitAWholeNumberIsRefused) {
    const Refused cases[] = {
        {"long", "2147483648", "22003", "\"2147483648\" liegt außerhalb von -2147483648 bis 2147483647"},
        {"long", "-2147483649", "22003", "\"-2147483649\" liegt außerhalb"},
        {"long", "'99999999999999999999'", "22003", "liegt außerhalb"},
        {"long", "1.5", "22018", "\"1.5\" ist keine ganze Zahl"},
        {"long", "'12x'", "22018", "\"12x\" ist keine ganze Zahl"},
        {"long", "'0x10'", "22018", "\"0x10\" ist keine ganze Zahl"},
        {"long", "'+5'", "22018", "\"+5\" ist keine ganze Zahl"},
        {"long", "' 5'", "22018", "\" 5\" ist keine ganze Zahl"},
        {"long", "'5 '", "22018", "\"5 \" ist keine ganze Zahl"},
        {"long", "'-'", "22018", "\"-\" ist keine ganze Zahl"},
        {"long", "''", "22018", "\"\" ist keine ganze Zahl"},
        {"short", "32768", "22003", "\"32768\" liegt außerhalb von -32768 bis 32767"},
        {"short", "-32769", "22003", "\"-32769\" liegt außerhalb"},
        {"short", "65537", "22003", "\"65537\" liegt außerhalb"},
        {"double", "'1,5'", "22018", "\"1,5\" ist keine Zahl"},
        {"double", "'0x10'", "22018", "\"0x10\" ist keine Zahl"},
        {"double", "'NaN'", "22018", "\"NaN\" ist keine Zahl"},
        {"double", "'-inf'", "22018", "\"-inf\" ist keine Zahl"},
        {"double", "'1e999'", "22003", "\"1e999\" liegt außerhalb der Gleitkommazahlen"},
        {"double", "''", "22018", "\"\" ist keine Zahl"},
        {"char", "'ab'", "22001", "Der Text ist länger als ein Zeichen"},
    };
    for (const Refused& c : cases) {
        SCOPED_TRACE(std::string(c.what) + " " + c.expression);
        CDatabaseRecordset query(db);
        query.OpenQuery(ansi(std::string("SELECT ") + c.expression + " AS x"));
        const std::string what = c.what;
        if (what == "long") query.BindLong("x", number);
        if (what == "short") query.BindShort("x", rank);
        if (what == "double") query.BindDouble("x", turnover);
        if (what == "char") query.BindChar("x", mark);
        const Thrown error = thrownBy([&] { query.MoveNext(); });
        EXPECT_TRUE(error.thrown);
        EXPECT_EQ(error.state, c.state);
        EXPECT_NE(error.text.find("Zeile 1, Spalte x: "), std::string::npos) << error.text;
        EXPECT_NE(error.text.find(c.text), std::string::npos) << error.text;
    }
}

TEST_P(RecordsetReading, ACharacterOutsideTheCodePageNamesRowColumnAndCodePoint) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, 'a')");
    execute("INSERT INTO Kunden (Nummer, Name, Rang) VALUES (2, 'x' || " + character(0x4E2D) + ", 5)");
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (3, 'ö')");
    openAll();
    ASSERT_TRUE(rs.MoveNext());
    const Thrown error = thrownBy([&] { rs.MoveNext(); });
    EXPECT_EQ(error.text, std::string("Zeile 2, Spalte ") + (isPostgresql() ? "name" : "Name") +
                              ": Zeichen U+4E2D ist in Codepage 1252 nicht darstellbar");
    EXPECT_EQ(error.state, "22021");
    EXPECT_EQ(rs.GetRowNumber(), 2);
    EXPECT_TRUE(rs.IsFieldNull(&name));
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(number, 2) << "the row's other fields are filled";
    EXPECT_EQ(rank, 5);
    ASSERT_TRUE(rs.MoveNext()) << "and the reading goes on";
    EXPECT_EQ(name, ansi("ö"));
}

TEST_P(RecordsetReading, ACharacterBeyondTheBasicPlaneIsNamedInFull) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, " + character(0x1F600) + ")");
    openAll();
    EXPECT_NE(thrownBy([&] { rs.MoveNext(); }).text.find("Zeichen U+1F600 ist"), std::string::npos);
}

TEST_P(RecordsetReading, BestFitTakesTheCharacterThatLooksAlike) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, 'Dvo' || " + character(0x159) + " || 'ák')");
    rs.SetBestFit(TRUE);
    openAll();
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(name, ansi("Dvorák"));
}

TEST_P(RecordsetReading, LongTextsComeWholeAndShortOnesAfterThem) {
    for (const std::size_t length : {255U, 256U, 257U, 5000U, 70000U, 3U}) {
        const std::string text = std::string(length - 2, 'x') + "ü";
        CDatabaseStatement insert(db, "INSERT INTO Kunden (Nummer, Bemerkung, Name) VALUES (?, ?, ?)");
        insert.SetValue(1, std::to_string(++number), CDatabaseColumn::integer);
        insert.SetValue(2, ansi(text));
        insert.SetValue(3, "kurz");
        EXPECT_EQ(insert.Execute(), 1);
    }
    openAll();
    for (const INT length : {255, 256, 257, 5000, 70000, 3}) {
        ASSERT_TRUE(rs.MoveNext());
        ASSERT_EQ(remark.GetLength(), length - 1);
        EXPECT_EQ(utf8(remark.Right(2).View()), "xü");
        EXPECT_EQ(name, "kurz") << "the columns beside are untouched";
        EXPECT_GE(remark.GetAllocLength(), remark.GetLength() + 1)
            << "a value of this length can be written back uncut";
    }
}

TEST_P(RecordsetReading, AFilterAndAnOrderArePartOfTheStatement) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, 'Ä'), (2, 'B'), (3, 'Ä')");
    rs.OpenTable(table(), CDatabaseRecordset::readOnly, ansi("Name = 'Ä'"), "Nummer DESC");
    rs.BindLong("nummer", number);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 3);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 1);
    EXPECT_FALSE(rs.MoveNext());
}

TEST_P(RecordsetReading, ColumnsOfAQueryAreBoundByTheirNames) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, 'a'), (2, 'b')");
    rs.OpenQuery(
        "SELECT Name AS \"Der Name\", 7 AS ignored, COUNT(*) AS anzahl FROM Kunden GROUP BY Name ORDER BY 1");
    EXPECT_EQ(rs.GetColumns().size(), 3U);
    rs.BindLong("anzahl", number);
    rs.BindText("der name", name);
    ASSERT_TRUE(rs.MoveNext());
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(name, "b");
    EXPECT_EQ(number, 1);
}

TEST_P(RecordsetReading, AViewIsReadLikeATable) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, 'Öl')");
    execute("CREATE VIEW sicht AS SELECT Name AS n FROM Kunden");
    rs.OpenTable("sicht");
    rs.BindText("n", name);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(name, ansi("Öl"));
}

TEST_P(RecordsetReading, NamesWithUmlautsQuotesAndPatternsAreExact) {
    execute("CREATE TABLE \"Größe_1\" (\"Spalte \"\"ü\"\"\" INTEGER)");
    execute("CREATE TABLE \"GrößeX1\" (\"falsch\" INTEGER)");
    execute("INSERT INTO \"Größe_1\" VALUES (42)");
    rs.OpenTable(ansi("Größe_1"));
    ASSERT_EQ(rs.GetColumns().size(), 1U);
    rs.BindLong(ansi("Spalte \"ü\""), number);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 42);
}

TEST_P(RecordsetReading, BindingIsRefusedWhereItMakesNoSense) {
    EXPECT_EQ(thrownBy([&] { rs.BindLong("Nummer", number); }).state, "HY010") << "not open";
    EXPECT_EQ(thrownBy([&] { rs.MoveNext(); }).state, "HY010");
    openAll();
    EXPECT_EQ(thrownBy([&] { rs.BindText("gibtsnicht", name); }).text,
              "Die Spalte \"gibtsnicht\" gibt es nicht");
    EXPECT_NE(thrownBy([&] { rs.BindText("NAME", remark); }).text.find("schon gebunden"), std::string::npos);
    EXPECT_FALSE(rs.MoveNext());
    EXPECT_EQ(thrownBy([&] { rs.BindText("Name", name); }).state, "HY010")
        << "after the first row was asked for";
}

TEST_P(RecordsetReading, AMissingTableAndAWrongQueryAreErrors) {
    const Thrown missing = thrownBy([&] { rs.OpenTable("gibtsnicht"); });
    EXPECT_EQ(missing.state, "42S02");
    EXPECT_EQ(missing.text, "Die Tabelle \"gibtsnicht\" gibt es nicht");
    EXPECT_FALSE(rs.IsOpen());

    const Thrown query = thrownBy([&] { rs.OpenQuery(ansi("SELECT * FROM \"gäbe es nicht\"")); });
    EXPECT_TRUE(query.thrown);
    EXPECT_EQ(query.state, isPostgresql() ? "42P01" : "HY000");
    EXPECT_EQ(query.nativeError, isPostgresql() ? 1 : 1);
    EXPECT_NE(query.text.find("gäbe es nicht"), std::string::npos) << query.text;
    EXPECT_NE(thrownBy([&] { rs.OpenQuery("DELETE FROM Kunden"); }).text.find("keine Zeilen"),
              std::string::npos);
    EXPECT_FALSE(rs.IsOpen());
}

TEST_P(RecordsetReading, ARecordsetCanBeOpenedAgain) {
    execute("INSERT INTO Kunden (Nummer, Name) VALUES (1, 'a'), (2, 'b')");
    openAll();
    ASSERT_TRUE(rs.MoveNext());
    rs.Close();
    EXPECT_FALSE(rs.IsOpen());
    openAll();
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 1);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(name, "b");
}

// Collects what is refused instead of throwing it.
class CollectingRecordset : public CDatabaseRecordset {
  public:
    using CDatabaseRecordset::CDatabaseRecordset;
    std::vector<std::string> refused;

  protected:
    void OnRefused(const CDatabaseColumn& column, const void* pField, CDBException* pException) override {
        EXPECT_TRUE(IsFieldNull(pField));
        refused.push_back(utf8(column.strName.View()) + " " + pException->m_strState.GetString());
        pException->Delete();
    }
};

TEST_P(RecordsetReading, ADerivedRecordsetSeesEveryRefusedValueAndGoesOn) {
    CollectingRecordset collecting(db);
    collecting.OpenQuery("SELECT 99999 AS a, 'x' AS b, 7 AS c");
    collecting.BindShort("a", rank);
    collecting.BindLong("b", number);
    long good = 0;
    collecting.BindLong("c", good);
    ASSERT_TRUE(collecting.MoveNext());
    EXPECT_EQ(collecting.refused, (std::vector<std::string>{"a 22003", "b 22018"}));
    EXPECT_EQ(good, 7);
    EXPECT_FALSE(collecting.MoveNext());
}

INSTANTIATE_TEST_SUITE_P(Each, RecordsetReading, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

}  // namespace
