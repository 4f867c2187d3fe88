// Holds NkDtTime against the table duration_values.tsv, which tests/models/duration_values.py generates from
// the rules; the model explains the columns.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "CalendarTable.h"
#include "support/Instruments.h"

namespace {

using namespace calendartable;
using C = Case<NkDtTime>;
using Durations = Operations<NkDtTime>;
using TimeMode = NkDtTime::TimeMode;

constexpr std::size_t kMinimumRows = 30'000;
constexpr std::size_t kRowsToOneUnderValgrind = 7;  // prime, since operations take turns

// --- Notations --------------------------------------------------------------------------------

TimeMode timeMode(std::string_view cell) {
    return static_cast<TimeMode>(number(cell));
}

// A number and a time mode
struct Count {
    explicit Count(std::string_view cell) : n(number(take(cell, ' '))), mode(timeMode(cell)) {}

    LONG n;
    TimeMode mode;
};

// A number, "null" or "missing"
NkDtLong longValue(std::string_view cell) {
    if (cell == "null") return NkDtLong(NkDtWmNull);
    if (cell == "missing") return NkDtLong(NkDtWmMissing);
    return NkDtLong(number(cell));
}

NkFormat timeFormat(FormatZeitDarstellung display, FormatVorzeichen sign = FormatVorzeichenVorn,
                    FormatVorzeichenWelches which = FormatVorzeichenNurMinus, int fewest = 0) {
    return NkFormat(FormatZeitArtDauer, display, sign, which, 7, fewest, '0');
}

const NkFormat& formatOf(std::string_view name) {
    static const NkFormat seconds =
        timeFormat(FormatZeitDarstellungSekunden, FormatVorzeichenVorn, FormatVorzeichenNurMinus, 2);
    static const NkFormat hours =
        timeFormat(FormatZeitDarstellungStunden, FormatVorzeichenHinten, FormatVorzeichenPlusUndMinus);
    static const NkFormat hundredths = timeFormat(FormatZeitDarstellungHundertstel);
    static const NkFormat minutes = timeFormat(FormatZeitDarstellungMinuten);
    if (name == "seconds") return seconds;
    if (name == "hours") return hours;
    if (name == "hundredths") return hundredths;
    if (name == "minutes") return minutes;
    throw std::invalid_argument("no format: " + std::string(name));
}

// --- The operations by the table's names ---------------------------------------------------------

void addConstruction(Durations& operations) {
    operations["T(h,m,mode)"] = [](C& c) {
        std::string_view cell = c.right();
        const LONG hours = number(take(cell, ' '));
        const Count part(cell);
        c.yields(NkDtTime(hours, part.n, part.mode));
    };
    operations["T(longs,mode)"] = [](C& c) {
        std::string_view cell = c.right();
        const NkDtLong hours = longValue(take(cell, ' '));
        const NkDtLong part = longValue(take(cell, ' '));
        c.yields(NkDtTime(hours, part, timeMode(cell)));
    };
    operations["T(text,mode)"] = [](C& c) {
        std::string_view text = c.right();
        const TimeMode mode = timeMode(take(text, ' '));
        c.yields(NkDtTime(static_cast<LPCTSTR>(valuetest::TextArgument(text)), mode));
    };
    operations["T(string,mode)"] = [](C& c) {
        std::string_view text = c.right();
        const TimeMode mode = timeMode(take(text, ' '));
        c.yields(NkDtTime(valuetest::textOperand(text), mode));
    };
}

// The characters behind the size stay as they are.
void getValue(C& c) {
    constexpr std::size_t room = 64;
    constexpr char untouched = '#';
    const auto size = c.n<std::size_t>();
    std::string buffer(room, untouched);
    const LPTSTR text = c.x().GetValue(buffer.data(), static_cast<INT>(size));
    EXPECT_EQ(text, buffer.data());
    EXPECT_EQ(buffer.find_first_not_of(untouched, size), std::string::npos);
    c.yieldsText(nktest::inQuotes(text));
}

void addReading(Durations& operations) {
    operations["GetHour"] = [](C& c) { c.yieldsNumber(c.x().GetHour()); };
    operations["GetMin"] = [](C& c) { c.yieldsNumber(c.x().GetMin(timeMode(c.right()))); };
    operations["GetTime"] = [](C& c) { c.yieldsNumber(c.x().GetTime(timeMode(c.right()))); };
    operations["GetMode"] = [](C& c) { c.yieldsNumber(c.x().GetMode()); };
    operations["GetValue"] = getValue;
}

void addSetting(Durations& operations) {
    operations["SetHour"] = [](C& c) { c.x().SetHour(c.n()); };
    operations["AddHour"] = [](C& c) { c.x().AddHour(c.n()); };
    operations["SubHour"] = [](C& c) { c.x().SubHour(c.n()); };
    operations["SetMin"] = [](C& c) { c.x().SetMin(Count(c.right()).n, Count(c.right()).mode); };
    operations["SetTime"] = [](C& c) { c.x().SetTime(Count(c.right()).n, Count(c.right()).mode); };
    operations["AddMin"] = [](C& c) { c.x().AddMin(Count(c.right()).n, Count(c.right()).mode); };
    operations["SubMin"] = [](C& c) { c.x().SubMin(Count(c.right()).n, Count(c.right()).mode); };
    operations["SetValue"] = [](C& c) {
        std::string_view text = c.right();
        const TimeMode mode = timeMode(take(text, ' '));
        c.x().SetValue(valuetest::TextArgument(text), mode);
    };
    operations["SetMode"] = [](C& c) { c.x().SetMode(timeMode(c.right())); };
    operations["Reset"] = [](C& c) { c.x().Reset(timeMode(c.right())); };
    operations["Round"] = [](C& c) { c.x().Round(static_cast<NkDtTime::RoundMode>(c.n())); };
    operations["SetModified"] = [](C& c) { c.x().SetModified(c.n()); };
    operations["Assign(long)"] = [](C& c) { c.x().Assign(NkDtLong(c.n())); };
}

void addArithmetic(Durations& operations) {
    operations["x+y"] = [](C& c) { c.yields(c.x() + c.y()); };
    operations["x-y"] = [](C& c) { c.yields(c.x() - c.y()); };
    operations["x+=y"] = [](C& c) { c.x() += c.y(); };
    operations["x-=y"] = [](C& c) { c.x() -= c.y(); };
}

void addConversions(Durations& operations) {
    operations["ConvToSQL"] = [](C& c) { c.yieldsText(nktest::inQuotes(c.x().ConvToSQL().GetValue())); };
    operations["SetFromSQL"] = [](C& c) { c.x().SetFromSQL(c.n<LONG>()); };
    operations["SetFromRecordSet"] = [](C& c) {
        setFromField<LONG>(c, [](std::string_view ticks) { return number<LONG>(ticks); });
    };
    operations["ConvToRecordSet"] = [](C& c) {
        constexpr LONG noDuration = 2000000011;
        showField(c, noDuration, [](LONG ticks) { return std::to_string(ticks); });
    };
    operations["ConvToOFL(format)"] = [](C& c) {
        c.yieldsText(nktest::inQuotes(c.x().ConvToOFL(&formatOf(c.right())).GetString()));
    };
    operations["SetFromOFL(format)"] = [](C& c) {
        std::string_view text = c.right();
        const NkFormat& format = formatOf(take(text, ' '));
        c.x().SetFromOFL(valuetest::TextArgument(text), &format);
    };
}

Durations durationOperations() {
    Durations operations;
    addCommonOperations(operations);
    addConstruction(operations);
    addReading(operations);
    addSetting(operations);
    addArithmetic(operations);
    addConversions(operations);
    return operations;
}

TEST(DurationTable, TimeFollowsEveryRowInEveryStateAndMode) {
    const std::size_t step = nktest::isUnderValgrind() ? kRowsToOneUnderValgrind : 1;
    holdAgainstTable("duration_values.tsv", "Time", durationOperations(), kMinimumRows, step);
}

}  // namespace
