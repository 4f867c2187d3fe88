#include <limits>

#include "TestDatabase.h"

using namespace nktest;

namespace {

// A recordset on "artikel", by its key or without one.
class RecordsetWriting : public EachDatabase {
  protected:
    void open(const std::string& key) {
        execute("CREATE TABLE artikel (nummer INTEGER" + key +
                ", lager SMALLINT, klasse CHAR(1), name VARCHAR(40) NOT NULL" +
                ", preis DOUBLE PRECISION, notiz TEXT DEFAULT 'neu')");
        execute(
            "INSERT INTO artikel VALUES (1, 10, 'a', 'Schraube', 0.1, 'x'), (2, NULL, NULL, 'Mutter', NULL, "
            "NULL), "
            "(3, 30, 'c', 'Dübel', 3.5, 'z')");
        reopen();
    }
    void openByKey() { open(" PRIMARY KEY"); }
    void openWithoutKey() { open(""); }

    void reopen() {
        rs.OpenTable("artikel", CDatabaseRecordset::updatable, nullptr, "nummer");
        rs.BindLong("nummer", number);
        rs.BindShort("lager", stock);
        rs.BindChar("klasse", grade);
        rs.BindText("name", name);
        rs.BindDouble("preis", price);
    }
    void moveTo(long wanted) {
        while (rs.MoveNext()) {
            if (number == wanted) return;
        }
        FAIL() << "no row " << wanted;
    }
    void set(CString& field, std::string_view text) {
        field = ansi(text);
        rs.SetFieldNull(&field, FALSE);
    }
    template <class Number>
    void set(Number& field, Number value) {
        field = value;
        rs.SetFieldNull(&field, FALSE);
    }
    /// The table as text, a line a row.
    std::string rows() {
        const std::string pieces =
            "COALESCE(CAST(nummer AS VARCHAR(20)), '-') || ' ' || COALESCE(CAST(lager AS VARCHAR(20)), '-') "
            "|| ' ' || "
            "COALESCE(klasse, '-') || ' ' || name || ' ' || COALESCE(CAST(preis AS VARCHAR(20)), '-') || ' ' "
            "|| "
            "COALESCE(notiz, '-') AS zeile";
        CDatabaseRecordset all(db);
        all.OpenQuery(ansi("SELECT " + pieces + " FROM artikel ORDER BY nummer, name"));
        CString line;
        all.BindText("zeile", line);
        std::string text;
        while (all.MoveNext())
            text += utf8(line.View()) + "\n";
        return text;
    }

    static constexpr const char* untouched = "1 10 a Schraube 0.1 x\n2 - - Mutter - -\n3 30 c Dübel 3.5 z\n";

    CDatabaseRecordset rs{db};
    long number = 0;
    int stock = 0;
    CString grade, name;
    double price = 0;
};

TEST_P(RecordsetWriting, AnEditedRowIsWrittenByItsKey) {
    openByKey();
    moveTo(2);
    rs.Edit();
    set(stock, 20);
    set(grade, "ß");
    set(name, "Mutter €");
    set(price, 2.25);
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(rows(), "1 10 a Schraube 0.1 x\n2 20 ß Mutter € 2.25 -\n3 30 c Dübel 3.5 z\n");
}

TEST_P(RecordsetWriting, AnEditedRowIsWrittenByItsOldValuesWhereThereIsNoKey) {
    openWithoutKey();
    moveTo(2);
    rs.Edit();
    set(name, "Flügelmutter");
    EXPECT_TRUE(rs.Update());
    moveTo(3);
    rs.Edit();
    rs.SetFieldNull(&price, TRUE);
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(rows(), "1 10 a Schraube 0.1 x\n2 - - Flügelmutter - -\n3 30 c Dübel - z\n");
}

TEST_P(RecordsetWriting, OnlyChangedColumnsAreWritten) {
    openByKey();
    moveTo(1);
    execute("UPDATE artikel SET lager = 11 WHERE nummer = 1");
    rs.Edit();
    set(name, "Schrauben");
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT lager FROM artikel WHERE nummer = 1"), "11") << "the stock was not edited";
}

TEST_P(RecordsetWriting, AnUpdateWithoutAChangeWritesNothing) {
    openByKey();
    moveTo(1);
    rs.Edit();
    set(name, "Schraube");
    set(price, 0.1);
    EXPECT_FALSE(rs.Update());
    EXPECT_EQ(rows(), untouched);
}

TEST_P(RecordsetWriting, ARowCanBeEditedTwiceAndItsKeyChanged) {
    openByKey();
    moveTo(3);
    rs.Edit();
    set(number, 7L);
    set(name, "Spreizdübel");
    EXPECT_TRUE(rs.Update());
    rs.Edit();
    set(stock, 31);
    EXPECT_TRUE(rs.Update());
    rs.Edit();
    EXPECT_FALSE(rs.Update()) << "what was written is the row's value now";
    EXPECT_EQ(rows(), "1 10 a Schraube 0.1 x\n2 - - Mutter - -\n7 31 c Spreizdübel 3.5 z\n");
}

TEST_P(RecordsetWriting, EveryRowCanBeUpdatedWhileTheRowsStream) {
    openByKey();
    while (rs.MoveNext()) {
        rs.Edit();
        set(stock, static_cast<int>(number) + 100);
        EXPECT_TRUE(rs.Update());
    }
    EXPECT_EQ(rows(), "1 101 a Schraube 0.1 x\n2 102 - Mutter - -\n3 103 c Dübel 3.5 z\n");
}

TEST_P(RecordsetWriting, DoublesFindTheirRowExactly) {
    if (!isPostgresql() && !extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    openWithoutKey();
    rs.AddNew();
    set(number, 4L);
    set(name, "genau");
    set(price, 0.1 + 0.2);
    ASSERT_TRUE(rs.Update());
    reopen();
    moveTo(4);
    EXPECT_EQ(price, 0.1 + 0.2);
    rs.Edit();
    set(price, 1.7976931348623157e308);
    ASSERT_TRUE(rs.Update());
    rs.Edit();
    set(price, 5e-324);
    ASSERT_TRUE(rs.Update());
    reopen();
    moveTo(4);
    EXPECT_EQ(price, 5e-324);
}

TEST_P(RecordsetWriting, ANewRowTakesFieldsNullsAndDefaults) {
    openByKey();
    rs.AddNew();
    EXPECT_TRUE(rs.IsFieldNull(&stock));
    EXPECT_TRUE(name.IsEmpty());
    set(number, 4L);
    set(name, "Nagel 'spitz' \"x\"; --");
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(rows(), std::string(untouched) + "4 - - Nagel 'spitz' \"x\"; -- - neu\n");
}

TEST_P(RecordsetWriting, ManyNewRowsShareOneStatement) {
    openByKey();
    CDatabaseTransaction transaction(db);
    for (long i = 100; i < 400; ++i) {
        rs.AddNew();
        set(number, i);
        set(name, std::string(static_cast<std::size_t>(i % 37), 'n') + "ü");
        if (i % 3 == 0) set(stock, 5);
        ASSERT_TRUE(rs.Update());
    }
    transaction.Commit();
    EXPECT_EQ(value("SELECT COUNT(*) FROM artikel"), "303");
    EXPECT_EQ(value("SELECT COUNT(*) FROM artikel WHERE lager = 5"), "100");
    EXPECT_EQ(value("SELECT SUM(LENGTH(name)) FROM artikel WHERE nummer BETWEEN 184 AND 185"), "38")
        << "a short text behind a long one";
}

TEST_P(RecordsetWriting, TheCurrentRowIsBackAfterANewOne) {
    openByKey();
    moveTo(1);
    rs.AddNew();
    set(number, 4L);
    set(name, "Nagel");
    ASSERT_TRUE(rs.Update());
    EXPECT_EQ(number, 1);
    EXPECT_EQ(name, "Schraube");
    rs.Edit();
    EXPECT_FALSE(rs.Update());
}

TEST_P(RecordsetWriting, CancelGivesTheRowBack) {
    openByKey();
    moveTo(1);
    rs.Edit();
    set(name, "falsch");
    rs.SetFieldNull(&stock, TRUE);
    rs.CancelUpdate();
    EXPECT_EQ(name, "Schraube");
    EXPECT_FALSE(rs.IsFieldNull(&stock));
    EXPECT_EQ(thrownBy([&] { rs.Update(); }).state, "HY010");
    EXPECT_EQ(rows(), untouched);
}

TEST_P(RecordsetWriting, ADeletedRowIsGone) {
    openByKey();
    moveTo(2);
    rs.Delete();
    EXPECT_EQ(thrownBy([&] { rs.Edit(); }).state, "24000");
    EXPECT_EQ(thrownBy([&] { rs.Delete(); }).state, "24000");
    ASSERT_TRUE(rs.MoveNext());
    rs.Delete();
    EXPECT_EQ(rows(), "1 10 a Schraube 0.1 x\n");
}

TEST_P(RecordsetWriting, ADeletedRowWithoutAKeyIsFoundByItsValues) {
    openWithoutKey();
    moveTo(2);
    rs.Delete();
    EXPECT_EQ(rows(), "1 10 a Schraube 0.1 x\n3 30 c Dübel 3.5 z\n");
}

TEST_P(RecordsetWriting, ARowThatVanishedIsAnError) {
    for (const char* key : {" PRIMARY KEY", ""}) {
        SCOPED_TRACE(key);
        db.ExecuteSQL("DROP TABLE IF EXISTS artikel");
        open(key);
        moveTo(2);
        execute("DELETE FROM artikel WHERE nummer = 2");
        rs.Edit();
        set(stock, 1);
        const Thrown error = thrownBy([&] { rs.Update(); });
        EXPECT_EQ(error.state, "01S03");
        EXPECT_EQ(error.text, "Zeile 2: Die Zeile ist so nicht mehr in der Tabelle");
        EXPECT_EQ(thrownBy([&] { rs.Delete(); }).state, "01S03");
        rs.Close();
    }
}

TEST_P(RecordsetWriting, RowsThatNothingTellsApartAreAnErrorAndStay) {
    openWithoutKey();
    execute("INSERT INTO artikel VALUES (2, NULL, NULL, 'Mutter', NULL, NULL)");
    const std::string before = rows();
    reopen();
    moveTo(2);
    rs.Edit();
    set(stock, 1);
    const Thrown error = thrownBy([&] { rs.Update(); });
    EXPECT_EQ(error.state, "01S04");
    EXPECT_EQ(error.text,
              "Zeile 2: 2 Zeilen der Tabelle haben diese Werte, und kein Schlüssel unterscheidet sie");
    rs.CancelUpdate();
    EXPECT_EQ(thrownBy([&] { rs.Delete(); }).state, "01S04");
    EXPECT_EQ(rows(), before);
}

TEST_P(RecordsetWriting, WhatAColumnCannotHoldIsRefusedBeforeItIsWritten) {
    openByKey();
    moveTo(1);
    const auto refusal = [&](const std::function<void()>& change) {
        rs.Edit();
        change();
        const Thrown error = thrownBy([&] { rs.Update(); });
        rs.CancelUpdate();
        return error.state + " " + error.text;
    };
    EXPECT_EQ(refusal([&] { set(number, 2147483648L); }),
              "22003 Zeile 1, Spalte nummer: \"2147483648\" liegt außerhalb von -2147483648 bis 2147483647");
    EXPECT_EQ(refusal([&] { set(stock, 32768); }),
              "22003 Zeile 1, Spalte lager: \"32768\" liegt außerhalb von -32768 bis 32767");
    EXPECT_EQ(refusal([&] { set(grade, "ab"); }),
              "22001 Zeile 1, Spalte klasse: Der Text ist länger als ein Zeichen");
    EXPECT_EQ(refusal([&] { set(price, std::numeric_limits<double>::infinity()); }).substr(0, 5), "22003");
    EXPECT_EQ(refusal([&] { set(price, std::numeric_limits<double>::quiet_NaN()); }).substr(0, 5), "22003");
    EXPECT_EQ(refusal([&] {
                  name = CString("a\0b", 3);
                  rs.SetFieldNull(&name, FALSE);
              }),
              "22021 Zeile 1, Spalte name: Ein NUL im Text ist nicht speicherbar");
    EXPECT_EQ(rows(), untouched);
    EXPECT_EQ(name, "Schraube");
}

TEST_P(RecordsetWriting, ARefusalTellsColumnAndReasonApart) {
    openByKey();
    moveTo(1);
    const auto told = [&] {
        try {
            rs.Update();
        } catch (CDBException* e) {
            std::string parts = utf8((e->m_strColumn + "|" + e->m_strReason).View());
            e->Delete();
            return parts;
        }
        return std::string("nothing");
    };
    rs.Edit();
    set(grade, "ab");
    EXPECT_EQ(told(), "klasse|Der Text ist länger als ein Zeichen");
    rs.CancelUpdate();
    rs.Edit();
    rs.SetFieldNull(&name, TRUE);
    const std::string byTheDatabase = told();
    EXPECT_EQ(byTheDatabase.front(), '|') << "no column is to blame";
    EXPECT_EQ(byTheDatabase.find("Zeile"), std::string::npos) << byTheDatabase;
}

TEST_P(RecordsetWriting, ANewRowThatIsRefusedIsCountedByItself) {
    openByKey();
    rs.AddNew();
    set(number, 4L);
    set(name, "gut");
    ASSERT_TRUE(rs.Update());
    rs.AddNew();
    set(number, 5L);
    set(name, "schlecht");
    set(stock, 99999);
    EXPECT_EQ(thrownBy([&] { rs.Update(); }).text.substr(0, 26), "Neue Zeile 2, Spalte lager");
    set(stock, 9);
    EXPECT_TRUE(rs.Update()) << "the editing goes on";
}

TEST_P(RecordsetWriting, WhatTheDatabaseRefusesNamesTheRow) {
    openByKey();
    rs.AddNew();
    set(number, 1L);
    set(name, "doppelt");
    const Thrown duplicate = thrownBy([&] { rs.Update(); });
    EXPECT_EQ(duplicate.text.substr(0, 14), "Neue Zeile 1: ");
    EXPECT_EQ(duplicate.state, isPostgresql() ? "23505" : "HY000");
    if (!isPostgresql()) {
        EXPECT_EQ(duplicate.nativeError, 19);
    }
    rs.CancelUpdate();
    moveTo(2);
    rs.Edit();
    rs.SetFieldNull(&name, TRUE);
    EXPECT_EQ(thrownBy([&] { rs.Update(); }).text.substr(0, 9), "Zeile 2: ");
    EXPECT_EQ(rows(), untouched);
}

TEST_P(RecordsetWriting, ARefusedFieldThatIsNotEditedKeepsItsValueInTheDatabase) {
    openByKey();
    execute("UPDATE artikel SET name = 'x' || " + character(0x4E2D) + " WHERE nummer = 1");
    EXPECT_EQ(thrownBy([&] { rs.MoveNext(); }).state, "22021");
    rs.Edit();
    set(stock, 11);
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT COUNT(*) FROM artikel WHERE lager = 11 AND name = 'x' || " + character(0x4E2D)),
              "1");
    rs.Edit();
    set(name, "neu");
    EXPECT_TRUE(rs.Update()) << "an edited one is written";
    EXPECT_EQ(value("SELECT name FROM artikel WHERE nummer = 1"), "neu");
}

TEST_P(RecordsetWriting, TextsOfAnyLengthAreWrittenWhole) {
    openByKey();
    const std::string text = std::string(100000, 'x') + "ü";
    db.ExecuteSQL("CREATE TABLE texte (nummer INTEGER PRIMARY KEY, inhalt TEXT)");
    CDatabaseRecordset texts(db);
    CString content;
    texts.OpenTable("texte", CDatabaseRecordset::updatable);
    texts.BindText("inhalt", content);
    texts.BindLong("nummer", number);
    texts.AddNew();
    set(content, text);
    texts.SetFieldNull(&content, FALSE);
    set(number, 1L);
    texts.SetFieldNull(&number, FALSE);
    ASSERT_TRUE(texts.Update());
    ASSERT_TRUE(texts.MoveNext());
    EXPECT_EQ(utf8(content.View()), text);
    texts.Edit();
    content = "kurz";
    ASSERT_TRUE(texts.Update());
    EXPECT_EQ(value("SELECT inhalt FROM texte"), "kurz");
}

TEST_P(RecordsetWriting, PrepareTextMakesRoomAndKeepsTheText) {
    CString field("abc");
    CDatabaseRecordset::PrepareText(field, 50);
    EXPECT_GE(field.GetAllocLength(), 51) << "one more, since a full buffer is cut";
    EXPECT_EQ(field, "abc");
    const INT allocated = field.GetAllocLength();
    CDatabaseRecordset::PrepareText(field, 10);
    EXPECT_EQ(field.GetAllocLength(), allocated);
    CDatabaseRecordset::PrepareText(field, -5);
    EXPECT_EQ(field, "abc");
    CString empty;
    CDatabaseRecordset::PrepareText(empty, 0);
    EXPECT_GE(empty.GetAllocLength(), 1);
}

TEST_P(RecordsetWriting, ARecordsetThatOnlyReadsDoesNotWrite) {
    openByKey();
    rs.OpenTable("artikel");
    rs.BindLong("nummer", number);
    ASSERT_TRUE(rs.MoveNext());
    for (const auto& operation :
         std::vector<std::function<void()>>{[&] { rs.Edit(); }, [&] { rs.AddNew(); }, [&] { rs.Delete(); }}) {
        EXPECT_NE(thrownBy(operation).text.find("nicht zum Schreiben"), std::string::npos);
    }
}

TEST_P(RecordsetWriting, WithoutARowOrAnEditNothingIsWritten) {
    openByKey();
    EXPECT_EQ(thrownBy([&] { rs.Edit(); }).state, "24000");
    EXPECT_EQ(thrownBy([&] { rs.Update(); }).state, "HY010");
    while (rs.MoveNext())
        continue;
    EXPECT_EQ(thrownBy([&] { rs.Edit(); }).state, "24000");
    EXPECT_EQ(thrownBy([&] { rs.Delete(); }).state, "24000");
}

TEST_P(RecordsetWriting, UpdatesOfATransactionAreRolledBackTogether) {
    openByKey();
    {
        CDatabaseTransaction transaction(db);
        moveTo(1);
        rs.Edit();
        set(name, "weg");
        ASSERT_TRUE(rs.Update());
        rs.AddNew();
        set(number, 9L);
        set(name, "auch weg");
        ASSERT_TRUE(rs.Update());
    }
    rs.Close();
    EXPECT_EQ(rows(), untouched);
}

TEST_P(RecordsetWriting, CommittingWhileRowsAreReadKeepsTheReadingAlive) {
    openByKey();
    ASSERT_TRUE(rs.MoveNext());
    {
        CDatabaseTransaction transaction(db);
        rs.Edit();
        set(stock, 77);
        ASSERT_TRUE(rs.Update());
        transaction.Commit();
    }
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(number, 2);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_FALSE(rs.MoveNext());
    EXPECT_EQ(value("SELECT lager FROM artikel WHERE nummer = 1"), "77");
}

INSTANTIATE_TEST_SUITE_P(Each, RecordsetWriting, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// SQLite lets a primary key be null, in several rows even.
TEST(SqliteKeys, ARowWithANullInItsKeyIsOnlyWrittenIfItIsTheOnlyOne) {
    TemporaryFolder folder;
    CDatabase db;
    db.Open(folder.file("test.db").c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (k TEXT PRIMARY KEY, v INTEGER)");
    db.ExecuteSQL("INSERT INTO t VALUES (NULL, 1)");
    long v = 0;
    CDatabaseRecordset rs(db);
    rs.OpenTable("t", CDatabaseRecordset::updatable);
    rs.BindLong("v", v);
    ASSERT_TRUE(rs.MoveNext());
    rs.Edit();
    v = 5;
    EXPECT_TRUE(rs.Update());
    db.ExecuteSQL("INSERT INTO t VALUES (NULL, 2)");
    rs.Edit();
    v = 6;
    EXPECT_EQ(thrownBy([&] { rs.Update(); }).state, "01S04");
}

}  // namespace
