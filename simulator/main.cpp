#include "simulator/console.h"
#include "simulator/demo_rack.h"
#include "simulator/line.h"
#include "simulator/options.h"
#include "simulator/state_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <iostream>
#include <mutex>
#include <poll.h>
#include <string>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

using namespace nrv::simulator;

namespace {

constexpr std::size_t LongestCommand = 4096;

/// Prints whole lines from two threads.
class Printer {
  public:
    void Print(const std::string& text) {
        const std::scoped_lock lock(mutex_);
        std::cout << text << std::flush;
    }

  private:
    std::mutex mutex_;
};

/// Turns the signals that end a program into something to wait for. Must come before any thread.
int EndSignals() {
    sigset_t ends;
    sigemptyset(&ends);
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&ends, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    ::signal(SIGPIPE, SIG_IGN); // a reader of the trace that goes away must not take the rack with it
    const int fd = ::signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK);
    if (fd < 0) {
        throw std::system_error(errno, std::generic_category(), "no signal descriptor to be had");
    }
    return fd;
}

/// Commands from the standard input, split into lines.
class Input {
  public:
    /// False at the end of the input.
    bool Take(Line& line, Printer& printer, bool& quit) {
        std::array<char, 1024> buffer{};
        const ssize_t size = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (size < 0 && (errno == EINTR || errno == EAGAIN)) {
            return true;
        }
        if (size < 0) {
            return false;
        }
        text_.append(buffer.data(), static_cast<std::size_t>(size));
        if (size == 0 && !text_.empty()) {
            text_ += '\n'; // the last command may end with the input
        }
        for (std::size_t end = text_.find('\n'); end != std::string::npos && !quit; end = text_.find('\n')) {
            printer.Print(RunCommand(line, text_.substr(0, end), quit));
            text_.erase(0, end + 1);
        }
        if (text_.size() > LongestCommand) {
            printer.Print("error: a command is too long\n");
            text_.clear();
        }
        return size > 0;
    }

  private:
    std::string text_;
};

void RunUntilEnd(Line& line, const Options& options, int signals, Printer& printer) {
    using std::chrono::steady_clock;
    const auto start = steady_clock::now();
    bool listening = options.Interactive;
    Input input;
    for (bool quit = false; !quit;) {
        int rest = -1;
        if (options.Seconds) {
            const std::chrono::duration<double> left =
                std::chrono::duration<double>(*options.Seconds) - (steady_clock::now() - start);
            if (left.count() <= 0) {
                return;
            }
            rest = static_cast<int>(std::min(left.count(), 1000.0) * 1000) + 1;
        }
        std::array<pollfd, 2> waits{{{signals, POLLIN, 0}, {listening ? STDIN_FILENO : -1, POLLIN, 0}}};
        ::poll(waits.data(), waits.size(), rest);
        if ((waits[0].revents & POLLIN) != 0) {
            return;
        }
        if (listening && waits[1].revents != 0) {
            listening = input.Take(line, printer, quit);
        }
    }
}

int Serve(const Options& options) {
    const Descriptor signals(EndSignals());
    Printer printer;
    LineOptions line_options;
    line_options.Paced = options.Paced;
    line_options.HalfDuplex = options.HalfDuplex;
    line_options.Noise = std::chrono::milliseconds(options.Noise);
    if (options.Trace) {
        line_options.Trace = [&printer](const std::string& text) { printer.Print(text + "\n"); };
    }
    Rack rack = BuildRack(options);
    if (!options.State.empty()) {
        CheckStateCanBeSaved(options.State);
    }
    Line line(std::move(rack), line_options);
    std::string ready = "nrv718-rack: ready on " + line.DevicePath();
    for (const auto& link : options.Links) {
        line.LinkAs(link);
        ready += ", linked as " + link.string();
    }
    line.Start();
    printer.Print(ready + "\n");
    RunUntilEnd(line, options, signals.Get(), printer);
    line.Stop();
    if (!options.State.empty()) {
        line.WithRack([&options](Rack& now) { SaveState(now, options.State); });
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Options options = ParseOptions({argv + 1, argv + argc});
        if (options.Help) {
            std::cout << HelpText();
            return 0;
        }
        if (options.Version) {
            std::cout << "nrv718-rack " NRV718_VERSION "\n";
            return 0;
        }
        return Serve(options);
    } catch (const OptionError& problem) {
        std::cerr << "nrv718-rack: " << problem.what() << "\n";
        return 2;
    } catch (const std::exception& problem) {
        std::cerr << "nrv718-rack: " << problem.what() << "\n";
        return 1;
    }
}
