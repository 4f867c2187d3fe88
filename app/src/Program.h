#pragma once

/// @file
/// The program without its process: a call in, an exit status out.

#include <string>
#include <vector>

#include "Console.h"

namespace nkdt::app {

/// Runs the call and tells every error in one line.
/// @param arguments the call's arguments in UTF-8, without the program's name
/// @return 0 good, 1 the data failed, 2 the call was wrong
int run(const std::vector<std::string>& arguments, Console& console);

}  // namespace nkdt::app
