#include "support/test_folder.h"
#include "terminal.h"

#include <array>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>

namespace nrv::simulator {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The built program as a child process, with its three streams in our hands.
class Program {
  public:
    explicit Program(std::vector<std::string> arguments) {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        std::array<int, 2> error{};
        if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0 ||
            ::pipe2(error.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        std::string program = NRV718_RACK_PROGRAM;
        std::vector<char*> words{program.data()};
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        child_ = ::fork();
        if (child_ == 0) {
            ::dup2(in[0], 0);
            ::dup2(out[1], 1);
            ::dup2(error[1], 2);
            ::execv(words[0], words.data());
            ::_exit(127);
        }
        ::close(in[0]);
        ::close(out[1]);
        ::close(error[1]);
        in_.Reset(in[1]);
        out_.Reset(out[0]);
        error_.Reset(error[0]);
    }
    ~Program() {
        if (child_ > 0) {
            ::kill(child_, SIGKILL);
            ::waitpid(child_, nullptr, 0);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Type(const std::string& text) {
        if (::write(in_.Get(), text.data(), text.size()) < 0) {
            throw std::runtime_error("cannot write");
        }
    }
    void Signal(int signal) const { ::kill(child_, signal); }

    /// A line of the output, waited for up to ten seconds; "" when there is none.
    std::string Line() {
        for (;;) {
            if (const std::size_t end = text_.find('\n'); end != std::string::npos) {
                std::string line = text_.substr(0, end);
                text_.erase(0, end + 1);
                return line;
            }
            pollfd wait{out_.Get(), POLLIN, 0};
            std::array<char, 4096> buffer{};
            const ssize_t size = ::poll(&wait, 1, 10000) > 0 ? ::read(out_.Get(), buffer.data(), buffer.size()) : 0;
            if (size <= 0) {
                return {};
            }
            text_.append(buffer.data(), static_cast<std::size_t>(size));
        }
    }

    std::string Error() const {
        std::array<char, 4096> buffer{};
        std::string text;
        for (ssize_t size = 0; (size = ::read(error_.Get(), buffer.data(), buffer.size())) > 0;) {
            text.append(buffer.data(), static_cast<std::size_t>(size));
        }
        return text;
    }

    /// Waits for the end; the exit status, or -1 for an end by a signal.
    int Status() {
        int status = 0;
        ::waitpid(child_, &status, 0);
        child_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    pid_t child_ = -1;
    Descriptor in_;
    Descriptor out_;
    Descriptor error_;
    std::string text_;
};

TEST(Program, PrintsHelpAndVersion) {
    Program help({"--help"});
    EXPECT_EQ(help.Line(), "Usage: nrv718-rack [option]...");
    EXPECT_EQ(help.Status(), 0);
    Program version({"--version"});
    EXPECT_THAT(version.Line(), ::testing::MatchesRegex("nrv718-rack [0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_EQ(version.Status(), 0);
}

TEST(Program, RefusesABadOptionWithStatusTwo) {
    Program program({"--loud"});
    EXPECT_EQ(program.Error(), "nrv718-rack: unknown option \"--loud\"; try --help\n");
    EXPECT_EQ(program.Status(), 2);
    Program locked({"--locked", "7"});
    EXPECT_EQ(locked.Error(), "nrv718-rack: --locked: no device 7 on the line\n");
    EXPECT_EQ(locked.Status(), 2);
}

TEST(Program, AnswersThroughItsLinkAndEndsCleanly) {
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const testing::TestFolder folder;
        const std::string link = (folder / "com1").string();
        Program program({"--ids", "1,5", "--link", link});
        const std::string ready = program.Line();
        EXPECT_THAT(ready, StartsWith("nrv718-rack: ready on /dev/pts/"));
        EXPECT_THAT(ready, HasSubstr(", linked as " + link));
        {
            Terminal terminal(link);
            EXPECT_EQ(terminal.Ask(Request(5, {})).at(4), 0xC3);
        }
        program.Signal(signal);
        EXPECT_EQ(program.Status(), 0);
        EXPECT_EQ(folder.Entries(), 0U);
    }
}

TEST(Program, KeepsItsStateFromRunToRun) {
    const testing::TestFolder folder;
    const std::string link = (folder / "com1").string();
    const std::string state = (folder / "rack").string();
    for (int run = 0; run < 2; ++run) {
        Program program({"--ids", "5", "--link", link, "--state", state, "--unpaced"});
        ASSERT_NE(program.Line(), "");
        Terminal terminal(link);
        EXPECT_EQ(terminal.Ask(Request(5, {0x10, 1, 44})).at(8), run == 0 ? 0 : 42);
        terminal.Ask(Request(5, {0x11, 1, 44, 0, 0, 42}));
        program.Signal(SIGTERM);
        EXPECT_EQ(program.Status(), 0);
    }
}

TEST(Program, LeavesADamagedStateAlone) {
    const testing::TestFolder folder;
    folder.WriteText("rack", "nonsense");
    Program program({"--state", (folder / "rack").string()});
    EXPECT_EQ(program.Error(),
              "nrv718-rack: state file " + (folder / "rack").string() + ": it is too short to be a rack's state\n");
    EXPECT_EQ(program.Status(), 1);
    EXPECT_EQ(folder.ReadText("rack"), "nonsense");
}

TEST(Program, RefusesAStateThatItCouldNotSaveOrRead) {
    const testing::TestFolder folder;
    const std::string nowhere = (folder.Path() / "none" / "rack").string();
    Program lost({"--state", nowhere});
    EXPECT_EQ(lost.Error(), "nrv718-rack: state file " + nowhere +
                                ": no new file can be made beside it: No such file or directory\n");
    EXPECT_EQ(lost.Status(), 1);
    const std::string pipe = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    Program hung({"--state", pipe});
    EXPECT_EQ(hung.Error(), "nrv718-rack: state file " + pipe + ": it is no plain file\n");
    EXPECT_EQ(hung.Status(), 1);
}

TEST(Program, NeverReplacesARealFileByItsLink) {
    const testing::TestFolder folder;
    folder.WriteText("com1", "precious");
    Program program({"--link", (folder / "com1").string()});
    EXPECT_THAT(program.Error(), HasSubstr("is there already and is no link"));
    EXPECT_EQ(program.Status(), 1);
    EXPECT_EQ(folder.ReadText("com1"), "precious");
}

TEST(Program, TakesOrdersAndTraces) {
    const testing::TestFolder folder;
    const std::string link = (folder / "com1").string();
    Program program({"--ids", "5", "--link", link, "--trace", "--interactive", "--unpaced"});
    ASSERT_NE(program.Line(), "");
    program.Type("nonsense\ncut 5 1 6\nlist\n");
    EXPECT_EQ(program.Line(), "error: unknown command \"nonsense\"; try \"help\"");
    EXPECT_EQ(program.Line(), "ID 5   NRV-718  ID 05 ");
    {
        Terminal terminal(link);
        terminal.Send(Request(5, {}));
        EXPECT_EQ(terminal.Read(6).size(), 6U);
        EXPECT_TRUE(terminal.Silent());
    }
    EXPECT_EQ(program.Line(), "-> ID 5  Are you there?");
    EXPECT_EQ(program.Line(), "<- ID 5  F0 C3 05 00 C3 00 [cut to 6 bytes]");
    program.Type("quit\n");
    EXPECT_EQ(program.Status(), 0);
    EXPECT_EQ(folder.Entries(), 0U);
}

TEST(Program, EndsAfterTheSecondsGiven) {
    const auto start = std::chrono::steady_clock::now();
    Program program({"--seconds", "0.2"});
    EXPECT_NE(program.Line(), "");
    EXPECT_EQ(program.Status(), 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(200));
}

} // namespace
} // namespace nrv::simulator
