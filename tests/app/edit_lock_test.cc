#include <chrono>
#include <functional>
#include <future>

#include "AppTest.h"
#include "StoredRow.h"

using namespace nktest;

namespace {

using nkdt::app::Selection;
using nkdt::app::StoredRow;

/// Rows that somebody else edits too, in tables that make it hard to lock them.
class EditLock : public EachDatabase {
  protected:
    void makeTable(const std::string& numberType) {
        execute("CREATE TABLE \"Waren\" (\"Nummer\" " + numberType +
                " PRIMARY KEY, \"Name\" VARCHAR(20), \"Preis\" NUMERIC(10,2), \"Stand\" INTEGER)");
        execute(
            "INSERT INTO \"Waren\" (\"Name\", \"Preis\", \"Stand\") VALUES ('Hammer', 12.5, 0), ('Nagel', 1, "
            "0)");
    }
    /// A number that the database gives, and that a statement can change.
    std::string given() const { return isPostgresql() ? "SERIAL" : "INTEGER"; }

    /// Every update counts.
    void countUpdates() {
        if (isPostgresql()) {
            execute(
                "CREATE FUNCTION zaehlen() RETURNS trigger AS 'BEGIN NEW.\"Stand\" := OLD.\"Stand\" + 1; "
                "RETURN NEW; END' LANGUAGE plpgsql");
            execute(
                "CREATE TRIGGER zaehler BEFORE UPDATE ON \"Waren\" FOR EACH ROW EXECUTE FUNCTION zaehlen()");
        } else {
            execute(
                "CREATE TRIGGER zaehler AFTER UPDATE ON \"Waren\" BEGIN UPDATE \"Waren\" SET \"Stand\" = "
                "OLD.\"Stand\" + 1 WHERE \"Nummer\" = OLD.\"Nummer\"; END");
        }
    }
    /// An update that changes nothing is left out.
    void leaveOutEmptyUpdates() {
        if (isPostgresql()) {
            execute(
                "CREATE TRIGGER sparer BEFORE UPDATE ON \"Waren\" FOR EACH ROW EXECUTE FUNCTION "
                "suppress_redundant_updates_trigger()");
        } else {
            execute(
                "CREATE TRIGGER sparer BEFORE UPDATE ON \"Waren\" WHEN NEW.\"Name\" IS OLD.\"Name\" AND "
                "NEW.\"Preis\" IS OLD.\"Preis\" BEGIN SELECT RAISE(IGNORE); END");
        }
    }
    /// The test's own connection may read, and change the name, and nothing else.
    void allowTheNameAlone() {
        execute("DROP ROLE IF EXISTS schreiber");
        execute("CREATE ROLE schreiber");
        execute("GRANT USAGE ON SCHEMA public TO schreiber");
        execute("GRANT SELECT, UPDATE(\"Name\") ON \"Waren\" TO schreiber");
        execute("SET ROLE schreiber");
    }
    void TearDown() override {
        if (!isPostgresql() || IsSkipped()) return;
        execute("RESET ROLE");
        execute("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
        execute("DROP ROLE IF EXISTS schreiber");
    }

    /// The first row, with another name that is not saved.
    StoredRow renamed(const char* name = "von mir") {
        StoredRow row(db, ansi("Waren"), "1", Selection());
        row.columns()[1].cell->value().SetFromOFL(name);
        return row;
    }
    std::string stored(const std::string& column) {
        return value("SELECT \"" + column + "\" FROM \"Waren\" WHERE \"Nummer\" = 1");
    }
    /// Somebody else, at another connection.
    void meanwhile(std::string_view sql) {
        CDatabase other;
        other.Open(target().c_str());
        other.ExecuteSQL(ansi(sql));
    }

    /// Saves while somebody else has changed the row and is not ready.
    StoredRow::Saved saveAgainst(StoredRow& row, std::string_view sql) {
        CDatabase other;
        other.Open(target().c_str());
        CDatabaseTransaction transaction(other);
        other.ExecuteSQL(ansi(sql));
        auto saving = std::async(std::launch::async, [&] { return row.save(); });
        EXPECT_EQ(saving.wait_for(std::chrono::milliseconds(500)), std::future_status::timeout);
        transaction.Commit();
        return saving.get();
    }

    void expectSaved() {
        StoredRow row = renamed();
        const StoredRow::Saved saved = row.save();
        EXPECT_EQ(saved.outcome, StoredRow::Saved::done);
        EXPECT_EQ(saved.columns, std::vector<std::size_t>{1});
        EXPECT_EQ(stored("Name"), "von mir");
        EXPECT_FALSE(db.IsInTransaction());
    }
    void expectOvertaken() {
        StoredRow row = renamed();
        meanwhile("UPDATE \"Waren\" SET \"Preis\" = 13 WHERE \"Nummer\" = 1");
        const StoredRow::Saved saved = row.save();
        EXPECT_EQ(saved.outcome, StoredRow::Saved::overtaken);
        EXPECT_THAT(saved.columns, testing::Contains(2U));
        EXPECT_NE(stored("Name"), "von mir");
        EXPECT_TRUE(row.columns()[1].cell->value().IsModified());
        EXPECT_FALSE(db.IsInTransaction());
    }
    void expectDeleted() {
        StoredRow row = renamed("niemals");
        meanwhile("DELETE FROM \"Waren\" WHERE \"Nummer\" = 1");
        EXPECT_EQ(row.save().outcome, StoredRow::Saved::deleted);
        EXPECT_EQ(value("SELECT COUNT(*) FROM \"Waren\""), "1");
        EXPECT_FALSE(db.IsInTransaction());
    }
    void expectNothingLostToAnEditorWhoIsNotReady() {
        StoredRow row = renamed();
        const StoredRow::Saved saved =
            saveAgainst(row, "UPDATE \"Waren\" SET \"Name\" = 'von ihm' WHERE \"Nummer\" = 1");
        EXPECT_EQ(saved.outcome, StoredRow::Saved::overtaken);
        EXPECT_THAT(saved.columns, testing::Contains(1U));
        EXPECT_EQ(stored("Name"), "von ihm");
    }
    void expectHolding() {
        expectOvertaken();
        expectNothingLostToAnEditorWhoIsNotReady();
        expectSaved();
        expectDeleted();
    }
};

class EditLockOfPostgresql : public EditLock {};

}  // namespace

TEST_P(EditLock, WaitsForAnotherEditorAndNeverWritesOverHim) {
    makeTable(given());
    expectNothingLostToAnEditorWhoIsNotReady();
}

TEST_P(EditLock, WaitsForAnotherEditorWhoDeletesTheRow) {
    makeTable(given());
    StoredRow row = renamed();
    EXPECT_EQ(saveAgainst(row, "DELETE FROM \"Waren\" WHERE \"Nummer\" = 1").outcome,
              StoredRow::Saved::deleted);
    EXPECT_EQ(value("SELECT COUNT(*) FROM \"Waren\""), "1");
}

TEST_P(EditLock, IsNotTriedTwiceWhenAnotherEditorHasIt) {
    makeTable(given());
    db.Close();
    const std::string impatient = isPostgresql() ? target() + ";ConnSettings=SET lock_timeout%3D1000"
                                                 : "Driver=SQLite3;Database=" + target() + ";Timeout=500";
    db.Open(impatient.c_str());
    StoredRow row = renamed();
    CDatabase other;
    other.Open(target().c_str());
    const CDatabaseTransaction transaction(other);
    other.ExecuteSQL("UPDATE \"Waren\" SET \"Name\" = 'von ihm' WHERE \"Nummer\" = 1");
    const auto waitOf = [](const std::function<void()>& attempt) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(thrownBy(attempt).thrown);
        return std::chrono::steady_clock::now() - start;
    };
    const auto once = waitOf([&] { db.ExecuteSQL("UPDATE \"Waren\" SET \"Nummer\" = \"Nummer\""); });
    EXPECT_LT(waitOf([&] { (void)row.save(); }), once * 3 / 2);
}

TEST_P(EditLock, LeavesNoTraceInATableWhoseTriggerMarksEveryUpdate) {
    makeTable(given());
    countUpdates();
    expectSaved();
    EXPECT_EQ(stored("Stand"), "1") << "the saving alone";
}

TEST_P(EditLock, HoldsInATableWhoseTriggerMarksEveryUpdate) {
    makeTable(given());
    countUpdates();
    expectHolding();
}

TEST_P(EditLock, HoldsInATableWhoseTriggerLeavesOutEmptyUpdates) {
    makeTable(given());
    leaveOutEmptyUpdates();
    expectHolding();
}

INSTANTIATE_TEST_SUITE_P(Databases, EditLock, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

TEST_P(EditLockOfPostgresql, HoldsInATableWhoseKeyOnlyTheDatabaseGives) {
    makeTable("INTEGER GENERATED ALWAYS AS IDENTITY");
    expectHolding();
}

TEST_P(EditLockOfPostgresql, HoldsInATableOfWhichOneColumnAloneMayBeChanged) {
    makeTable(given());
    allowTheNameAlone();
    expectHolding();
}

TEST_P(EditLockOfPostgresql, TellsThatARowMayNotBeChangedAtAll) {
    makeTable(given());
    allowTheNameAlone();
    StoredRow row = renamed();
    row.columns()[2].cell->value().SetFromOFL("1");
    const Thrown error = thrownBy([&] { (void)row.save(); });
    EXPECT_EQ(error.state, "42501");
    EXPECT_THAT(error.text, HasSubstr("permission denied"));
    EXPECT_EQ(stored("Name"), "Hammer");
}

INSTANTIATE_TEST_SUITE_P(Databases, EditLockOfPostgresql, testing::Values(CDatabase::postgresql),
                         databaseName);
