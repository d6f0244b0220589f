#pragma once

#include "rack_witness.h"
#include "ui/look/theme.h"

#include <QComboBox>
#include <QLineEdit>
#include <QObject>

#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace nrv::test {

// The devices of a rack, in the order of their rows.
inline constexpr int Id = 5;
inline constexpr int OtherId = 9;
inline constexpr int ThirdId = 12;

// The option bits of the factory, and with the option that mutes come with a preset.
inline constexpr int PlainOptions = 32;
inline constexpr int MutesWithPreset = 32 + 4;

inline constexpr const char* DeathTitle = "Communication problem";
inline constexpr const char* ConnectTitle = "Connect device";

/// The tool buttons that open a dialog of the program, and what it is called.
struct DialogOfTool {
    controls::ToolButton Tool;
    const char* Dialog;
};
inline constexpr std::array DialogsOfTools{
    DialogOfTool{controls::EditNamesTool, "FrmEditLabel"}, DialogOfTool{controls::StorePresetTool, "FrmStore"},
    DialogOfTool{controls::ReadPresetTool, "FrmRead"},     DialogOfTool{controls::CopyInputTool, "FrmCopyIn"},
    DialogOfTool{controls::CopyOutputTool, "FrmCopyOut"},  DialogOfTool{controls::PasswordTool, "FrmPassword"}};
// Load, save and unconnect open none, and there is no tool 6.
static_assert(DialogsOfTools.size() == controls::ToolButtonCount - 4);

/// Devices of which each has a preset of its own, with every code inside its range.
inline simulator::Rack RandomRack(const std::vector<int>& ids, int option_bits = PlainOptions) {
    simulator::Rack rack;
    unsigned seed = 1;
    for (const int id : ids) {
        Furnish(rack.Add(id, "Top             "), RandomPreset(seed++));
        rack.At(id).SetMemory(simulator::OptionBitsAddress, static_cast<simulator::Byte>(option_bits));
    }
    return rack;
}

/// Devices with the preset of the factory, nothing muted.
inline simulator::Rack FactoryRack(const std::vector<int>& ids) {
    simulator::PresetBody body = simulator::FactoryPreset();
    body[simulator::PresetMutesOffset] = 0;
    simulator::Rack rack;
    for (const int id : ids) {
        Furnish(rack.Add(id, "Top             "), body);
    }
    return rack;
}

/// A test of the program's windows before a virtual rack. It says in its own init() which windows stand open, and in
/// cleanup() takes down what it set up.
class RackTest : public QObject {
  protected:
    RackTest() { ui::ApplyTheme(*qApp); }

    /// The program in front of a rack, with nothing open yet.
    void SetUp(simulator::Rack rack) {
        impatience_.emplace();
        desk_ = std::make_unique<RackDesk>(std::move(rack));
    }
    void Connect(simulator::Rack rack) {
        SetUp(std::move(rack));
        desk_->Connect();
    }
    /// With the window of every device open in the slot of its row; false when one does not open.
    bool ConnectAndOpenAll(simulator::Rack rack, std::optional<int> tab = {}) {
        const int devices = static_cast<int>(rack.Ids().size());
        Connect(std::move(rack));
        return OpenAll(devices, tab);
    }
    bool OpenAll(int devices, std::optional<int> tab = {}) {
        for (int slot = 0; slot < devices; ++slot) {
            if (!desk_->Open(slot, slot)) {
                return false;
            }
            if (tab) {
                desk_->ShowTab(*tab, slot);
            }
        }
        return true;
    }
    /// The first window in front, nothing said on the line yet, an eye on the second.
    void StandReady() {
        desk_->BringForward(0);
        desk_->TakeFrames();
        WatchOther();
    }
    /// The main window becomes the active one, so that keys go where they would.
    bool TakeKeyboard() {
        QWidget* const main = desk_->Window()->window();
        main->activateWindow();
        // QTest's wait for an active window is over while a window over the main one is active.
        return driver::WaitUntil([main] { return QApplication::activeWindow() == main; });
    }
    void TakeDown() {
        other_.reset();
        desk_.reset();
        impatience_.reset();
    }

    /// From now on nothing is to happen to the second device.
    void WatchOther() { other_ = std::make_unique<Witness>(*desk_, OtherId, 1); }
    /// The port goes away; gives the file that it was. What the other holds cannot be asked any more; what is shown and
    /// stored can.
    QString Unplug() {
        QString device = QString::fromStdString(desk_->Line().DevicePath());
        desk_->Unplug();
        WatchOther();
        return device;
    }

    int Current() { return desk_->Logic().Windows.CurrentWindow; }
    testing::Body Body(int id = Id) { return desk_->Image(id).PresetBody; }
    /// What the lists of the outputs' sources show.
    std::array<int, 6> Sources() {
        std::array<int, 6> sources{};
        for (std::size_t output = 0; output < sources.size(); ++output) {
            sources[output] = desk_->Form().Combo3[output].Index();
        }
        return sources;
    }

    std::filesystem::path PresetFolder() const { return desk_->Folder().Path() / "preset"; }
    void WritePresetFile(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        std::filesystem::create_directory(PresetFolder());
        desk_->Folder().Write("preset/" + name, bytes);
    }
    /// Answers the file dialog of a tool with a name that is typed; false when it did not show.
    bool ChooseFile(int tool, const QString& name) {
        return desk_->WithTool(tool, "FileDialog", [&](QWidget& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>();
            edit->setText(name);
            driver::Press(edit, Qt::Key_Return);
        });
    }
    bool LoadFile(const QString& name) { return ChooseFile(controls::LoadPresetTool, name); }

    std::optional<Impatience> impatience_;
    std::unique_ptr<RackDesk> desk_;
    std::unique_ptr<Witness> other_;
};

} // namespace nrv::test
