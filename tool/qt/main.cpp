#include "tool/command_line.h"
#include "tool/qt/qt_line.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

/// In characters; 0 when what is written does not go to a terminal.
int TerminalWidth() {
    if (isatty(STDOUT_FILENO) == 0 || isatty(STDERR_FILENO) == 0) {
        return 0;
    }
    constexpr int usual = 80;
    constexpr int narrowest = 2;
    winsize size{};
    const bool told = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return told ? std::max<int>(size.ws_col, narrowest) : usual;
}

/// Whoever read the output has seen enough.
bool ReaderIsGone() {
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        std::ios::sync_with_stdio(false);
        nrv::tool::QtLine line(count, arguments);
        const int outcome =
            nrv::tool::Run({arguments + 1, arguments + count}, {std::cout, std::cerr, TerminalWidth()}, &line);
        std::cout.flush();
        if (!std::cout && !ReaderIsGone()) {
            std::cerr << "nrv718-preset: The standard output cannot be written.\n";
            return static_cast<int>(nrv::tool::Outcome::Refused);
        }
        return outcome;
    } catch (const std::exception& error) {
        std::cerr << "nrv718-preset: " << error.what() << "\n";
        return static_cast<int>(nrv::tool::Outcome::Refused);
    }
}
