#include "ports/child.h"
#include "pseudo_terminal.h"
#include "support/test_folder.h"
#include "ui/platform/com_ports.h"

#include <filesystem>
#include <fstream>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nrv::ui {
namespace {

PortInfo Port(const char* name, bool usb = false) {
    return {QString::fromLatin1(name), QStringLiteral("/dev/") + QString::fromLatin1(name), QString(), QString(), usb};
}

std::vector<std::string> Names(const std::vector<PortInfo>& ports) {
    std::vector<std::string> names;
    for (const PortInfo& port : ports) {
        names.push_back(port.Name.toStdString());
    }
    return names;
}

QString Text(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

TEST(ComPorts, UsbAdaptersComeFirstAndEachGroupIsInNaturalOrder) {
    const std::vector<PortInfo> ports =
        InOrder({Port("ttyS1"), Port("ttyUSB10", true), Port("ttyACM11", true), Port("ttyAMA0"), Port("ttyUSB2", true),
                 Port("ttyS0"), Port("ttyACM3", true), Port("ttyS10"), Port("ttyS2")});
    EXPECT_EQ(Names(ports), (std::vector<std::string>{"ttyUSB2", "ttyUSB10", "ttyACM3", "ttyACM11", "ttyAMA0", "ttyS0",
                                                      "ttyS1", "ttyS2", "ttyS10"}));
}

TEST(ComPorts, AUsbPortOfAnotherNameGoesBeforeTheBuiltInOnes) {
    EXPECT_EQ(Names(InOrder({Port("cu.builtin"), Port("cu.usbserial-7", true)})),
              (std::vector<std::string>{"cu.usbserial-7", "cu.builtin"}));
}

TEST(ComPorts, ByOrderTheNumberCountsFromOne) {
    const std::vector<PortInfo> ports = {Port("ttyUSB0"), Port("ttyS0")};
    EXPECT_EQ(PickPort(ports, 1, PortNumbering::ByOrder), &ports[0]);
    EXPECT_EQ(PickPort(ports, 2, PortNumbering::ByOrder), &ports[1]);
    for (const int number : {-1, 0, 3, 32}) {
        EXPECT_EQ(PickPort(ports, number, PortNumbering::ByOrder), nullptr) << number;
    }
}

TEST(ComPorts, ByNameTheNumberIsTheOneInTheName) {
    const std::vector<PortInfo> ports = {Port("COM12"), Port("com3"), Port("COM1")};
    EXPECT_EQ(PickPort(ports, 1, PortNumbering::ByName), &ports[2]);
    EXPECT_EQ(PickPort(ports, 3, PortNumbering::ByName), &ports[1]);
    EXPECT_EQ(PickPort(ports, 12, PortNumbering::ByName), &ports[0]);
    EXPECT_EQ(PickPort(ports, 2, PortNumbering::ByName), nullptr);
}

TEST(ComPorts, TheDescriptionTellsWhatIsPluggedIn) {
    PortInfo port = Port("ttyUSB0", true);
    EXPECT_EQ(Describe(port), QStringLiteral("/dev/ttyUSB0"));
    port.Description = QStringLiteral(" USB  to RS485 ");
    EXPECT_EQ(Describe(port), QStringLiteral("USB to RS485 (/dev/ttyUSB0)"));
    port.Manufacturer = QStringLiteral("Maker");
    EXPECT_EQ(Describe(port), QStringLiteral("USB to RS485, Maker (/dev/ttyUSB0)"));
    port.Manufacturer = QStringLiteral("USB to RS485");
    EXPECT_EQ(Describe(port), QStringLiteral("USB to RS485 (/dev/ttyUSB0)"));
}

TEST(ComPorts, AFileOfTheFolderGoesBeforeThePortsOfTheMachine) {
    const nrv::testing::TestFolder folder;
    const test::PseudoTerminal line;
    std::filesystem::create_symlink(line.Device(), folder.Path() / "com1");
    const ComPortNames names(Text(folder.Path()), [] { return std::vector<PortInfo>{Port("ttyUSB0", true)}; });
    const ComPort port = names.Find(1);
    EXPECT_EQ(port.Device.toStdString(), line.Device());
    EXPECT_TRUE(port.Refusal.isEmpty());
    EXPECT_EQ(port.ToolTip.toStdString(),
              "COM 1 is \"com1\" in the program's folder, a link to " + line.Device() + ".");
}

TEST(ComPorts, ALinkThroughALinkIsFollowedToTheDevice) {
    const nrv::testing::TestFolder folder;
    const test::PseudoTerminal line;
    std::filesystem::create_symlink(line.Device(), folder.Path() / "rack");
    std::filesystem::create_symlink("rack", folder.Path() / "com2");
    EXPECT_EQ(ComPortNames(Text(folder.Path())).Find(2).Device.toStdString(), line.Device());
}

TEST(ComPorts, ALinkThatLeadsNowhereIsPassedOver) {
    const nrv::testing::TestFolder folder;
    const test::PseudoTerminal line;
    std::filesystem::create_symlink("/dev/pts/no-such-terminal", folder.Path() / "com1");
    std::filesystem::create_symlink("com1", folder.Path() / "com2");
    PortInfo port = Port("ttyUSB0", true);
    port.Device = QString::fromStdString(line.Device());
    const ComPortNames names(Text(folder.Path()), [&port] { return std::vector<PortInfo>{port}; });
    EXPECT_EQ(names.Find(1).Device.toStdString(), line.Device());
    EXPECT_EQ(names.Find(1).ToolTip.toStdString(), "COM 1 is " + line.Device() + ".");
    EXPECT_TRUE(names.Find(1).Refusal.isEmpty());
    EXPECT_EQ(names.Find(2).Refusal, QStringLiteral("COM 2 stands for nothing: no such serial port is plugged in."));
    // A link made good counts again.
    const test::PseudoTerminal other;
    std::filesystem::remove(folder.Path() / "com1");
    std::filesystem::create_symlink(other.Device(), folder.Path() / "com1");
    EXPECT_EQ(names.Find(1).Device.toStdString(), other.Device());
    EXPECT_EQ(names.Find(2).Device.toStdString(), other.Device());
}

TEST(ComPorts, APortThatIsNotThereAnyMoreIsRefusedWithItsName) {
    const nrv::testing::TestFolder folder;
    const ComPortNames names(Text(folder.Path()), [] { return std::vector<PortInfo>{Port("ttyUSB99", true)}; });
    const ComPort port = names.Find(1);
    EXPECT_EQ(port.Refusal, QStringLiteral("COM 1 (/dev/ttyUSB99) is not there."));
    EXPECT_EQ(port.ToolTip, QStringLiteral("COM 1 is /dev/ttyUSB99. It is not there."));
}

TEST(ComPorts, ANumberKeepsItsDeviceWhenAnotherAdapterIsPluggedIn) {
    const nrv::testing::TestFolder folder;
    std::vector<PortInfo> plugged = {Port("ttyUSB1", true)};
    const ComPortNames names(Text(folder.Path()), [&plugged] { return plugged; });
    const QString first = names.Find(1).Device;
    EXPECT_EQ(first, QStringLiteral("/dev/ttyUSB1"));
    plugged.push_back(Port("ttyUSB0", true));
    EXPECT_EQ(names.Find(1, first).Device, QStringLiteral("/dev/ttyUSB1"));
    EXPECT_EQ(names.Find(1).Device, QStringLiteral("/dev/ttyUSB0"));
    plugged = {Port("ttyUSB0", true)};
    EXPECT_EQ(names.Find(1, first).Device, QStringLiteral("/dev/ttyUSB0"));
}

TEST(ComPorts, EveryEntryOfThePortListHasAToolTip) {
    const nrv::testing::TestFolder folder;
    const ComPortNames names(Text(folder.Path()), [] {
        PortInfo port = Port("ttyUSB99", true);
        port.Description = QStringLiteral("B\u00FCro \u2192 Rack");
        return std::vector<PortInfo>{port};
    });
    const std::vector<std::string> tips = names.Entries().ToolTips;
    ASSERT_EQ(tips.size(), 33U);
    // One byte a character; what the code page has not becomes a question mark.
    EXPECT_EQ(tips[1], "COM 1 is B\xFCro ? Rack (/dev/ttyUSB99). It is not there.");
    EXPECT_EQ(tips[32], "COM 32 stands for nothing: no such serial port is plugged in.");
    for (const std::string& tip : tips) {
        EXPECT_FALSE(tip.empty());
    }
}

TEST(ComPorts, AFileIsNoSerialPort) {
    const nrv::testing::TestFolder folder;
    const auto file = folder.Path() / "com1";
    std::ofstream(file) << "text";
    EXPECT_EQ(RefusalOf(Text(file)), QStringLiteral("is no serial port."));
    EXPECT_EQ(RefusalOf(Text(folder.Path())), QStringLiteral("is no serial port."));
    EXPECT_EQ(RefusalOf(Text(folder.Path() / "absent")), QStringLiteral("is not there."));
}

QString RefusalForAnOrdinaryUser(const std::string& device) {
    return QString::fromStdString(
        nrv::testing::AsOrdinaryUser([&device] { return RefusalOf(QString::fromStdString(device)).toStdString(); }));
}

TEST(ComPorts, ADeviceThatThisUserMayNotOpenNamesWhoMay) {
    constexpr gid_t not_root = 1;
    const QString nobody_may = QStringLiteral("cannot be opened: this user may not read and write it.");
    const test::PseudoTerminal line;
    ASSERT_EQ(::chmod(line.Device().c_str(), 0), 0);
    EXPECT_EQ(RefusalForAnOrdinaryUser(line.Device()), nobody_may);
    // A group may: the one that the system gave it to, or for a root who can that of others.
    struct stat now = {};
    [[maybe_unused]] const bool given = ::chown(line.Device().c_str(), 0, not_root) == 0;
    ASSERT_EQ(::chmod(line.Device().c_str(), 0060), 0);
    ASSERT_EQ(::stat(line.Device().c_str(), &now), 0);
    const group* may = ::getgrgid(now.st_gid);
    ASSERT_NE(may, nullptr);
    const QString name = QString::fromLocal8Bit(may->gr_name);
    EXPECT_EQ(RefusalForAnOrdinaryUser(line.Device()),
              name == QStringLiteral("root")
                  ? nobody_may
                  : QStringLiteral("cannot be opened by this user: it takes a member of the group \"%1\".").arg(name));
}

} // namespace
} // namespace nrv::ui
