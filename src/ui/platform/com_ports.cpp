#include "ui/platform/com_ports.h"

#include "ui/binding/text.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <tuple>
#include <utility>

namespace nrv::ui {
namespace {

#ifdef Q_OS_WIN
constexpr PortNumbering MachineNumbering = PortNumbering::ByName;
#else
constexpr PortNumbering MachineNumbering = PortNumbering::ByOrder;
#endif

int GroupOf(const PortInfo& port) {
    if (port.Name.startsWith(QLatin1String("ttyUSB"))) {
        return 0;
    }
    return port.Usb || port.Name.startsWith(QLatin1String("ttyACM")) ? 1 : 2;
}

QString ComName(int number) {
    return QStringLiteral("COM %1").arg(number);
}

/// Says in a port's words and its tool tip why it cannot be opened, if it cannot.
void TellRefusal(ComPort& port, int number) {
    const QString refusal = RefusalOf(port.Device);
    if (!refusal.isEmpty()) {
        port.Refusal = QStringLiteral("%1 (%2) %3").arg(ComName(number), port.Device, refusal);
        port.ToolTip += QStringLiteral(" It %1").arg(refusal);
    }
}

/// The port of a device of the program's folder, or of a link there that leads to one.
std::optional<ComPort> FromFolder(const QString& folder, int number) {
#ifdef Q_OS_WIN
    // There "com1" is the port itself in every folder.
    Q_UNUSED(folder)
    Q_UNUSED(number)
    return std::nullopt;
#else
    const QString name = QStringLiteral("com%1").arg(number);
    const QFileInfo file(QDir(folder).filePath(name));
    // A link that a rack or an adapter left behind does not stand in the way of the machine's own port.
    if (!file.exists()) {
        return std::nullopt;
    }
    ComPort port;
    // Always the device behind the link: the lock against a second opening is held under the name that is opened.
    port.Device = file.canonicalFilePath();
    port.ToolTip = file.isSymLink()
                       ? QStringLiteral("%1 is \"%2\" in the program's folder, a link to %3.")
                             .arg(ComName(number), name, port.Device)
                       : QStringLiteral("%1 is \"%2\" in the program's folder.").arg(ComName(number), name);
    TellRefusal(port, number);
    return port;
#endif
}

} // namespace

std::vector<PortInfo> InOrder(std::vector<PortInfo> ports) {
    const auto split = [](const QString& name) {
        qsizetype digits = name.size();
        while (digits > 0 && name.at(digits - 1).isDigit()) {
            --digits;
        }
        return std::pair(name.left(digits), name.mid(digits).toULongLong());
    };
    std::stable_sort(ports.begin(), ports.end(), [&split](const PortInfo& one, const PortInfo& other) {
        return std::tuple_cat(std::tuple(GroupOf(one)), split(one.Name)) <
               std::tuple_cat(std::tuple(GroupOf(other)), split(other.Name));
    });
    return ports;
}

const PortInfo* PickPort(const std::vector<PortInfo>& ports, int number, PortNumbering numbering) {
    if (numbering == PortNumbering::ByOrder) {
        const bool there = number >= 1 && static_cast<std::size_t>(number) <= ports.size();
        return there ? &ports[static_cast<std::size_t>(number - 1)] : nullptr;
    }
    const QString name = QStringLiteral("COM%1").arg(number);
    const auto found = std::find_if(ports.begin(), ports.end(), [&name](const PortInfo& port) {
        return port.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == ports.end() ? nullptr : &*found;
}

QString Describe(const PortInfo& port) {
    QStringList parts;
    for (const QString& part : {port.Description.simplified(), port.Manufacturer.simplified()}) {
        if (!part.isEmpty() && !parts.contains(part)) {
            parts.append(part);
        }
    }
    return parts.isEmpty() ? port.Device : QStringLiteral("%1 (%2)").arg(parts.join(QLatin1String(", ")), port.Device);
}

QString RefusalOf(const QString& device) {
#ifdef Q_OS_WIN
    Q_UNUSED(device)
    return {};
#else
    const QFileInfo file(device);
    std::error_code error;
    const auto type = std::filesystem::status(device.toStdString(), error).type();
    if (type == std::filesystem::file_type::not_found || !file.exists()) {
        return QStringLiteral("is not there.");
    }
    if (type != std::filesystem::file_type::character) {
        return QStringLiteral("is no serial port.");
    }
    if (file.isReadable() && file.isWritable()) {
        return {};
    }
    if (file.permission(QFile::ReadGroup | QFile::WriteGroup) && file.group() != QLatin1String("root")) {
        return QStringLiteral("cannot be opened by this user: it takes a member of the group \"%1\".")
            .arg(file.group());
    }
    return QStringLiteral("cannot be opened: this user may not read and write it.");
#endif
}

std::vector<PortInfo> MachinePorts() {
    std::vector<PortInfo> ports;
    const QList<QSerialPortInfo> found = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : found) {
        ports.push_back({port.portName(), port.systemLocation(), port.description(), port.manufacturer(),
                         port.hasVendorIdentifier()});
    }
    return ports;
}

ComPortNames::ComPortNames(QString app_folder, std::function<std::vector<PortInfo>()> machine_ports)
    : app_folder_(std::move(app_folder)), machine_ports_(std::move(machine_ports)) {}

ComPort ComPortNames::Find(int number, const QString& last) const {
    return FindAmong(InOrder(machine_ports_()), number, last);
}

ComPort ComPortNames::FindAmong(const std::vector<PortInfo>& ports, int number, const QString& last) const {
    if (number < 1 || number > ComPortCount) {
        const QString none = number == 0 ? QStringLiteral("No serial port is chosen.")
                                         : QStringLiteral("There is no %1.").arg(ComName(number));
        return {QString(), none, none};
    }
    if (std::optional<ComPort> own = FromFolder(app_folder_, number)) {
        return *own;
    }
    const PortInfo* port = PickPort(ports, number, MachineNumbering);
    for (const PortInfo& known : ports) {
        if (known.Device == last) {
            port = &known;
        }
    }
    if (port == nullptr) {
        const QString nothing =
            QStringLiteral("%1 stands for nothing: no such serial port is plugged in.").arg(ComName(number));
        return {QString(), nothing, nothing};
    }
    ComPort result{port->Device, QStringLiteral("%1 is %2.").arg(ComName(number), Describe(*port)), QString()};
    TellRefusal(result, number);
    return result;
}

ComPortEntries ComPortNames::Entries() const {
    const std::vector<PortInfo> ports = InOrder(machine_ports_());
    ComPortEntries entries{{"No serial port: the program goes on without a line."}, {false}};
    for (int number = 1; number <= ComPortCount; ++number) {
        const ComPort port = FindAmong(ports, number, QString());
        entries.ToolTips.push_back(ToBytes(port.ToolTip));
        entries.Missing.push_back(port.Device.isEmpty());
    }
    return entries;
}

} // namespace nrv::ui
