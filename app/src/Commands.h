#pragma once

/// @file
/// The program's commands. Each returns the exit status, or throws a UsageError, a DataError or what the
/// library throws.

#include <cstddef>
#include <string>
#include <vector>

#include "Console.h"
#include "Table.h"
#include "nkfw/Types.h"

namespace nkdt::app {

/// Prints a table in user-interface text, aligned.
struct ShowOptions {
    std::string database;
    std::string table;
    Selection selection;
    LONGLONG limit = -1;    ///< the most rows; negative: all
    std::size_t width = 0;  ///< the most characters of a value; 0: all
};
int show(const ShowOptions& options, Console& console);

/// Takes every value of tables through every representation and back.
struct CheckOptions {
    std::string database;
    std::vector<std::string> tables;
    Selection selection;
    bool strict = false;  ///< a loss that a representation states is a failure too
};
int check(const CheckOptions& options, Console& console);

/// Writes a table to a file.
struct ExportOptions {
    std::string database;
    std::string table;
    Selection selection;
    std::string format;
    std::string output;
};
int exportTable(const ExportOptions& options, Console& console);

/// Reads a table from a file.
struct ImportOptions {
    std::string database;
    std::string table;
    std::vector<std::string> as;
    std::string format;
    std::string input;
    bool create = false;
};
int importTable(const ImportOptions& options, Console& console);

/// Tells whether two tables have the same values.
struct CompareOptions {
    std::string databases[2];
    std::string tables[2];
    Selection selection;
};
int compare(const CompareOptions& options, Console& console);

/// Changes one row, in a dialog or as the settings say.
struct EditOptions {
    std::string database;
    std::string table;
    std::string key;                    ///< as a person reads it, or as SQL writes it
    std::vector<std::string> settings;  ///< COLUMN=TEXT; empty: the dialog
    Selection selection;                ///< its columns are there beside the key
};
int edit(const EditOptions& options, Console& console);

/// Makes a sample database and takes one row down the whole road.
struct DemoOptions {
    std::string database;  ///< empty: one that is gone at the end
    LONGLONG rows = 0;     ///< rows to add to the sample ones
    bool plain = false;    ///< decimals without the German format
    bool dialog = false;   ///< a person fills the dialog in, if there is a display
    std::string picture;   ///< the file that the dialog's picture is written to; empty: none
};
int demo(const DemoOptions& options, Console& console);

}  // namespace nkdt::app
