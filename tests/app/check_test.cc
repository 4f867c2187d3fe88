#include "AppTest.h"
#include "RoundTrip.h"
#include "nkdt/NkDtBool.h"

using namespace nktest;

namespace {

using nkdt::app::Arrival;
using nkdt::app::Cell;
using nkdt::app::Representation;
using nkdt::app::Road;

const Road& roadOf(Representation representation) {
    const auto& all = nkdt::app::roads();
    return *std::find_if(all.begin(), all.end(),
                         [&](const Road& road) { return road.representation == representation; });
}

std::unique_ptr<Cell> cellOf(const char* className, const NkDtString& text) {
    auto cell = nkdt::app::findKind(className)->makeCell();
    if (text.IsDefined()) cell->setText(text);
    return cell;
}

Arrival travelled(const Road& road, const char* className, const NkDtString& text) {
    const auto from = cellOf(className, text);
    const auto back = nkdt::app::findKind(className)->makeCell();
    return nkdt::app::travel(road, *from, *back);
}

class Check : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute(
            "CREATE TABLE \"Waren\" (\"Nummer\" INTEGER, \"Stück\" SMALLINT, \"Name\" TEXT, \"Preis\" "
            "NUMERIC(10,2), \"Neu\" BOOLEAN, \"Am\" "
            "DATE, \"Um\" TIME)");
    }

    Outcome check(Arguments options = {}) {
        options.insert(options.begin(), {"check", target(), "Waren"});
        return call(options);
    }
};

}  // namespace

// The roads
// ----------------------------------------------------------------------------------------------------------

TEST(Roads, LetEveryValueOfTheClassesSurvive) {
    const NkDtString undefined(NkDtWmNull);
    for (const Road& road : nkdt::app::roads()) {
        for (const char* number : {"0", "1", "-1", "32767", "-32768"}) {
            EXPECT_EQ(travelled(road, "NkDtShort", number).outcome, Arrival::survived)
                << road.name << " " << number;
            EXPECT_EQ(travelled(road, "NkDtLong", number).outcome, Arrival::survived)
                << road.name << " " << number;
        }
        for (const char* number : {"2147483647", "-2147483648"}) {
            EXPECT_EQ(travelled(road, "NkDtLong", number).outcome, Arrival::survived)
                << road.name << " " << number;
        }
        for (const char* text : {"a", "NULL", "O'Neill", "''", " ", "a\nb\r\n", "\xC4\x80\x9D", "\\"}) {
            EXPECT_EQ(travelled(road, "NkDtString", text).outcome, Arrival::survived)
                << road.name << " " << text;
        }
        for (const char* character : {"a", "'", " ", "\xFC", "\x92"}) {
            EXPECT_EQ(travelled(road, "NkDtChar", character).outcome, Arrival::survived)
                << road.name << " " << character;
        }
        for (const char* truth : {"Ja", "Nein"}) {
            EXPECT_EQ(travelled(road, "NkDtBool", truth).outcome, Arrival::survived)
                << road.name << " " << truth;
        }
        for (const char* className : {"NkDtLong", "NkDtShort", "NkDtString", "NkDtChar", "NkDtBool"}) {
            EXPECT_EQ(travelled(road, className, undefined).outcome, Arrival::survived)
                << road.name << " " << className;
        }
    }
}

TEST(Roads, StateThatTheyCannotHoldAnEmptyText) {
    const NkDtString empty("");
    for (const Road& road : nkdt::app::roads()) {
        const bool stated = road.representation == Representation::userText ||
                            road.representation == Representation::sqlLiteral;
        EXPECT_EQ(travelled(road, "NkDtString", empty).outcome,
                  stated ? Arrival::notRepresentable : Arrival::survived)
            << road.name;
    }
}

TEST(Roads, StateThatUserInterfaceTextCannotHoldAnEmptyCharacter) {
    const NkDtString empty("");
    for (const Road& road : nkdt::app::roads()) {
        const bool stated = road.representation == Representation::userText;
        EXPECT_EQ(travelled(road, "NkDtChar", empty).outcome,
                  stated ? Arrival::notRepresentable : Arrival::survived)
            << road.name;
    }
}

TEST(Roads, StateThatTextsOfATruthValueHoldNoOtherNumber) {
    const auto from = nkdt::app::findKind("NkDtBool")->makeCell();
    const auto back = nkdt::app::findKind("NkDtBool")->makeCell();
    from->value().Assign(NkDtBool(5));
    for (const Road& road : nkdt::app::roads()) {
        const bool whole = road.representation == Representation::recordset ||
                           road.representation == Representation::archive;
        EXPECT_EQ(nkdt::app::travel(road, *from, *back).outcome,
                  whole ? Arrival::survived : Arrival::notRepresentable)
            << road.name;
    }
}

TEST(Roads, TakeTruthValuesThroughACheckBoxThatIsNeverUndefined) {
    const Road& road = nkdt::app::roadsOf(*nkdt::app::findKind("NkDtBool")).back();
    ASSERT_EQ(road.representation, Representation::checkBox);
    EXPECT_EQ(travelled(road, "NkDtBool", "Ja").outcome, Arrival::survived);
    EXPECT_EQ(travelled(road, "NkDtBool", "Nein").outcome, Arrival::survived);
    const Arrival undefined = travelled(road, "NkDtBool", NkDtString(NkDtWmNull));
    EXPECT_EQ(undefined.outcome, Arrival::notRepresentable);
    EXPECT_EQ(undefined.reason, "it is never undefined");
    const auto from = nkdt::app::findKind("NkDtBool")->makeCell();
    const auto back = nkdt::app::findKind("NkDtBool")->makeCell();
    from->value().Assign(NkDtBool(5));
    EXPECT_EQ(nkdt::app::travel(road, *from, *back).outcome, Arrival::notRepresentable);
    EXPECT_TRUE(static_cast<const NkDtBool&>(back->value()) == TRUE);
    EXPECT_EQ(nkdt::app::roadsOf(*nkdt::app::findKind("NkDtLong")).back().name, std::string("edit control"));
}

TEST(Roads, ExcuseNoCheckBoxThatTurnsATruthValueRound) {
    const Road wrong{"broken box", Representation::checkBox,
                     [](Cell&, Cell& to) { to.value().Assign(NkDtBool(TRUE)); }};
    EXPECT_EQ(travelled(wrong, "NkDtBool", "Nein").outcome, Arrival::lost);
    EXPECT_EQ(travelled(wrong, "NkDtBool", NkDtString(NkDtWmNull)).outcome, Arrival::lost);
}

TEST(Roads, LoseAValueThatComesBackAsAnother) {
    const Road wrong{"detour", Representation::text, [](Cell&, Cell& to) { to.setText("43"); }};
    const Arrival arrival = travelled(wrong, "NkDtLong", "42");
    EXPECT_EQ(arrival.outcome, Arrival::lost);
    EXPECT_EQ(arrival.reason, "came back as \"43\"");
}

TEST(Roads, LoseAValueThatDoesNotComeBack) {
    const Road nothing{"nothing", Representation::text, [](Cell&, Cell&) {}};
    EXPECT_EQ(travelled(nothing, "NkDtLong", "42").reason, "came back as undefined");
    EXPECT_EQ(travelled(nothing, "NkDtLong", NkDtString(NkDtWmNull)).reason, "came back as \"0\"");
    EXPECT_EQ(travelled(nothing, "NkDtString", NkDtString(NkDtWmNull)).outcome, Arrival::lost);
}

TEST(Roads, TellTheErrorWithItsCause) {
    const Road failing{"failing", Representation::text,
                       [](Cell&, Cell& to) { to.value().SetFromOFL("12x"); }};
    const Arrival arrival = travelled(failing, "NkDtLong", "42");
    EXPECT_EQ(arrival.outcome, Arrival::lost);
    EXPECT_THAT(arrival.reason, HasSubstr("Default-Catch / Folgefehler"));
    EXPECT_THAT(arrival.reason, HasSubstr("12x"));
}

TEST(Roads, ExcuseNoLossThatIsNotStated) {
    const Road nothing{"nothing", roadOf(Representation::archive).representation, [](Cell&, Cell&) {}};
    EXPECT_EQ(travelled(nothing, "NkDtString", NkDtString("")).outcome, Arrival::lost);
}

// The command
// ----------------------------------------------------------------------------------------------------------

TEST_P(Check, CountsValuesPerColumnAndNamesTheOthers) {
    execute(
        "INSERT INTO \"Waren\" VALUES (1, -5, 'Müller''s', 1, '1', '2004-03-05', NULL), (NULL, NULL, NULL, "
        "NULL, NULL, NULL, NULL), (-2147483648, 32767, 'a\nb', 0, '0', '1753-01-01', NULL)");
    const Outcome outcome = check();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(outcome.out,
              "Table Waren, 3 rows\n"
              "\n"
              "Column  Class         Values  Undefined  Survived  Not representable  Lost\n"
              "------  ------------  ------  ---------  --------  -----------------  ----\n"
              "Nummer  NkDtLong           3          1         3                  0     0\n"
              "Stück   NkDtShort          3          1         3                  0     0\n"
              "Name    NkDtString         3          1         3                  0     0\n"
              "Preis   NkDtDecimal        3          1         3                  0     0\n"
              "Neu     NkDtBool           3          1         2                  1     0\n"
              "Am      NkDtDateZp         3          1         3                  0     0\n"
              "Um      not bindable\n"
              "Not representable: column Neu, 1 value as check box: it is never undefined\n"
              "Total: column Preis, 1,00\n"
              "\n");
    EXPECT_EQ(check({"--strict"}).status, 1);
    EXPECT_EQ(check({"--strict", "--columns", "Nummer,Stück,Name,Preis,Am"}).status, 0);
}

TEST_P(Check, NamesWhatIsNotRepresentableAndFailsForItOnlyWhenStrict) {
    execute("INSERT INTO \"Waren\" (\"Name\") VALUES (''), ('x'), ('')");
    const Outcome outcome = check({"--columns", "Name"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out,
                HasSubstr("Name    NkDtString       3          0         1                  2     0\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Not representable: column Name, 2 values as SQL literal: "));
    EXPECT_THAT(outcome.out, HasSubstr("Not representable: column Name, 2 values as user-interface text: "));
    EXPECT_THAT(outcome.out, HasSubstr("Not representable: column Name, 2 values as edit control: "));
    EXPECT_EQ(check({"--columns", "Name", "--strict"}).status, 1);
}

TEST_P(Check, TellsEachValueThatCannotBeReadAndGoesOn) {
    execute("INSERT INTO \"Waren\" (\"Nummer\", \"Name\") VALUES (1, 'a'), (2, " + character(0x4E2D) +
            "), (3, 'c')");
    const Outcome outcome = check();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: Zeile 2, Spalte Name: Zeichen U+4E2D"));
    EXPECT_THAT(outcome.out,
                HasSubstr("Name    NkDtString         3          0         2                  0     1\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("Nummer  NkDtLong           3          0         3                  0     0\n"));
    EXPECT_EQ(check({"--best-fit"}).status, 0);
}

TEST_P(Check, TellsOfValuesInTheOrderOfTheRowsHoweverManyThereAre) {
    constexpr int rows = 200;
    for (int row = 1; row <= rows; ++row) {
        const bool unreadable = row % 30 == 0;
        execute("INSERT INTO \"Waren\" (\"Nummer\", \"Name\") VALUES (" + std::to_string(row) + ", " +
                (unreadable ? character(0x4E2D) : "'x'") + ")");
    }
    const Outcome outcome = check({"--sort", "\"Nummer\""});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out,
                HasSubstr("Name    NkDtString       200          0       194                  0     6\n"));
    std::size_t place = 0;
    for (const char* row :
         {"Zeile 30,", "Zeile 60,", "Zeile 90,", "Zeile 120,", "Zeile 150,", "Zeile 180,"}) {
        place = outcome.err.find(row, place);
        ASSERT_NE(place, std::string::npos) << row << '\n' << outcome.err;
    }
}

TEST_P(Check, TakesTextsOfAnyLength) {
    for (const int length : {1, 100000, 2, 70000, 300000, 3})
        execute("INSERT INTO \"Waren\" (\"Nummer\", \"Name\") VALUES (" + std::to_string(length) + ", '" +
                std::string(static_cast<std::size_t>(length), 'x') + "')");
    const Outcome outcome = check({"--strict", "--columns", "Nummer,Name"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Table Waren, 6 rows"));
    EXPECT_THAT(outcome.out,
                HasSubstr("Name    NkDtString       6          0         6                  0     0\n"));
}

TEST_P(Check, TakesSeveralTables) {
    execute("CREATE TABLE \"Orte\" (\"Name\" TEXT)");
    const Outcome outcome = check({"Orte"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Table Waren, 0 rows"));
    EXPECT_THAT(outcome.out, HasSubstr("Table Orte, 0 rows"));
}

TEST(CheckOfSqlite, RefusesWhatADeclaredTypeDoesNotPromise) {
    const TemporaryFolder folder;
    const std::string database = makeDatabase(
        folder, "a.db",
        {"CREATE TABLE t (n INTEGER, s SMALLINT, o)",
         "INSERT INTO t VALUES (2147483648, 1, 1), ('abc', 99999, 1), (1.5, 'x', 1), (5, 5, 5)"});
    const Outcome outcome = call({"check", database, "t"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 5);
    for (const char* place : {"Zeile 1, Spalte n", "Zeile 2, Spalte n", "Zeile 3, Spalte n",
                              "Zeile 2, Spalte s", "Zeile 3, Spalte s"}) {
        EXPECT_THAT(outcome.err, HasSubstr(place));
    }
    EXPECT_THAT(outcome.out, testing::ContainsRegex("o +not bindable\n"));
    EXPECT_EQ(call({"check", database, "t", "--columns", "o", "--as", "o=Long"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(Databases, Check, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);
