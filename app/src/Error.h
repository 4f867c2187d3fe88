#pragma once

/// @file
/// How the program fails: the call was wrong, or the data failed. Errors of the library are taken over as
/// their texts.

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "nkfw/String.h"
#include "nkfw/Types.h"

namespace nkdt::app {

/// What the program ends with.
enum ExitStatus : int { exitGood = 0, exitDataFailed = 1, exitWrongCall = 2 };

/// The call was wrong: an argument is malformed, or what it names does not exist. The text is UTF-8.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The data failed: a value, a file, a database. The text is UTF-8.
class DataError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// To be called in a handler: the text of the caught exception with its cause, as one sentence in UTF-8. An
/// exception of the library is released.
std::string takeCaughtText();
/// The same for a dialog: why the caught exception was thrown, without the errors that came of it, as a
/// library text.
CString takeCaughtReason();

/// The first characters of a text in UTF-8, in quotation marks.
std::string quotedStart(std::string_view text);

/// "row 5, column Name"
std::string placeOf(LONGLONG row, std::string_view column);

/// Runs a piece of work on a file and names it in whatever it throws.
template <class Work>
auto onFile(const std::string& path, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (...) {
        const std::string text = takeCaughtText();
        throw DataError("file \"" + path + "\": " + text);
    }
}

/// Runs a piece of work on one value and names its place in whatever it throws.
template <class Work>
void atPlace(LONGLONG row, std::string_view column, Work&& work) {
    try {
        std::forward<Work>(work)();
    } catch (...) {
        const std::string text = takeCaughtText();
        throw DataError(placeOf(row, column) + ": " + text);
    }
}

/// Runs a piece of work on one text, in UTF-8, and names it in whatever the library throws.
template <class Work>
void onText(std::string_view text, Work&& work) {
    try {
        std::forward<Work>(work)();
    } catch (const DataError&) {
        throw;
    } catch (...) {
        const std::string reason = takeCaughtText();
        throw DataError(quotedStart(text) + ": " + reason);
    }
}

}  // namespace nkdt::app
