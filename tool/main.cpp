#include "tool/command_line.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments) {
    try {
        std::ios::sync_with_stdio(false);
        const int outcome = nrv::tool::Run({arguments + 1, arguments + count}, std::cout, std::cerr);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "nrv718-preset: the output cannot be written\n";
            return 2;
        }
        return outcome;
    } catch (const std::exception& error) {
        std::cerr << "nrv718-preset: " << error.what() << "\n";
        return 2;
    }
}
