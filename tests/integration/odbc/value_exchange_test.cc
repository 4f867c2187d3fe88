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

INSTANTIATE_TEST_SUITE_P(Each, ValueExchange, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

}  // namespace
