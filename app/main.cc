#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "Program.h"
#include "TemporaryFile.h"

int main(int argc, char** argv) {
    (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that grew too large is an error to report, not the end
    nkdt::app::TemporaryFile::watchSignals();
    std::ios::sync_with_stdio(false);
    nkdt::app::Console console{std::cout, std::cerr, ::isatty(STDERR_FILENO) != 0};
    return nkdt::app::run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), console);
}
