#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "Commands.h"
#include "Error.h"
#include "Literal1252.h"
#include "RowForm.h"
#include "ScreenDialog.h"
#include "StoredRow.h"
#include "Text.h"
#include "TextTable.h"
#include "nkcp/CodePage.h"

namespace nkdt::app {

using namespace nkfw::literals;

namespace {

/// What the call wants a column to be.
struct Setting {
    std::size_t column;
    std::string text;  // UTF-8
};

// A name can have a "=" of its own, a text any number of them.
Setting settingOf(const std::string& argument, StoredRow& row, const std::string& table) {
    const BoundColumns& columns = row.columns();
    for (std::size_t sign = argument.find('='); sign != std::string::npos;
         sign = argument.find('=', sign + 1)) {
        const std::string name = argument.substr(0, sign);
        const auto isNamed = [&](const auto& column) { return equalIgnoringCase(column.name, name); };
        const auto found = std::find_if(columns.begin(), columns.end(), isNamed);
        if (found != columns.end())
            return {static_cast<std::size_t>(found - columns.begin()), argument.substr(sign + 1)};
        if (std::any_of(row.leftOut().begin(), row.leftOut().end(), isNamed))
            throw UsageError("column " + name + " cannot be bound, so it cannot be set");
    }
    const std::size_t sign = argument.find('=');
    if (sign == std::string::npos) throw UsageError("--set takes COLUMN=TEXT, not \"" + argument + "\"");
    throw UsageError("table " + table + " has no column \"" + argument.substr(0, sign) + "\"");
}

std::vector<Setting> settingsOf(const EditOptions& options, StoredRow& row) {
    std::vector<Setting> settings;
    for (const std::string& argument : options.settings) {
        const Setting setting = settingOf(argument, row, options.table);
        if (std::any_of(settings.begin(), settings.end(),
                        [&](const Setting& other) { return other.column == setting.column; })) {
            throw UsageError("--set names the column " + row.columns()[setting.column].name + " twice");
        }
        settings.push_back(setting);
    }
    return settings;
}

/// The values of the row's columns, as texts for a person.
std::vector<std::string> shownValues(const BoundColumns& columns) {
    std::vector<std::string> texts;
    for (const BoundColumn& column : columns)
        texts.push_back(visible(column.cell->value().ConvToOFL()));
    return texts;
}

std::optional<CString> enterUtf8(const RowForm& form, RowDialog& dialog, const Setting& setting) {
    std::string text;
    const nkcp::Conversion conversion = nkcp::appendCp1252FromUtf8(setting.text, text);
    if (!conversion.complete) {
        std::array<char, 80> reason{};
        (void)std::snprintf(reason.data(), reason.size(), "Das Zeichen U+%04X kann nicht gespeichert werden.",
                            static_cast<unsigned>(conversion.character));
        return CString(reason.data());
    }
    return form.enter(dialog, setting.column, CString(std::string_view(text)));
}

void report(Console& console, StoredRow& row, const std::vector<std::string>& before,
            const StoredRow::Saved& saved) {
    if (saved.outcome == StoredRow::Saved::nothing) {
        console.out << "Nothing was changed\n";
        return;
    }
    const std::vector<std::string> after = shownValues(row.columns());
    std::vector<TextTable::Row> lines;
    for (const std::size_t i : saved.columns)
        lines.push_back({row.columns()[i].name, before[i], after[i]});
    TextTable({{"Column"}, {"Before"}, {"After"}}).writeAll(console.out, lines);
}

/// The columns that another editor was faster with, joined by commas.
template <class NameOf>
auto overtakenColumns(StoredRow& row, const StoredRow::Saved& saved, NameOf&& nameOf) {
    auto names = nameOf(row.columns()[saved.columns.front()]);
    for (std::size_t i = 1; i < saved.columns.size(); ++i) {
        names += ", ";
        names += nameOf(row.columns()[saved.columns[i]]);
    }
    return names;
}

/// Throws what stands in the way of a saving, if anything does.
void requireSaved(StoredRow& row, const StoredRow::Saved& saved) {
    if (saved.outcome == StoredRow::Saved::deleted)
        throw DataError("the row has been deleted since it was read; nothing is changed");
    if (saved.outcome == StoredRow::Saved::overtaken) {
        throw DataError("somebody else has changed the row since it was read (" +
                        overtakenColumns(row, saved, [](const BoundColumn& c) { return c.name; }) +
                        "); nothing is changed");
    }
}

/// The same for the person at the dialog; empty if nothing stands in the way.
CString failureText(StoredRow& row, const StoredRow::Saved& saved) {
    if (saved.outcome == StoredRow::Saved::deleted)
        return CString("Diese Zeile wurde inzwischen gelöscht. Es ist nichts gespeichert."_cp1252);
    if (saved.outcome == StoredRow::Saved::overtaken) {
        return "Diese Zeile wurde inzwischen von jemand anderem geändert ("_cp1252 +
               overtakenColumns(row, saved, [](const BoundColumn& c) { return c.ansiName; }) +
               "). Es ist nichts gespeichert.";
    }
    return {};
}

/// Sets the columns through a dialog without a screen. Returns the exit status.
int editAsTold(const EditOptions& options, StoredRow& row, Console& console) {
    const std::vector<Setting> settings = settingsOf(options, row);
    const std::vector<std::string> before = shownValues(row.columns());
    RowForm form(row.columns());
    const auto dialog = makeMemoryDialog(form.fields());
    form.load(*dialog);
    RowForm::Refusals refusals;
    for (const Setting& setting : settings) {
        if (const auto reason = enterUtf8(form, *dialog, setting))
            refusals.push_back({setting.column, *reason});
    }
    for (RowForm::Refusal& refusal : form.save(*dialog))
        refusals.push_back(std::move(refusal));
    std::stable_sort(refusals.begin(), refusals.end(),
                     [](const auto& a, const auto& b) { return a.column < b.column; });
    for (const RowForm::Refusal& refusal : refusals)
        console.tell("column " + row.columns()[refusal.column].name + ": " + sentence(refusal.reason.View()));
    if (!refusals.empty()) return exitDataFailed;

    const StoredRow::Saved saved = row.save();
    requireSaved(row, saved);
    report(console, row, before, saved);
    return exitGood;
}

int editInDialog(StoredRow& row, Console& console) {
    const std::vector<std::string> before = shownValues(row.columns());
    RowForm form(row.columns());
    StoredRow::Saved saved{StoredRow::Saved::nothing, {}};
    const auto dialog = makeScreenDialog(form.fields(), row.title(), Screen::display);
    const bool stored = dialog->run(form, [&] {
        saved = row.save();
        return failureText(row, saved);
    });
    if (!stored) saved = {StoredRow::Saved::nothing, {}};
    report(console, row, before, saved);
    return exitGood;
}

}  // namespace

int edit(const EditOptions& options, Console& console) {
    const bool asTold = !options.settings.empty();
    if (!asTold && !hasScreenDialogs())
        throw UsageError("this nkdt was built without dialogs; --set COLUMN=TEXT changes a row without one");
    if (!asTold && !hasDisplay())
        throw UsageError("there is no display for a dialog; --set COLUMN=TEXT changes a row without one");
    CDatabase database;
    openDatabase(database, options.database);
    const CString table = ansi(options.table, "the table");
    StoredRow row(database, table, options.key, options.selection);
    if (asTold) return editAsTold(options, row, console);
    tellLeftOut(console, table, row.leftOut());
    return editInDialog(row, console);
}

}  // namespace nkdt::app
