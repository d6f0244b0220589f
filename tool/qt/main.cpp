#include "tool/command_line.h"
#include "tool/qt/qt_line.h"

#include <exception>
#include <iostream>
#include <unistd.h>

int main(int count, char** arguments) {
    try {
        std::ios::sync_with_stdio(false);
        nrv::tool::QtLine line(count, arguments);
        const int outcome =
            nrv::tool::Run({arguments + 1, arguments + count},
                           {std::cout, std::cerr, isatty(STDOUT_FILENO) != 0 && isatty(STDERR_FILENO) != 0}, &line);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "nrv718-preset: the output cannot be written\n";
            return static_cast<int>(nrv::tool::Outcome::Refused);
        }
        return outcome;
    } catch (const std::exception& error) {
        std::cerr << "nrv718-preset: " << error.what() << "\n";
        return static_cast<int>(nrv::tool::Outcome::Refused);
    }
}
