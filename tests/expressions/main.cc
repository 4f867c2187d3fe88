/// @file
/// Runs the rows of all classes and prints what does not hold.

#include <cstdio>

#include "Check.h"

namespace expressions {

namespace {

int numberChecked = 0;
int numberFailed = 0;

}  // namespace

void count(bool holds, std::string_view what, Here here) {
    ++numberChecked;
    if (holds) return;
    ++numberFailed;
    std::printf("%s:%d: does not hold: %.*s\n", here.file, here.line, static_cast<int>(what.size()),
                what.data());
}

}  // namespace expressions

int main() {
    try {
        expressions::characterValues();
        expressions::dates();
        expressions::doubles();
        expressions::decimals();
        expressions::durations();
        expressions::text();
        expressions::truthValues();
        expressions::wholeNumbers();
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> owner(caught);
        expressions::count(false, caught->Report().GetString(), {__FILE__, __LINE__});
    }
    std::printf("%d checks, %d failed\n", expressions::numberChecked, expressions::numberFailed);
    return expressions::numberFailed == 0 ? 0 : 1;
}
