// The settings that the link gives to a line, read back behind the toolkit's back.

#include "link/link.h"
#include "pseudo_terminal.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"
#include "ui/platform/com_ports.h"
#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <termios.h>
#include <unistd.h>
#include <vector>

namespace {

/// What was asked of the driver of each terminal.
std::map<std::string, std::vector<termios>>& Asked() {
    static std::map<std::string, std::vector<termios>> asked;
    return asked;
}

} // namespace

// A pseudo-terminal tells 8 bits without parity whatever it was asked for: the requests are caught on their way.
extern "C" int tcsetattr(int fd, int actions, const termios* termios_p) noexcept {
    using Function = int (*)(int, int, const termios*);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "tcsetattr"));
    if (const char* name = ::ttyname(fd); name != nullptr) {
        Asked()[name].push_back(*termios_p);
    }
    return next(fd, actions, termios_p);
}

namespace {

using namespace nrv;

class LineSettingsTest : public ::testing::Test {
  protected:
    LineSettingsTest() {
        std::filesystem::create_symlink(line_.Device(), folder_.Path() / "com1");
        link_.ComIndex = 1;
        Asked().clear();
    }

    nrv::testing::TestFolder folder_;
    test::PseudoTerminal line_;
    ui::ComPortNames names_{QString::fromStdString(folder_.Path().string()),
                            [] { return std::vector<ui::PortInfo>{}; }};
    ui::QtSerialPort port_{names_};
    nrv::testing::ScriptedClock clock_;
    ui::QtProcess process_{port_};
    nrv::testing::ScriptedBoxes boxes_;
    controls::Timer serial_timer_;
    Operation operation_;
    link::Link link_{port_, clock_, process_, boxes_, serial_timer_, operation_};
};

TEST_F(LineSettingsTest, TheLineRunsAt19200BaudWithEightDataBitsNoParityAndOneStopBit) {
    link_.OpenPort();
    for (const bool reopened : {false, true}) {
        if (reopened) {
            link_.ReopenPort(link::FrameLength);
        }
        ASSERT_TRUE(port_.PortOpen());
        const termios settings = line_.Settings();
        EXPECT_EQ(::cfgetospeed(&settings), speed_t{B19200});
        EXPECT_EQ(::cfgetispeed(&settings), speed_t{B19200});
        EXPECT_EQ(settings.c_cflag & CSTOPB, 0U);
        ASSERT_TRUE(Asked().contains(line_.Device()));
        for (const termios& asked : Asked()[line_.Device()]) {
            EXPECT_EQ(asked.c_cflag & CSIZE, tcflag_t{CS8});
            EXPECT_EQ(asked.c_cflag & PARENB, 0U);
        }
    }
}

} // namespace
