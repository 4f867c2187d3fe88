#include <algorithm>
#include <optional>

#include "Commands.h"
#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

constexpr LONGLONG mostDifferencesTold = 20;

/// One of the two tables.
struct Side {
    Side(const std::string& target, const std::string& tableName, const Selection& selection,
         Console& console)
        : table(ansi(tableName, "the table")) {
        openDatabase(database, target);
        columns = columnsOf(database, table, selection);
        tellLeftOut(console, table, columns.leftOut);
    }

    CDatabase database;
    CString table;
    TableColumns columns;
};

bool haveSameName(const BoundColumn& a, const BoundColumn& b) {
    return equalIgnoringCase(a.name, b.name);
}

/// The names of the columns that the other table does not have.
std::string namesOnlyIn(const BoundColumns& columns, const BoundColumns& others) {
    std::string names;
    for (const BoundColumn& column : columns) {
        const auto isIt = [&](const BoundColumn& other) { return haveSameName(column, other); };
        if (std::none_of(others.begin(), others.end(), isIt))
            names += (names.empty() ? "" : ", ") + column.name;
    }
    return names;
}

void requireSameColumns(const BoundColumns& first, const BoundColumns& second) {
    if (std::equal(first.begin(), first.end(), second.begin(), second.end(), haveSameName)) return;
    std::string text = "the two tables have not the same columns";
    const std::string inFirst = namesOnlyIn(first, second);
    const std::string inSecond = namesOnlyIn(second, first);
    if (inFirst.empty() && inSecond.empty()) throw DataError(text + " in the same order: --columns sets one");
    if (!inFirst.empty()) text += ": only the first has " + inFirst;
    if (!inSecond.empty()) text += (inFirst.empty() ? ": " : "; ") + ("only the second has " + inSecond);
    throw DataError(text);
}

/// The text by which a value is compared; none of an undefined one.
std::optional<NkDtString> comparedText(const Cell& cell) {
    if (!cell.value().IsDefined()) return std::nullopt;
    return cell.comparedText();
}

bool areEqual(const std::optional<NkDtString>& a, const std::optional<NkDtString>& b) {
    return a.has_value() == b.has_value() && (!a || *a == *b);
}

std::string shown(const std::optional<NkDtString>& text) {
    return text ? "\"" + visible(text->GetValue()) + "\"" : "undefined";
}

}  // namespace

int compare(const CompareOptions& options, Console& console) {
    Side first(options.databases[0], options.tables[0], options.selection, console);
    Side second(options.databases[1], options.tables[1], options.selection, console);
    requireSameColumns(first.columns.bound, second.columns.bound);

    TableReader firstRows(first.database, first.table, first.columns.bound, options.selection);
    TableReader secondRows(second.database, second.table, second.columns.bound, options.selection);
    Progress progress(console, "comparing");
    LONGLONG differences = 0;
    const auto tell = [&](const std::string& text) {
        progress.clear();
        if (++differences <= mostDifferencesTold) console.tell(text);
    };
    bool more = true;
    while (more) {
        const bool firstMore = firstRows.next();
        const bool secondMore = secondRows.next();
        more = firstMore && secondMore;
        if (firstMore != secondMore)
            tell("row " + std::to_string(firstMore ? firstRows.row() : secondRows.row()) +
                 " is only in the " + (firstMore ? "first" : "second") + " table");
        for (std::size_t i = 0; more && i < first.columns.bound.size(); ++i) {
            const auto a = comparedText(*first.columns.bound[i].cell);
            const auto b = comparedText(*second.columns.bound[i].cell);
            if (!areEqual(a, b))
                tell(placeOf(firstRows.row(), first.columns.bound[i].name) + ": " + shown(a) +
                     " in the first table, " + shown(b) + " in the second");
        }
        progress.show(firstRows.row());
    }
    if (differences > mostDifferencesTold)
        console.tell(counted(differences - mostDifferencesTold, "more difference"));
    if (differences != 0) return exitDataFailed;
    console.out << "The tables are the same: " << counted(firstRows.row(), "row") << ", "
                << counted(static_cast<LONGLONG>(first.columns.bound.size()), "column") << '\n';
    return exitGood;
}

}  // namespace nkdt::app
