#include "Program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <functional>

#include "Commands.h"
#include "Error.h"
#include "TableFile.h"

namespace nkdt::app {

namespace {

constexpr const char* databaseHelp = "Path of an SQLite file, or an ODBC connection string";

/// The command that a call asks for; set by the parser.
using Command = std::function<int(Console&)>;

/// A whole number that is at least @p least and fits into 64 bits.
CLI::Validator wholeNumberFrom(LONGLONG least) {
    const auto check = [least](const std::string& text) {
        LONGLONG number = 0;
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, number);
        const bool good = read.ec == std::errc() && read.ptr == end && number >= least;
        return good ? std::string()
                    : "takes a whole number from " + std::to_string(least) + " on, not \"" + text + "\"";
    };
    return CLI::Validator(check, "");
}

/// An option that can be given several times.
CLI::Option* addRepeated(CLI::App& app, const std::string& name, std::vector<std::string>& values,
                         const std::string& typeName, const std::string& help) {
    return app.add_option(name, values, help)->type_name(typeName)->take_all()->expected(1);
}

void addAs(CLI::App& app, std::vector<std::string>& as) {
    addRepeated(app, "--as", as, "COLUMN=TYPE",
                "Bind a column as " + kindNames() + ", whatever its declared type");
}

void addSelection(CLI::App& app, Selection& selection, bool withRows) {
    addRepeated(app, "--columns", selection.columns, "NAMES",
                "The columns, in this order, separated by commas");
    addAs(app, selection.as);
    if (!withRows) return;
    app.add_option("--where", selection.filter, "Only the rows that meet a condition of SQL")
        ->type_name("SQL");
    app.add_option("--sort", selection.sort, "An order of SQL, as behind ORDER BY")->type_name("SQL");
    app.add_flag("--best-fit", selection.bestFit,
                 "Take the most similar character for one that code page 1252 lacks");
}

void addLook(CLI::App& app, bool& plain) {
    app.add_option_function<std::string>(
           "--format", [&plain](const std::string& name) { plain = name == "plain"; },
           "How decimals look: german (-1.234,50), which is the default, or plain (-1234.5)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>{"german", "plain"}).description(""));
}

void addFormat(CLI::App& app, std::string& format) {
    std::vector<std::string> names;
    for (const TableFileFormat& known : tableFileFormats())
        names.emplace_back(known.name);
    app.add_option("--format", format, "extern (external texts), sql (INSERT statements) or archive")
        ->required()
        ->type_name("FORMAT")
        ->check(CLI::IsMember(names).description(""));
}

void addShow(CLI::App& program, Command& command) {
    CLI::App& app = *program.add_subcommand("show", "Print a table in user-interface text");
    const auto options = std::make_shared<ShowOptions>();
    app.add_option("DB", options->database, databaseHelp)->required()->type_name("");
    app.add_option("TABLE", options->table, "Table or view")->required()->type_name("");
    app.add_option("--limit", options->limit, "At most so many rows")
        ->check(wholeNumberFrom(0))
        ->type_name("N");
    app.add_option("--width", options->width, "At most so many characters of a value")
        ->check(wholeNumberFrom(1))
        ->type_name("N");
    addLook(app, options->selection.plain);
    addSelection(app, options->selection, true);
    app.callback(
        [&command, options] { command = [options](Console& console) { return show(*options, console); }; });
}

void addCheck(CLI::App& program, Command& command) {
    CLI::App& app =
        *program.add_subcommand("check", "Take every value of tables through every representation and back");
    const auto options = std::make_shared<CheckOptions>();
    app.add_option("DB", options->database, databaseHelp)->required()->type_name("");
    app.add_option("TABLE", options->tables, "Tables or views")->required()->type_name("");
    app.add_flag("--strict", options->strict, "Values that a representation cannot hold are failures too");
    addLook(app, options->selection.plain);
    addSelection(app, options->selection, true);
    app.callback(
        [&command, options] { command = [options](Console& console) { return check(*options, console); }; });
}

void addExport(CLI::App& program, Command& command) {
    CLI::App& app = *program.add_subcommand("export", "Write a table to a file");
    const auto options = std::make_shared<ExportOptions>();
    app.add_option("DB", options->database, databaseHelp)->required()->type_name("");
    app.add_option("TABLE", options->table, "Table or view")->required()->type_name("");
    addFormat(app, options->format);
    app.add_option("--output", options->output,
                   "The file; one that exists is replaced when the new one is complete")
        ->required()
        ->type_name("FILE");
    addSelection(app, options->selection, true);
    app.callback([&command, options] {
        command = [options](Console& console) { return exportTable(*options, console); };
    });
}

void addImport(CLI::App& program, Command& command) {
    CLI::App& app = *program.add_subcommand("import", "Add a file's rows to a table, all or none");
    const auto options = std::make_shared<ImportOptions>();
    app.add_option("DB", options->database, databaseHelp)->required()->type_name("");
    app.add_option("TABLE", options->table, "The table to add to")->required()->type_name("");
    addFormat(app, options->format);
    app.add_option("--input", options->input, "The file, as export wrote it")->required()->type_name("FILE");
    app.add_flag("--create", options->create, "Make the table first");
    addAs(app, options->as);
    app.callback([&command, options] {
        command = [options](Console& console) { return importTable(*options, console); };
    });
}

void addCompare(CLI::App& program, Command& command) {
    CLI::App& app =
        *program.add_subcommand("compare", "Tell whether two tables have the same values in the same order");
    const auto options = std::make_shared<CompareOptions>();
    app.add_option("DB1", options->databases[0], databaseHelp)->required()->type_name("");
    app.add_option("TABLE1", options->tables[0], "Table or view")->required()->type_name("");
    app.add_option("DB2", options->databases[1], "The second database")->required()->type_name("");
    app.add_option("TABLE2", options->tables[1], "Its table or view")->required()->type_name("");
    addSelection(app, options->selection, true);
    app.callback([&command, options] {
        command = [options](Console& console) { return compare(*options, console); };
    });
}

void addEdit(CLI::App& program, Command& command) {
    CLI::App& app = *program.add_subcommand("edit", "Change one row in a dialog");
    const auto options = std::make_shared<EditOptions>();
    app.add_option("DB", options->database, databaseHelp)->required()->type_name("");
    app.add_option("TABLE", options->table, "A table with a primary key of one column")
        ->required()
        ->type_name("");
    app.add_option(
           "KEY", options->key,
           "The row's key, as show prints it or as SQL writes it (0.125, 2004-03-05); no empty text, and "
           "nothing that SQLite stores in another form")
        ->required()
        ->type_name("");
    addRepeated(app, "--set", options->settings, "COLUMN=TEXT",
                "Without a dialog: set a column to what the text says; nothing changes if one is refused");
    addLook(app, options->selection.plain);
    addSelection(app, options->selection, false);
    app.callback(
        [&command, options] { command = [options](Console& console) { return edit(*options, console); }; });
}

void addDemo(CLI::App& program, Command& command) {
    CLI::App& app =
        *program.add_subcommand("demo", "Make a sample database and take one row down the whole road");
    const auto options = std::make_shared<DemoOptions>();
    app.add_option("DB", options->database,
                   "Path of the new SQLite file, which stays, or an ODBC connection string")
        ->type_name("");
    addLook(app, options->plain);
    app.add_option("--rows", options->rows, "Add so many rows to the sample ones")
        ->check(wholeNumberFrom(0))
        ->type_name("N");
    app.add_flag("--dialog", options->dialog, "Let a person fill the dialog in, where there is a display");
    app.add_option("--picture", options->picture, "Write a picture of the dialog, as PNG")->type_name("FILE");
    app.callback(
        [&command, options] { command = [options](Console& console) { return demo(*options, console); }; });
}

int runCommand(const Command& command, Console& console) {
    try {
        const int status = command(console);
        console.out.flush();
        if (!console.out) throw DataError("the output cannot be written");
        return status;
    } catch (const UsageError& error) {
        console.tell(error.what());
        return exitWrongCall;
    } catch (...) {
        console.tell(takeCaughtText());
        return exitDataFailed;
    }
}

}  // namespace

int run(const std::vector<std::string>& arguments, Console& console) {
    CLI::App program("Takes tables of real databases through the value classes.", "nkdt");
    program.set_version_flag("--version", "nkdt " NKDT_VERSION);
    program.require_subcommand(1);
    program.footer("Exit status: 0 good, 1 the data failed, 2 the call was wrong.");
    Command command;
    addShow(program, command);
    addCheck(program, command);
    addExport(program, command);
    addImport(program, command);
    addCompare(program, command);
    addEdit(program, command);
    addDemo(program, command);
    const auto isCalled = [&](const CLI::App* known) { return known->check_name(arguments.front()); };
    const auto commands = program.get_subcommands([](CLI::App*) { return true; });
    if (!arguments.empty() && !arguments.front().starts_with('-') &&
        std::none_of(commands.begin(), commands.end(), isCalled)) {
        console.tell("there is no command \"" + arguments.front() + "\" (see nkdt --help)");
        return exitWrongCall;
    }
    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& wish) {
        (void)program.exit(wish, console.out, console.err);
        return exitGood;
    } catch (const CLI::ParseError& error) {
        console.tell(std::string(error.what()) + " (see nkdt --help)");
        return exitWrongCall;
    }
    return runCommand(command, console);
}

}  // namespace nkdt::app
