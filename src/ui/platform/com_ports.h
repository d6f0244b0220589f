#pragma once

#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace nrv::ui {

inline constexpr int ComPortCount = 32;

/// One serial port of the machine, as the system describes it.
struct PortInfo {
    QString Name;   ///< "ttyUSB0", "COM3"
    QString Device; ///< what to open: "/dev/ttyUSB0"
    QString Description;
    QString Manufacturer;
    bool Usb = false;
};

/// What a port number stands for.
struct ComPort {
    QString Device;  ///< what to open, links resolved; empty where there is nothing to open
    QString ToolTip; ///< what it is, what is plugged in there, and why it cannot be opened where that is known
    QString Refusal; ///< one sentence, why it cannot be opened; empty when nothing speaks against it
};

/// How the machine's own ports get their numbers: by the number in their name, or in their order.
enum class PortNumbering { ByName, ByOrder };

/// USB adapters first (ttyUSB, then the other USB ports), each group in natural order: ttyUSB2 before ttyUSB10.
std::vector<PortInfo> InOrder(std::vector<PortInfo> ports);

/// The port that a number from 1 up stands for, null when there is none; `ports` are in order.
const PortInfo* PickPort(const std::vector<PortInfo>& ports, int number, PortNumbering numbering);

/// What is plugged in, as "USB to RS485, Maker (/dev/ttyUSB0)".
QString Describe(const PortInfo& port);

/// Why a device file cannot be opened as a serial port, as the end of a sentence that begins with its name; empty when
/// nothing speaks against it. Whether somebody else has it open shows only when it is opened.
QString RefusalOf(const QString& device);

/// The serial ports that the machine has now.
std::vector<PortInfo> MachinePorts();

/// The entries of the port list, entry 0 being "NONE".
struct ComPortEntries {
    std::vector<std::string> ToolTips; ///< bytes of Latin-1
    std::vector<bool> Missing;         ///< it stands for nothing that is there
};

/// Tells what COM 1 to COM 32 stand for: the file com<n> of the program's folder if there is one that leads
/// somewhere, else a port of the machine.
class ComPortNames {
  public:
    explicit ComPortNames(QString app_folder, std::function<std::vector<PortInfo>()> machine_ports = MachinePorts);

    /// `last` is the device that this number stood for when it was last opened. While it is there the number keeps
    /// it, so that an adapter plugged in meanwhile does not move the numbers.
    ComPort Find(int number, const QString& last = QString()) const;

    /// What the entries of the port list stand for now.
    ComPortEntries Entries() const;

  private:
    ComPort FindAmong(const std::vector<PortInfo>& ports, int number, const QString& last) const;

    QString app_folder_;
    std::function<std::vector<PortInfo>()> machine_ports_;
};

} // namespace nrv::ui
