#include "TestDatabase.h"
#include "nkdt/NkDt.h"

using namespace nktest;

namespace {

// The road between columns and values: every value class takes the field that it is bound to.
class ValueExchange : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute("CREATE TABLE werte (nummer INTEGER PRIMARY KEY, rang SMALLINT, name TEXT)");
    }
    void openRows() {
        rs.OpenTable("werte", CDatabaseRecordset::updatable, nullptr, "nummer");
        rs.BindLong("nummer", numberField);
        rs.BindShort("rang", rankField);
        rs.BindText("name", nameField);
    }
    void take() {
        number.SetFromRecordSet(rs, numberField);
        rank.SetFromRecordSet(rs, rankField);
        name.SetFromRecordSet(rs, nameField);
    }
    void give() {
        number.ConvToRecordSet(rs, numberField);
        rank.ConvToRecordSet(rs, rankField);
        CDatabaseRecordset::PrepareText(nameField, name.GetLength());
        name.ConvToRecordSet(rs, nameField);
    }

    CDatabaseRecordset rs{db};
    long numberField = 0;
    int rankField = 0;
    CString nameField;
    NkDtLong number;
    NkDtShort rank;
    NkDtString name;
};

TEST_P(ValueExchange, ValuesTakeARow) {
    execute("INSERT INTO werte VALUES (-2147483648, 32767, 'Ärger in Übersee')");
    openRows();
    ASSERT_TRUE(rs.MoveNext());
    take();
    EXPECT_EQ(number.GetValue(), -2147483648L);
    EXPECT_EQ(rank.GetValue(), 32767);
    EXPECT_STREQ(name.GetValue(), ansi("Ärger in Übersee"));
}

TEST_P(ValueExchange, ANullColumnIsAnUndefinedValueBothWays) {
    execute("INSERT INTO werte VALUES (1, 5, 'x'), (2, NULL, NULL)");
    openRows();
    ASSERT_TRUE(rs.MoveNext());
    take();
    ASSERT_TRUE(rs.MoveNext());
    take();
    EXPECT_TRUE(number.IsDefined());
    EXPECT_FALSE(rank.IsDefined());
    EXPECT_FALSE(name.IsDefined());
    rs.AddNew();
    number = 3;
    give();
    ASSERT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT COUNT(*) FROM werte WHERE nummer = 3 AND rang IS NULL AND name IS NULL"), "1");
}

TEST_P(ValueExchange, TextsOfAnyLengthCrossUncut) {
    openRows();
    for (const int length : {0, 1, 10, 11, 300, 20000, 7}) {
        rs.AddNew();
        number = length;
        rank = 1;
        name = ansi(std::string(static_cast<std::size_t>(length), 'a')).GetString();
        give();
        ASSERT_TRUE(rs.Update());
    }
    openRows();
    int rows = 0;
    for (; rs.MoveNext(); ++rows) {
        take();
        EXPECT_EQ(static_cast<long>(name.GetLength()), number.GetValue());
        EXPECT_TRUE(name.IsDefined());
    }
    EXPECT_EQ(rows, 7);
}

TEST_P(ValueExchange, AnEditedValueIsWrittenAndAnUntouchedOneIsNot) {
    execute("INSERT INTO werte VALUES (1, 5, 'kurz')");
    openRows();
    ASSERT_TRUE(rs.MoveNext());
    take();
    rs.Edit();
    give();
    EXPECT_FALSE(rs.Update());
    name += ansi(" und länger als vorher").GetString();
    rank = -32768;
    rs.Edit();
    give();
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT name FROM werte"), "kurz und länger als vorher");
    EXPECT_EQ(value("SELECT rang FROM werte"), "-32768");
}

TEST_P(ValueExchange, CharactersAndTruthValuesCrossBothWays) {
    execute("CREATE TABLE arten (nummer INTEGER PRIMARY KEY, art CHAR(1), aktiv BOOLEAN)");
    CString kindField;
    BOOL activeField = FALSE;
    const auto open = [&] {
        rs.OpenTable("arten", CDatabaseRecordset::updatable, nullptr, "nummer");
        rs.BindLong("nummer", numberField);
        rs.BindChar("art", kindField);
        rs.BindBool("aktiv", activeField);
    };
    const auto add = [&](long key, const NkDtChar& kind, const NkDtBool& active) {
        rs.AddNew();
        number = key;
        number.ConvToRecordSet(rs, numberField);
        kind.ConvToRecordSet(rs, kindField);
        active.ConvToRecordSet(rs, activeField);
        ASSERT_TRUE(rs.Update());
    };
    open();
    add(1, NkDtChar('\xDC'), NkDtBool(TRUE));
    add(2, NkDtChar('\''), NkDtBool(FALSE));
    add(3, NkDtChar(NkDtWmNull), NkDtBool(NkDtWmNull));
    EXPECT_EQ(value("SELECT art FROM arten WHERE nummer = 1"), "Ü");
    EXPECT_EQ(value("SELECT COUNT(*) FROM arten WHERE aktiv"), "1");
    EXPECT_EQ(value("SELECT COUNT(*) FROM arten WHERE NOT aktiv"), "1");
    open();
    const auto next = [&](NkDtChar& kind, NkDtBool& active) {
        ASSERT_TRUE(rs.MoveNext());
        kind.SetFromRecordSet(rs, kindField);
        active.SetFromRecordSet(rs, activeField);
    };
    NkDtChar kind(NkDtWmNull);
    NkDtBool active(NkDtWmNull);
    next(kind, active);
    EXPECT_EQ(kind.GetValue(), '\xDC');
    EXPECT_EQ(active.GetValue(), TRUE);
    next(kind, active);
    EXPECT_EQ(kind.GetValue(), '\'');
    EXPECT_TRUE(active.IsFalse());
    next(kind, active);
    EXPECT_TRUE(kind.IsNull());
    EXPECT_TRUE(active.IsNull());
}

TEST_P(ValueExchange, ATruthValueIsWrittenAsItsNumberWhichABooleanOfPostgresqlMustBeOneOrZero) {
    execute("CREATE TABLE arten (nummer INTEGER PRIMARY KEY, aktiv BOOLEAN)");
    BOOL activeField = FALSE;
    rs.OpenTable("arten", CDatabaseRecordset::updatable, nullptr, "nummer");
    rs.BindLong("nummer", numberField);
    rs.BindBool("aktiv", activeField);
    long key = 0;
    for (const BOOL given : {0, 1, 2, 5, -1, 2147483647}) {
        SCOPED_TRACE(given);
        const bool refused = isPostgresql() && given != 0 && given != 1;
        rs.AddNew();
        number = ++key;
        number.ConvToRecordSet(rs, numberField);
        NkDtBool(given).ConvToRecordSet(rs, activeField);
        const Thrown thrown = thrownBy([&] { EXPECT_TRUE(rs.Update()); });
        EXPECT_EQ(thrown.thrown, refused);
        if (refused) {
            EXPECT_EQ(thrown.state.substr(0, 2), "22") << thrown.text;  // a data exception
            rs.CancelUpdate();
        }
        const std::string row = " FROM arten WHERE nummer = " + std::to_string(key);
        EXPECT_EQ(value("SELECT COUNT(*)" + row), refused ? "0" : "1");
        if (!refused) {
            EXPECT_EQ(value("SELECT CAST(aktiv AS INTEGER)" + row), std::to_string(given));
        }
    }
}

TEST_P(ValueExchange, AnEmptyCharacterIsRefusedWhereItWouldComeBackAsABlank) {
    execute("CREATE TABLE arten (nummer INTEGER PRIMARY KEY, art CHAR(1), text VARCHAR(1))");
    CString kindField;
    CString textField;
    const auto open = [&] {
        rs.OpenTable("arten", CDatabaseRecordset::updatable, nullptr, "nummer");
        rs.BindLong("nummer", numberField);
        rs.BindChar("art", kindField);
        rs.BindChar("text", textField);
    };
    const auto add = [&](long key, const NkDtChar& kind) {
        rs.AddNew();
        number = key;
        number.ConvToRecordSet(rs, numberField);
        kind.ConvToRecordSet(rs, kindField);
        NkDtChar('\0').ConvToRecordSet(rs, textField);
        EXPECT_TRUE(rs.Update());
    };
    open();
    add(1, NkDtChar('A'));
    const Thrown thrown = thrownBy([&] { add(2, NkDtChar('\0')); });
    EXPECT_EQ(thrown.thrown, isPostgresql());
    if (isPostgresql()) {
        EXPECT_EQ(thrown.state, "22026");
        EXPECT_NE(thrown.text.find("art"), std::string::npos) << thrown.text;
    }
    EXPECT_EQ(value("SELECT COUNT(*) FROM arten"), isPostgresql() ? "1" : "2");
    open();
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(textField.GetLength(), 0);
    if (isPostgresql()) return;
    ASSERT_TRUE(rs.MoveNext());
    NkDtChar kind;
    kind.SetFromRecordSet(rs, kindField);
    EXPECT_TRUE(kind.IsDefined());
    EXPECT_EQ(kind.GetValue(), '\0');
}

TEST(TruthValuesOfSqlite, AreTheNumbersThatAreStoredAndNothingElse) {
    const TemporaryFolder folder;
    CDatabase db;
    db.Open(folder.file("a.db").c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (n INTEGER PRIMARY KEY, b BOOLEAN)");
    db.ExecuteSQL(
        "INSERT INTO t VALUES (1, 5), (2, -2147483648), (3, 2147483648), (4, 'true'), (5, 1.5), (6, TRUE)");
    CDatabaseRecordset rs(db);
    rs.OpenTable("t", CDatabaseRecordset::readOnly, nullptr, "n");
    BOOL field = FALSE;
    rs.BindBool("b", field);
    const auto next = [&]() -> std::string {
        try {
            EXPECT_TRUE(rs.MoveNext());
        } catch (CDBException* exception) {
            exception->Delete();
            return "refused";
        }
        return std::to_string(field);
    };
    EXPECT_EQ(next(), "5");
    EXPECT_EQ(next(), "-2147483648");
    EXPECT_EQ(next(), "refused");
    EXPECT_EQ(next(), "refused");
    EXPECT_EQ(next(), "refused");
    EXPECT_EQ(next(), "1");
}

INSTANTIATE_TEST_SUITE_P(Each, ValueExchange, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

}  // namespace
