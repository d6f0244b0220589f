#pragma once

#include "driver/driver.h"
#include "presets/load_trace.h"
#include "simulator/line.h"
#include "support/test_folder.h"
#include "ui/application.h"
#include "ui/platform/qt_process.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTest>

#include <array>
#include <chrono>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <memory>
#include <random>

namespace nrv::test {

/// Ends in thought alone, but lets events run and sleeps as the real one does.
class TestProcess final : public nrv::Process {
  public:
    explicit TestProcess(ui::QtProcess& real) : real_(real) {}
    void RunPendingEvents() override { real_.RunPendingEvents(); }
    void Sleep(int milliseconds) override { real_.Sleep(milliseconds); }
    [[noreturn]] void End() override {
        Ended = true;
        throw EndOfProcess{};
    }
    bool Ended = false;

  private:
    ui::QtProcess& real_;
};

/// The clock of whole seconds, which can be made to run faster so that a silent device costs a test little.
class TestClock final : public nrv::Clock {
  public:
    double Now() override {
        constexpr double seconds_per_day = 86400.0;
        return std::floor(Seconds()) / seconds_per_day;
    }
    void RunFaster(double times) {
        seconds_ = Seconds();
        since_ = std::chrono::steady_clock::now();
        speed_ = times;
    }

  private:
    double Seconds() const {
        return seconds_ + speed_ * std::chrono::duration<double>(std::chrono::steady_clock::now() - since_).count();
    }

    double seconds_ = 86400.0 * 46000;
    double speed_ = 1.0;
    std::chrono::steady_clock::time_point since_ = std::chrono::steady_clock::now();
};

/// A request of P1 and what follows it; what is not given is 0.
inline simulator::Frame Request(int id, std::initializer_list<int> payload) {
    simulator::Frame frame{0xF0, 0xC3, static_cast<simulator::Byte>(id)};
    std::size_t place = 3;
    for (const int byte : payload) {
        frame[place++] = static_cast<simulator::Byte>(byte);
    }
    frame[12] = 0xF7;
    return frame;
}

inline simulator::Frame WriteRequest(int id, int address, int value) {
    return Request(id, {0x11, address / 256, address % 256, 0, 0, value});
}

/// The first difference of two traces in words, empty when there is none.
inline QString Difference(const std::vector<simulator::Frame>& seen, const std::vector<simulator::Frame>& expected) {
    const auto hex = [](const std::vector<simulator::Frame>& frames, std::size_t n) {
        return n < frames.size()
                   ? QString::fromLatin1(
                         QByteArray(reinterpret_cast<const char*>(frames[n].data()), int(frames[n].size())).toHex(' '))
                   : QStringLiteral("nothing");
    };
    for (std::size_t n = 0; n < std::max(seen.size(), expected.size()); ++n) {
        if (n >= seen.size() || n >= expected.size() || seen[n] != expected[n]) {
            return QStringLiteral("frame %1 of %2: %3, expected of %4: %5")
                .arg(n)
                .arg(seen.size())
                .arg(hex(seen, n))
                .arg(expected.size())
                .arg(hex(expected, n));
        }
    }
    return {};
}

/// The first byte in which two images differ over what a device keeps, empty when there is none.
template <class Seen, class Expected>
QString ImageDifference(const Seen& seen, const Expected& expected) {
    for (std::size_t n = 0; n < simulator::PresetSize; ++n) {
        if (seen[n] != expected[n]) {
            return QStringLiteral("byte %1 is %2 and not %3").arg(n).arg(int(seen[n])).arg(int(expected[n]));
        }
    }
    return {};
}

/// The program's windows in front of a virtual rack on a serial line of its own.
class RackDesk {
  public:
    /// How fast the line answers.
    enum class Pace { AtOnce, OfTheWire };

    explicit RackDesk(simulator::Rack rack, Pace pace = Pace::AtOnce) {
        PlugIn(std::move(rack), pace);
        names_ = std::make_unique<ui::ComPortNames>(QString());
        spare_port_ = std::make_unique<ui::QtSerialPort>(*names_);
        real_process_ = std::make_unique<ui::QtProcess>(*spare_port_);
        process_ = std::make_unique<TestProcess>(*real_process_);
        application_ = std::make_unique<ui::Application>(
            folder_.Path(), ui::Application::Substitutes{.Run = process_.get(), .WallClock = &clock_});
    }

    /// Brings the program to where a search leaves it: the port open, every device of the rack in the list.
    void Connect() {
        program::Program& logic = Logic();
        logic.State.AppFolder = folder_.Path();
        logic.State.MultiDevice = true;
        logic.Link.ComIndex = 1;
        logic.Link.OpenPort();
        logic.Link.ReopenPort(link::FrameLength);
        for (const int id : line_->WithRack([](simulator::Rack& rack) { return rack.Ids(); })) {
            session::SpeakerRecord& record = logic.State.SpeakerRecords[static_cast<std::size_t>(id)];
            record.SetDeviceId(id);
            record.SetFound(true);
            logic.State.FoundDevices[static_cast<std::size_t>(++logic.State.FoundLast)] = id;
        }
        application_->Host().ShowMainWindow();
        logic.DeviceList.Load();
        application_->Host().ShowDeviceList();
        logic.List.Timer1.Tick(); // and not after its second
    }

    void PlugIn(simulator::Rack rack, Pace pace = Pace::AtOnce) {
        line_ = std::make_unique<simulator::Line>(
            std::move(rack), simulator::LineOptions{.Paced = pace == Pace::OfTheWire, .Trace = {}});
        line_->LinkAs(folder_.Path() / "com1");
        line_->Start();
    }
    /// The port goes away.
    void Unplug() { line_.reset(); }
    /// From now on a device answers nothing, and each wait for it takes a twentieth of a second.
    void LetDie(int id) {
        line_->Order(simulator::Fault::Die(id));
        clock_.RunFaster(200.0);
    }

    bool PluggedIn() const { return line_ != nullptr; }
    const std::string& Status() { return Logic().Status.Text(); }

    const testing::TestFolder& Folder() const { return folder_; }
    simulator::Line& Line() { return *line_; }
    TestProcess& Process() { return *process_; }
    TestClock& Clock() { return clock_; }
    ui::Application& Application() { return *application_; }
    program::Program& Logic() { return application_->Logic(); }
    controls::FrmCtrl& Form(int slot = 0) { return *Logic().Windows.ControlWindows[static_cast<std::size_t>(slot)]; }
    model::PresetImageRow& Image(int id) { return Logic().Stores.PresetImage[static_cast<std::size_t>(id)]; }
    simulator::PresetBody Live(int id) {
        return line_->WithRack([id](simulator::Rack& rack) { return rack.At(id).LiveImage(); });
    }
    simulator::Byte Memory(int id, std::size_t address) {
        return line_->WithRack([=](simulator::Rack& rack) { return rack.At(id).Memory(address); });
    }
    /// What came since the last call.
    std::vector<simulator::Frame> TakeFrames() {
        std::vector<simulator::Frame> frames = line_->Frames();
        line_->ClearFrames();
        return frames;
    }

    QMdiSubWindow* Window(int slot = 0) {
        return driver::FindAs<QMdiSubWindow>(QStringLiteral("FrmCtrl(%1)").arg(slot));
    }
    bool IsOpen(int slot) { return Window(slot) != nullptr && Window(slot)->isVisible(); }
    void BringForward(int slot) { Window(slot)->mdiArea()->setActiveSubWindow(Window(slot)); }
    void DoubleClick(int row) { driver::DoubleClickRow(driver::Find(QStringLiteral("Devices")), row); }
    /// Opens the device of a row by a double click. Its meters rest until they are asked for.
    bool Open(int row, int slot = 0) {
        DoubleClick(row);
        const bool open = driver::WaitUntil([&] { return IsOpen(slot); });
        if (open) {
            Form(slot).Timer1.Stop();
            line_->ClearFrames();
        }
        return open;
    }
    QWidget* Control(const char* name, int index = controls::NoIndex, int slot = 0) {
        const QString text = QLatin1String(name);
        return driver::Find(index == controls::NoIndex ? text : QStringLiteral("%1(%2)").arg(text).arg(index),
                            Window(slot));
    }
    void ShowTab(int tab, int slot = 0) { driver::ShowTab(Control("SSTab1", controls::NoIndex, slot), tab); }

    /// Opens a dialog by its tool button, works it, and closes it if the work has not. False when it did not show.
    bool WithTool(int tool, const char* dialog, const std::function<void(QWidget&)>& action) {
        return WithDialog(Control("Command2", tool), dialog, action);
    }
    bool WithDialog(QWidget* opener, const char* dialog, const std::function<void(QWidget&)>& action) {
        const driver::WhenShown shown(QLatin1String(dialog), [&](QWidget& window) {
            const QPointer<QWidget> watched = &window;
            action(window);
            if (watched != nullptr && watched->isVisible()) {
                watched->close();
            }
        });
        driver::Click(opener);
        return shown.Done();
    }

  private:
    testing::TestFolder folder_;
    TestClock clock_;
    std::unique_ptr<simulator::Line> line_;
    std::unique_ptr<ui::ComPortNames> names_;
    std::unique_ptr<ui::QtSerialPort> spare_port_;
    std::unique_ptr<ui::QtProcess> real_process_;
    std::unique_ptr<TestProcess> process_;
    std::unique_ptr<ui::Application> application_;
};

/// Puts a text in place of the one in a box, by keys.
inline void Type(QWidget* box, const QString& text) {
    auto* edit = qobject_cast<QLineEdit*>(box);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text);
}

/// A widget of a dialog.
inline QWidget* In(QWidget& dialog, const char* name) {
    return driver::Find(QLatin1String(name), &dialog);
}

/// Any preset with every code inside its range.
inline simulator::PresetBody RandomPreset(unsigned seed) {
    std::mt19937 random(seed);
    const testing::Body body = testing::RandomPreset(random);
    simulator::PresetBody preset;
    std::copy_n(body.begin(), preset.size(), preset.begin());
    return preset;
}

/// A device whose live image and mute byte agree, as after a preset that was loaded.
inline void Furnish(simulator::Device& device, const simulator::PresetBody& body) {
    device.SetLiveImage(body);
    device.SetMemory(simulator::MuteBitsAddress, body[simulator::PresetMutesOffset]);
}

} // namespace nrv::test
