#include <algorithm>
#include <map>
#include <optional>

#include "Commands.h"
#include "Error.h"
#include "RowForm.h"
#include "SaveRow.h"
#include "ScreenDialog.h"
#include "StoredRow.h"
#include "Text.h"
#include "TextTable.h"

namespace nkdt::app {

namespace {

/// What the call wants a column to be.
struct Setting {
    std::size_t column;
    std::string text;  // UTF-8
};

// A name can have a "=" of its own, a text any number of them.
Setting settingOf(const std::string& argument, const EditOptions& options, StoredRow& row) {
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
    throw UsageError("table " + options.table + " has no column \"" + argument.substr(0, sign) + "\"" +
                     (options.selection.columns.empty() ? "" : " among --columns"));
}

std::vector<Setting> settingsOf(const EditOptions& options, StoredRow& row) {
    std::vector<Setting> settings;
    for (const std::string& argument : options.settings) {
        const Setting setting = settingOf(argument, options, row);
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

/// Why columns refuse what they are to be; UTF-8.
using Reasons = std::map<std::size_t, std::string>;

void add(Reasons& reasons, const RowForm::Refusals& refusals) {
    for (const RowForm::Refusal& refusal : refusals)
        reasons.emplace(refusal.column, sentence(refusal.reason.View()));
}

/// Returns whether there are any.
bool tell(Console& console, StoredRow& row, const Reasons& reasons) {
    for (const auto& [column, reason] : reasons)
        console.tell("column " + row.columns()[column].name + ": " + reason);
    return !reasons.empty();
}

void enter(const RowForm& form, RowDialog& dialog, const Setting& setting, Reasons& reasons) {
    try {
        const auto reason = form.enter(dialog, setting.column, ansi(setting.text, "the text"));
        if (reason) add(reasons, {{setting.column, *reason}});
    } catch (const UsageError& error) {
        reasons.emplace(setting.column, error.what());
    }
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

/// Throws what stands in the way of a saving, if anything does.
void requireSaved(StoredRow& row, const StoredRow::Saved& saved) {
    if (saved.outcome == StoredRow::Saved::deleted)
        throw DataError("the row has been deleted since it was read; nothing is changed");
    if (saved.outcome == StoredRow::Saved::overtaken) {
        throw DataError("somebody else has changed the row since it was read (" +
                        visible(changedColumns(row, saved)) + "); nothing is changed");
    }
}

/// Sets the columns through a dialog without a screen. Returns the exit status.
int editAsTold(const EditOptions& options, StoredRow& row, Console& console) {
    const std::vector<Setting> settings = settingsOf(options, row);
    const std::vector<std::string> before = shownValues(row.columns());
    RowForm form(row.columns());
    const auto dialog = makeMemoryDialog(form.fields());
    form.load(*dialog);
    Reasons reasons;
    for (const Setting& setting : settings)
        enter(form, *dialog, setting, reasons);
    add(reasons, form.save(*dialog));
    if (tell(console, row, reasons)) return exitDataFailed;

    const StoredRow::Saved saved = row.save();
    requireSaved(row, saved);
    add(reasons, saved.refusals);
    if (tell(console, row, reasons)) return exitDataFailed;
    report(console, row, before, saved);
    return exitGood;
}

void requireDisplay() {
    if (!hasDisplay())
        throw UsageError("there is no display for a dialog; --set COLUMN=TEXT changes a row without one");
}

/// Another column than the key, if there is one: that is what is changed.
std::size_t firstToChange(StoredRow& row) {
    return row.key() == 0 && row.columns().size() > 1 ? 1 : 0;
}

int editInDialog(StoredRow& row, Console& console) {
    const std::vector<std::string> before = shownValues(row.columns());
    RowForm form(row.columns());
    StoredRow::Saved saved{StoredRow::Saved::nothing};
    const auto dialog = makeScreenDialog(form.fields(), row.title(), Screen::display);
    requireDisplay();
    const bool stored = dialog->run(form, firstToChange(row), [&] { return saveRow(row, saved); });
    if (!stored) saved = {StoredRow::Saved::nothing};
    report(console, row, before, saved);
    return exitGood;
}

}  // namespace

int edit(const EditOptions& options, Console& console) {
    const bool asTold = !options.settings.empty();
    if (!asTold && !hasScreenDialogs())
        throw UsageError("this nkdt was built without dialogs; --set COLUMN=TEXT changes a row without one");
    if (!asTold) requireDisplay();
    CDatabase database;
    openDatabase(database, options.database);
    const CString table = ansi(options.table, "the table");
    StoredRow row(database, table, options.key, options.selection);
    if (asTold) return editAsTold(options, row, console);
    tellLeftOut(console, table, row.leftOut());
    return editInDialog(row, console);
}

}  // namespace nkdt::app
