#include <algorithm>
#include <functional>

#include "AppTest.h"
#include "Error.h"
#include "ScreenDialog.h"
#include "StoredRow.h"

using namespace nktest;

namespace {

using nkdt::app::Selection;
using nkdt::app::StoredRow;

class Edit : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute(
            "CREATE TABLE \"Waren\" (\"Nummer\" INTEGER PRIMARY KEY, \"Name\" VARCHAR(20), \"Preis\" "
            "NUMERIC(10,2), \"Gewicht\" DOUBLE PRECISION, \"Neu\" BOOLEAN, \"Am\" DATE, \"Um\" TIME)");
        execute(
            "INSERT INTO \"Waren\" VALUES (1, 'Hammer', 12.5, 0.125, '1', '2004-03-05', NULL), "
            "(2, NULL, NULL, NULL, NULL, NULL, NULL)");
    }

    Outcome edit(const std::string& key, const Arguments& settings) {
        Arguments arguments{"edit", target(), "Waren", key};
        for (const std::string& setting : settings) {
            arguments.emplace_back("--set");
            arguments.push_back(setting);
        }
        return call(arguments);
    }

    /// All values of a row in one text.
    std::string row(int number) {
        std::string values;
        for (const char* column : {"Name", "Preis", "Gewicht", "Neu", "Am"}) {
            values += values.empty() ? "" : "|";
            values += value("SELECT \"" + std::string(column) +
                            "\" FROM \"Waren\" WHERE \"Nummer\" = " + std::to_string(number));
        }
        return values;
    }

    StoredRow open(const std::string& key = "1") { return StoredRow(db, ansi("Waren"), key, Selection()); }

    /// A column that holds 15 digits before the point.
    std::string decimal() const { return isPostgresql() ? "NUMERIC(17,2)" : "NUMERIC"; }

    static NkDtBasis& valueOf(StoredRow& row, std::string_view column) {
        for (auto& bound : row.columns()) {
            if (bound.name == column) return bound.cell->value();
        }
        throw std::logic_error("no such column");
    }
    static void set(StoredRow& row, std::string_view column, const char* text) {
        valueOf(row, column).SetFromOFL(ansi(text));
    }

    /// Somebody else, at another connection.
    void meanwhile(std::string_view sql) {
        CDatabase other;
        other.Open(target().c_str());
        other.ExecuteSQL(ansi(sql));
    }

    /// Makes every statement fail that names a column behind SET, whatever the value.
    void forbidUpdateOf(const std::string& column) {
        if (isPostgresql()) {
            execute(
                "CREATE FUNCTION verboten() RETURNS trigger AS 'BEGIN RAISE EXCEPTION ''verboten''; END' "
                "LANGUAGE plpgsql");
            execute("CREATE TRIGGER waechter BEFORE UPDATE OF \"" + column +
                    "\" ON \"Waren\" FOR EACH ROW EXECUTE FUNCTION verboten()");
        } else {
            execute("CREATE TRIGGER waechter BEFORE UPDATE OF \"" + column +
                    "\" ON \"Waren\" BEGIN SELECT RAISE(ABORT, 'verboten'); END");
        }
    }
};

}  // namespace

// The command
// ----------------------------------------------------------------------------------------------------------

TEST_P(Edit, SetsColumnsAndTellsWhatWasChanged) {
    const Outcome outcome =
        edit("1", {"Name=Müllers O'Neill", "Preis=1.234,50", "neu=Nein", "Am=29.2.2000", "Gewicht=-0,5"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(outcome.out,
              "Column   Before      After\n"
              "-------  ----------  ---------------\n"
              "Name     Hammer      Müllers O'Neill\n"
              "Preis    12,50       1.234,50\n"
              "Gewicht  0,13        -0,5\n"
              "Neu      Ja          Nein\n"
              "Am       05.03.2004  29.02.2000\n");
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "Müllers O'Neill");
    EXPECT_EQ(value("SELECT COUNT(*) FROM \"Waren\" WHERE \"Preis\" = 1234.5 AND \"Gewicht\" = -0.5"), "1");
    EXPECT_EQ(row(2), "(null)|(null)|(null)|(null)|(null)");
}

TEST_P(Edit, WithoutAChangeChangesNothing) {
    const std::string before = row(1);
    const Outcome outcome = edit("1", {"Name=Hammer", "Gewicht=0,13", "Preis=12,50", "Neu=Ja"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "Nothing was changed\n");
    EXPECT_EQ(row(1), before);
}

TEST_P(Edit, TakesAnEqualNumberForNoChange) {
    EXPECT_EQ(edit("1", {"Preis=12,5"}).out, "Nothing was changed\n");
    EXPECT_EQ(edit("1", {"Am=5.3.2004"}).out, "Nothing was changed\n");
}

TEST_P(Edit, MakesValuesUndefinedAndDefined) {
    EXPECT_EQ(edit("1", {"Name=", "Preis=", "Gewicht=", "Neu=", "Am="}).status, 0);
    EXPECT_EQ(row(1), "(null)|(null)|(null)|(null)|(null)");
    EXPECT_EQ(edit("2", {"Name=x", "Preis=0", "Gewicht=0", "Neu=Nein", "Am=1.1.1753"}).status, 0);
    EXPECT_EQ(value("SELECT COUNT(*) FROM \"Waren\" WHERE \"Nummer\" = 2 AND \"Name\" = 'x' AND \"Preis\" = "
                    "0 AND \"Gewicht\" = 0 AND \"Neu\" = '0' AND \"Am\" = '1753-01-01'"),
              "1");
}

TEST_P(Edit, CollectsEveryRefusalAndChangesNothing) {
    const std::string before = row(1);
    const Outcome outcome = edit("1", {"Am=31.2.2003", "Name=neu", "Preis=12x", "Neu=vielleicht"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(outcome.err,
              "nkdt: column Preis: \"12x\" an Position 3: unerwartetes Zeichen\n"
              "nkdt: column Neu: \"vielleicht\" an Position 1: kein Wahrheitswert dieses Formats\n"
              "nkdt: column Am: \"31.2.2003\" an Position 1: Tag nicht im Monat\n");
    EXPECT_EQ(row(1), before);
}

TEST_P(Edit, RefusesACharacterOutsideTheCodePageAtItsColumn) {
    const Outcome outcome = edit("1", {"Name=中", "Preis=1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "nkdt: column Name: the text \"中\" has a character that code page 1252 does not have\n");
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "Hammer");
}

TEST_P(Edit, CollectsWhatTheColumnsThemselvesRefuse) {
    execute("CREATE TABLE t (n INTEGER PRIMARY KEY, a " + decimal() + " NOT NULL, b " + decimal() +
            ", c VARCHAR(9) NOT NULL, d " + decimal() + ", e " + decimal() + ")");
    execute("INSERT INTO t VALUES (1, 1, 1, 'x', 1, 1)");
    const char* const tooLong = "12345678901234567,5";
    const Outcome outcome = call({"edit", target(), "t", "1", "--set", std::string("e=") + tooLong, "--set",
                                  "d=2", "--set", "c=", "--set", std::string("b=") + tooLong, "--set", "a="});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, testing::MatchesRegex("nkdt: column a: Dieses Feld darf nicht leer sein.\n"
                                                   "nkdt: column b: .*12345678901234567.*\n"
                                                   "nkdt: column c: Dieses Feld darf nicht leer sein.\n"
                                                   "nkdt: column e: .*12345678901234567.*\n"));
    EXPECT_THAT(outcome.err, Not(HasSubstr("Zeile")));
    EXPECT_EQ(value("SELECT COUNT(*) FROM t WHERE a = 1 AND b = 1 AND c = 'x' AND d = 1 AND e = 1"), "1");
    EXPECT_FALSE(db.IsInTransaction());
}

TEST_P(Edit, TellsWhatTheColumnsRefuseThoughTheDatabaseRefusesTheRest) {
    execute("CREATE TABLE t (n INTEGER PRIMARY KEY, a " + decimal() + ", b INTEGER CHECK (b < 100))");
    execute("INSERT INTO t VALUES (1, 1, 1)");
    const Outcome outcome =
        call({"edit", target(), "t", "1", "--set", "a=12345678901234567,5", "--set", "b=100"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, testing::StartsWith("nkdt: column a: "));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
    const Outcome again = call({"edit", target(), "t", "1", "--set", "a=2", "--set", "b=100"});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, Not(HasSubstr("Zeile")));
    EXPECT_EQ(value("SELECT COUNT(*) FROM t WHERE a = 1 AND b = 1"), "1");
}

TEST_P(Edit, RefusesAKeyThatIsEmptied) {
    const Outcome outcome = edit("1", {"Nummer="});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "nkdt: column Nummer: Dieses Feld darf nicht leer sein.\n");
}

TEST_P(Edit, LeavesTheRowWhenTheDatabaseRefuses) {
    execute("ALTER TABLE \"Waren\" ADD COLUMN \"Rest\" NUMERIC(10,2) CHECK (\"Rest\" < 100)");
    const std::string before = row(1);
    const Outcome outcome = edit("1", {"Name=neu", "Rest=100"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, testing::StartsWith("nkdt: "));
    EXPECT_EQ(row(1), before);
    EXPECT_EQ(edit("1", {"Name=neu", "Rest=99"}).status, 0);
}

TEST_P(Edit, FindsARowByATextWithApostrophes) {
    execute("CREATE TABLE \"Orte\" (\"Ort\" VARCHAR(30) PRIMARY KEY, \"Zahl\" INTEGER)");
    execute("INSERT INTO \"Orte\" VALUES ('L''Âge d''Or', 1), ('1', 2), ('x'' OR ''1''=''1', 3)");
    EXPECT_EQ(call({"edit", target(), "Orte", "L'Âge d'Or", "--set", "Zahl=10"}).status, 0);
    EXPECT_EQ(call({"edit", target(), "Orte", "1", "--set", "Zahl=20"}).status, 0);
    EXPECT_EQ(call({"edit", target(), "Orte", "x' OR '1'='1", "--set", "Zahl=30"}).status, 0);
    EXPECT_EQ(value("SELECT \"Zahl\" FROM \"Orte\" WHERE \"Ort\" = 'L''Âge d''Or'"), "10");
    EXPECT_EQ(value("SELECT \"Zahl\" FROM \"Orte\" WHERE \"Ort\" = '1'"), "20");
    EXPECT_EQ(value("SELECT SUM(\"Zahl\") FROM \"Orte\""), "60");
}

TEST_P(Edit, FindsARowByADecimalAsShowPrintsIt) {
    execute("CREATE TABLE \"Konten\" (\"Konto\" BIGINT PRIMARY KEY, \"Name\" TEXT)");
    execute("INSERT INTO \"Konten\" VALUES (-9007199254740993, 'a'), (-9007199254740992, 'b')");
    EXPECT_EQ(call({"edit", target(), "Konten", "-9.007.199.254.740.993,00", "--set", "Name=x"}).status, 0);
    EXPECT_EQ(call({"edit", target(), "Konten", "-9007199254740992", "--format", "plain", "--set", "Name=y"})
                  .status,
              0);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Konten\" WHERE \"Konto\" = -9007199254740993"), "x");
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Konten\" WHERE \"Konto\" = -9007199254740992"), "y");
    EXPECT_EQ(call({"edit", target(), "Konten", "-9.007.199.254.740.992,50", "--set", "Name=z"}).status, 1);
    EXPECT_EQ(value("SELECT COUNT(*) FROM \"Konten\" WHERE \"Name\" = 'z'"), "0");
}

TEST_P(Edit, FindsARowByAKeyAsSqlWritesItWhereShowDoesNotTellIt) {
    const auto expectFound = [&](const std::string& type, const std::string& stored, const char* key) {
        execute("CREATE TABLE \"Werte\" (k " + type + " PRIMARY KEY, \"Name\" TEXT)");
        execute("INSERT INTO \"Werte\" VALUES (" + stored + ", 'a')");
        const Outcome outcome = call({"edit", target(), "Werte", key, "--set", "Name=b"});
        EXPECT_EQ(outcome.status, 0) << type << ' ' << key << '\n' << outcome.err;
        EXPECT_EQ(value("SELECT \"Name\" FROM \"Werte\""), "b");
        execute("DROP TABLE \"Werte\"");
    };
    expectFound("DOUBLE PRECISION", "0.125", "0.125");
    expectFound("DOUBLE PRECISION", "-1.5e-7", "-1.5e-07");
    if (isPostgresql() || extendedPrecisionWorks()) expectFound("DOUBLE PRECISION", "1e300", "1E+300");
    expectFound("DOUBLE PRECISION", "0.1", "0,1");
    expectFound("DATE", "'2004-03-06'", "2004-03-06");
    expectFound("DATE", "'2004-03-06'", "6.3.2004");
    expectFound("TIMESTAMP", "'2004-03-06 12:30:05'", "2004-03-06 12:30:05");
    expectFound("TIMESTAMP", "'2004-03-06 12:30:05'", "06.03.2004 12:30:05");
    expectFound("NUMERIC(10,3)", "0.125", "0.125");
    expectFound("BOOLEAN", "'1'", "1");
    expectFound("BOOLEAN", "'1'", "Ja");
}

TEST_P(Edit, ReadsAKeyAsAPersonBeforeItReadsItAsSql) {
    execute("CREATE TABLE \"Werte\" (k NUMERIC(10,3) PRIMARY KEY, \"Name\" TEXT)");
    execute("INSERT INTO \"Werte\" VALUES (1234, 'a'), (1.234, 'b')");
    ASSERT_EQ(call({"edit", target(), "Werte", "1.234", "--set", "Name=x"}).status, 0);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Werte\" WHERE k = 1234"), "x");
    EXPECT_EQ(call({"edit", target(), "Werte", "1.235", "--set", "Name=y"}).status, 1);
}

TEST_P(Edit, NeverTakesAKeyForASimilarOne) {
    EXPECT_EQ(edit("1.5", {"Name=neu"}).status, 2) << "no whole number";
    EXPECT_EQ(edit("1x", {"Name=neu"}).status, 2);
    execute("CREATE TABLE \"Orte\" (\"Ort\" VARCHAR(30) PRIMARY KEY, \"Zahl\" INTEGER)");
    execute("INSERT INTO \"Orte\" VALUES ('Ulm', 1)");
    EXPECT_EQ(call({"edit", target(), "Orte", "ulm", "--set", "Zahl=2"}).status, 1);
    EXPECT_EQ(call({"edit", target(), "Orte", "Ulm ", "--set", "Zahl=2"}).status, 1);
}

TEST_P(Edit, TakesAKeyThatIsFilledUpWithBlanksWithoutThem) {
    execute("CREATE TABLE \"Orte\" (\"Ort\" CHAR(5) PRIMARY KEY, \"Zahl\" INTEGER)");
    execute("INSERT INTO \"Orte\" VALUES ('Ulm', 1)");
    EXPECT_EQ(call({"edit", target(), "Orte", "Ulm", "--set", "Zahl=2"}).status, 0);
    EXPECT_EQ(value("SELECT \"Zahl\" FROM \"Orte\""), "2");
}

TEST_P(Edit, LeavesOutTheColumnsThatTheCallDoesNotName) {
    execute("ALTER TABLE \"Waren\" ADD COLUMN \"Fremd\" TEXT");
    execute("UPDATE \"Waren\" SET \"Fremd\" = " + character(0x4E2D));
    const Outcome unread = edit("1", {"Name=neu"});
    EXPECT_EQ(unread.status, 1);
    EXPECT_THAT(unread.err, HasSubstr("Fremd"));
    EXPECT_EQ(call({"edit", target(), "Waren", "1", "--columns", "Preis,Name", "--set", "Name=neu"}).status,
              0);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "neu");
    const Outcome outcome = call({"edit", target(), "Waren", "1", "--columns", "Preis", "--set", "Name=neu"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "nkdt: table Waren has no column \"Name\" among --columns\n");
}

TEST_P(Edit, HasTheKeyAmongTheColumnsInAnyCase) {
    Selection selection;
    selection.columns = {"Preis"};
    StoredRow row(db, ansi("Waren"), "1", selection);
    ASSERT_EQ(row.columns().size(), 2U);
    EXPECT_EQ(row.columns()[row.key()].name, "Nummer");
    selection.columns = {"Preis,Nummer,Name"};
    EXPECT_EQ(StoredRow(db, ansi("Waren"), "1", selection).columns().size(), 3U);
}

TEST_P(Edit, ChangesTheKeyItself) {
    EXPECT_EQ(edit("1", {"Nummer=-7"}).status, 0);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = -7"), "Hammer");
    EXPECT_EQ(edit("-7", {"Nummer=2"}).status, 1) << "there is such a row";
    EXPECT_EQ(value("SELECT COUNT(*) FROM \"Waren\""), "2");
}

TEST_P(Edit, BindsAColumnAsTheCallSays) {
    execute("ALTER TABLE \"Waren\" ADD COLUMN \"Dauer\" INTEGER");
    EXPECT_EQ(call({"edit", target(), "Waren", "1", "--as", "Dauer=Time", "--set", "Dauer=1:30"}).status, 0);
    EXPECT_EQ(value("SELECT \"Dauer\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "1800");
}

TEST_P(Edit, NeedsAKeyOfOneColumn) {
    execute("CREATE TABLE \"Ohne\" (a INTEGER, b INTEGER)");
    execute("CREATE TABLE \"Zwei\" (a INTEGER, b INTEGER, c INTEGER, PRIMARY KEY (a, b))");
    const Outcome none = call({"edit", target(), "Ohne", "1", "--set", "a=2"});
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.err, "nkdt: table Ohne has no primary key, so no row of it can be named\n");
    const Outcome several = call({"edit", target(), "Zwei", "1", "--set", "c=2"});
    EXPECT_EQ(several.status, 2);
    EXPECT_THAT(several.err, HasSubstr("several columns (a, b)"));
}

TEST_P(Edit, RefusesACallThatNamesNothingThere) {
    const auto expectWrong = [&](const Outcome& outcome, const char* reason) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr(reason));
    };
    expectWrong(edit("1", {"Ort=x"}), "no column \"Ort\"");
    expectWrong(edit("1", {"Name"}), "COLUMN=TEXT");
    expectWrong(edit("1", {"Name=a", "name=b"}), "twice");
    expectWrong(edit("1", {"Um=12:00"}), "cannot be bound");
    expectWrong(edit("eins", {"Name=a"}), "is no value of column Nummer");
    expectWrong(edit("", {"Name=a"}), "is empty");
    expectWrong(call({"edit", target(), "Fehlt", "1", "--set", "a=2"}), "no table \"Fehlt\"");
    const Outcome outcome = edit("3", {"Name=a"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "nkdt: table Waren has no row with the key Nummer = 3\n");
}

TEST_P(Edit, TakesATextWithEqualSigns) {
    execute("ALTER TABLE \"Waren\" ADD COLUMN \"a=b\" TEXT");
    EXPECT_EQ(edit("1", {"Name=x=y=z", "a=b=c=d"}).status, 0);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "x=y=z");
    EXPECT_EQ(value("SELECT \"a=b\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "c=d");
}

// The row
// ----------------------------------------------------------------------------------------------------------

TEST_P(Edit, WritesTheModifiedColumnsAlone) {
    forbidUpdateOf("Preis");
    StoredRow one = open();
    set(one, "Name", "neu");
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::done);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "neu");

    StoredRow again = open();
    set(again, "Preis", "13");
    EXPECT_TRUE(thrownBy([&] { (void)again.save(); }).thrown) << "the guard is awake";
}

TEST_P(Edit, ResetsTheFlagsWhenTheRowIsSaved) {
    StoredRow one = open();
    for (const auto& column : one.columns())
        EXPECT_FALSE(column.cell->value().IsModified()) << column.name;
    set(one, "Name", "neu");
    set(one, "Preis", "7");
    const StoredRow::Saved saved = one.save();
    EXPECT_EQ(saved.outcome, StoredRow::Saved::done);
    EXPECT_EQ(saved.columns, (std::vector<std::size_t>{1, 2}));
    for (const auto& column : one.columns())
        EXPECT_FALSE(column.cell->value().IsModified()) << column.name;
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::nothing);
}

TEST_P(Edit, KeepsTheFlagsWhenTheDatabaseRefuses) {
    StoredRow one = open();
    set(one, "Name", "neu");
    set(one, "Nummer", "2");
    EXPECT_TRUE(thrownBy([&] { (void)one.save(); }).thrown);
    EXPECT_TRUE(valueOf(one, "Name").IsModified());
    EXPECT_TRUE(valueOf(one, "Nummer").IsModified());
    EXPECT_FALSE(db.IsInTransaction());

    meanwhile("DELETE FROM \"Waren\" WHERE \"Nummer\" = 2");
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::done) << "what stood in the way is gone";
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 2"), "neu");
}

TEST_P(Edit, NoticesThatTheRowWasDeleted) {
    StoredRow one = open();
    set(one, "Name", "neu");
    meanwhile("DELETE FROM \"Waren\" WHERE \"Nummer\" = 1");
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::deleted);
    EXPECT_TRUE(valueOf(one, "Name").IsModified());
    EXPECT_EQ(value("SELECT COUNT(*) FROM \"Waren\""), "1");
}

TEST_P(Edit, NeverWritesOverAnotherEditor) {
    StoredRow one = open();
    StoredRow other = open();
    set(other, "Name", "von ihm");
    ASSERT_EQ(other.save().outcome, StoredRow::Saved::done);
    set(one, "Name", "von mir");
    const StoredRow::Saved saved = one.save();
    EXPECT_EQ(saved.outcome, StoredRow::Saved::overtaken);
    EXPECT_EQ(saved.columns, std::vector<std::size_t>{1});
    EXPECT_TRUE(valueOf(one, "Name").IsModified());
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "von ihm");
    EXPECT_FALSE(db.IsInTransaction());
}

TEST_P(Edit, NoticesAChangeInAColumnThatItDoesNotWrite) {
    for (const auto& [change, column] :
         std::vector<std::pair<const char*, std::size_t>>{{"\"Preis\" = 12.51", 2},
                                                          {"\"Gewicht\" = 0.12500000000000003", 3},
                                                          {"\"Neu\" = NULL", 4},
                                                          {"\"Am\" = '2004-03-06'", 5}}) {
        StoredRow one = open();
        set(one, "Name", "von mir");
        meanwhile("UPDATE \"Waren\" SET " + std::string(change) + " WHERE \"Nummer\" = 1");
        const StoredRow::Saved saved = one.save();
        EXPECT_EQ(saved.outcome, StoredRow::Saved::overtaken) << change;
        EXPECT_EQ(saved.columns, std::vector<std::size_t>{column}) << change;
    }
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "Hammer");
}

TEST_P(Edit, WaitsForAnotherEditorAndGivesUpWithoutAChange) {
    db.Close();
    const std::string impatient = isPostgresql() ? target() + ";ConnSettings=SET lock_timeout%3D100"
                                                 : "Driver=SQLite3;Database=" + target() + ";Timeout=100";
    db.Open(impatient.c_str());
    StoredRow one = open();
    set(one, "Name", "von mir");
    {
        CDatabase other;
        other.Open(target().c_str());
        CDatabaseTransaction transaction(other);
        other.ExecuteSQL("UPDATE \"Waren\" SET \"Name\" = 'von ihm' WHERE \"Nummer\" = 1");
        EXPECT_TRUE(thrownBy([&] { (void)one.save(); }).thrown);
        EXPECT_TRUE(valueOf(one, "Name").IsModified());
    }
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::done) << "the other one has undone it";
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "von mir");
}

TEST_P(Edit, MindsNoChangeInAnotherRow) {
    StoredRow one = open();
    set(one, "Name", "von mir");
    meanwhile("UPDATE \"Waren\" SET \"Name\" = 'x' WHERE \"Nummer\" = 2");
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::done);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 2"), "x");
}

TEST_P(Edit, SavesARowThatWasChangedAndChangedBack) {
    StoredRow one = open();
    set(one, "Name", "von mir");
    meanwhile("UPDATE \"Waren\" SET \"Preis\" = 1 WHERE \"Nummer\" = 1");
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::overtaken);
    meanwhile("UPDATE \"Waren\" SET \"Preis\" = 12.5 WHERE \"Nummer\" = 1");
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::done);
    EXPECT_EQ(value("SELECT \"Name\" FROM \"Waren\" WHERE \"Nummer\" = 1"), "von mir");
}

TEST_P(Edit, AsksTheDatabaseNothingWhenNothingIsModified) {
    StoredRow one = open();
    db.Close();
    EXPECT_EQ(one.save().outcome, StoredRow::Saved::nothing);
}

INSTANTIATE_TEST_SUITE_P(Databases, Edit, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// Without a screen
// ----------------------------------------------------------------------------------------------------------

TEST(EditWithoutADisplay, SaysSoAndNamesTheOtherWay) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    const TemporaryFolder folder;
    const std::string database =
        makeDatabase(folder, "a.db", {"CREATE TABLE t (n INTEGER PRIMARY KEY)", "INSERT INTO t VALUES (1)"});
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        ASSERT_EQ(::unsetenv(name), 0);
    const Outcome outcome = callProgram(folder, {"edit", database, "t", "1"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("--set COLUMN=TEXT"));
}

TEST(EditWithoutADisplay, SaysSoWhenTheOneThatIsNamedDoesNotAnswer) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    if (!nkdt::app::hasScreenDialogs()) GTEST_SKIP() << "built without dialogs";
    const TemporaryFolder folder;
    const std::string database =
        makeDatabase(folder, "a.db", {"CREATE TABLE t (n INTEGER PRIMARY KEY)", "INSERT INTO t VALUES (1)"});
    for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        ASSERT_EQ(::unsetenv(name), 0);
    ASSERT_EQ(::setenv("DISPLAY", ":9999", 1), 0);
    const Outcome outcome = callProgram(folder, {"edit", database, "t", "1"});
    ASSERT_EQ(::unsetenv("DISPLAY"), 0);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: there is no display for a dialog; --set COLUMN=TEXT"));
}

TEST(EditOfSqlite, KeepsAllDigitsOfARowInAColumnOfTexts) {
    const TemporaryFolder folder;
    const std::string database =
        makeDatabase(folder, "a.db",
                     {"CREATE TABLE t (n INTEGER PRIMARY KEY, d DECIMALTEXT(28,10), e NUMERIC)",
                      "INSERT INTO t VALUES (1, '1', 1)"});
    EXPECT_EQ(call({"edit", database, "t", "1", "--set", "d=-12.345.678.901.234.567,8901234567"}).status, 0);
    EXPECT_EQ(valueOf(database, "SELECT d FROM t"), "-12345678901234567.8901234567");
    const Outcome outcome = call({"edit", database, "t", "1", "--set", "e=12.345.678.901.234.567,5"});
    EXPECT_EQ(outcome.status, 1) << "the column would round it";
    EXPECT_THAT(outcome.err, testing::StartsWith("nkdt: column e: "));
    EXPECT_EQ(valueOf(database, "SELECT e FROM t"), "1");
}
