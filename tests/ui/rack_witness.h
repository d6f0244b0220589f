#pragma once

#include "rack_desk.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QSlider>
#include <QTableWidget>
#include <QTimer>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace nrv::test {

/// All that is known of a device that nothing is to happen to, for a comparison before and after: what it holds, what
/// the program keeps of it, and what its window shows.
class Witness {
  public:
    Witness(RackDesk& desk, int id, int slot) : desk_(desk), id_(id), slot_(slot), before_(Now()) {}

    /// The first thing that is not as it was, empty when there is none.
    QString Difference() const {
        const Facts now = Now();
        for (std::size_t n = 0; n < std::max(before_.size(), now.size()); ++n) {
            if (n >= before_.size() || n >= now.size() || before_[n] != now[n]) {
                const auto& fact = n < now.size() ? now[n] : before_[n];
                return QStringLiteral("ID:%1 differs: %2").arg(id_).arg(QString::fromStdString(fact.first));
            }
        }
        return {};
    }

  private:
    using Facts = std::vector<std::pair<std::string, std::string>>;

    template <class Bytes>
    static std::string Raw(const Bytes& bytes, std::size_t size = sizeof(Bytes)) {
        return {reinterpret_cast<const char*>(&bytes), size};
    }

    Facts Now() const {
        Facts facts;
        AddDevice(facts);
        AddStores(facts);
        AddWindow(facts);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && qobject_cast<QDialog*>(window) != nullptr) {
                facts.emplace_back("open dialog", window->objectName().toStdString());
            }
        }
        // What the mouse is over comes to the top of its siblings, which changes nothing else.
        std::sort(facts.begin(), facts.end());
        return facts;
    }
    void AddDevice(Facts& facts) const {
        if (!desk_.PluggedIn()) {
            return;
        }
        std::string memory;
        for (std::size_t address = 0; address < simulator::MemorySize; ++address) {
            memory += static_cast<char>(desk_.Memory(id_, address));
        }
        facts.emplace_back("memory", memory);
        const simulator::PresetBody live = desk_.Live(id_);
        facts.emplace_back("live image", std::string(live.begin(), live.end()));
    }
    void AddStores(Facts& facts) const {
        const program::Program& logic = desk_.Logic();
        const auto row = static_cast<std::size_t>(id_);
        const model::ParamRow& values = logic.Stores.ParamValues[row];
        facts.emplace_back("PresetImage", Raw(logic.Stores.PresetImage[row]));
        facts.emplace_back("ParamValues", Raw(values, offsetof(model::ParamRow, PresetNames)));
        for (const std::string& name : values.PresetNames) {
            facts.emplace_back("preset name", name);
        }
        facts.emplace_back("active preset", values.CurrentPresetName);
        for (const std::string& name : logic.Stores.ChannelNames[row]) {
            facts.emplace_back("channel name", name);
        }
        facts.emplace_back("DeviceUnconnected", logic.State.DeviceUnconnected[row] ? "yes" : "no");
        const auto& slot = logic.Windows.WindowSlots[static_cast<std::size_t>(slot_)];
        facts.emplace_back("slot", std::to_string(slot.InUse ? 1 : 0) + " " + std::to_string(slot.DeviceId));
    }
    void AddWindow(Facts& facts) const {
        QMdiSubWindow* window = desk_.Window(slot_);
        facts.emplace_back("window", window != nullptr && window->isVisible() ? "shown" : "gone");
        if (window == nullptr) {
            return;
        }
        facts.emplace_back("title", window->windowTitle().toStdString());
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            const std::string name = widget->objectName().toStdString();
            if (!name.empty() && !name.starts_with("qt_") && name.find("DontDelete") == std::string::npos) {
                facts.emplace_back(name, Status(*widget));
            }
        }
    }
    static std::string Status(const QWidget& widget) {
        std::string status = widget.isEnabled() ? "enabled " : "disabled ";
        status += widget.isHidden() ? "hidden " : "shown ";
        if (const auto* slider = qobject_cast<const QSlider*>(&widget)) {
            status += std::to_string(slider->value());
        } else if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
            status += line->text().toStdString();
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            status += button->text().toStdString() + (button->isChecked() ? " checked" : "") +
                      (button->isDown() ? " down" : "");
        } else if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
            status += std::to_string(list->currentIndex());
        } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            status += label->text().toStdString();
        }
        return status;
    }

    RackDesk& desk_;
    int id_;
    int slot_;
    Facts before_;
};

/// Closes, unanswered, a modal dialog or box that has stood for some seconds, and fails the test for it: one whose box
/// never came, or one too many, ends in place of waiting for ever.
class Impatience {
  public:
    Impatience() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            std::map<QDialog*, int> stood;
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (auto* dialog = qobject_cast<QDialog*>(window);
                    dialog != nullptr && dialog->isModal() && dialog->isVisible()) {
                    stood[dialog] = looks_[dialog] + 1;
                }
            }
            looks_ = std::move(stood);
            for (const auto& [dialog, looks] : looks_) {
                if (looks >= patience) {
                    const QString said = QStringLiteral("%1 stood too long").arg(dialog->objectName());
                    QTest::qFail(qPrintable(said), __FILE__, __LINE__);
                    dialog->reject();
                    return; // the loop of another may be under it
                }
            }
        });
        timer_.start(interval);
    }

  private:
    static constexpr int interval = 100; ///< milliseconds from look to look
    static constexpr int patience = 60;  ///< looks: on a busy machine they are fewer, as is what else is done
    QTimer timer_;
    std::map<QDialog*, int> looks_; ///< how often each that stands was seen
};

/// The frames of those that went to a device.
inline std::vector<simulator::Frame> FramesTo(const std::vector<simulator::Frame>& frames, int id) {
    std::vector<simulator::Frame> of_it;
    std::copy_if(frames.begin(), frames.end(), std::back_inserter(of_it),
                 [id](const simulator::Frame& frame) { return frame[2] == id; });
    return of_it;
}

/// How often a frame goes out that is not answered.
inline constexpr std::size_t Transmissions = 5;

/// What goes out to a device that is there up to a frame, counted from 0, and then answers nothing more.
inline std::vector<simulator::Frame> UpToTheDeath(const std::vector<simulator::Frame>& whole, std::size_t answered) {
    std::vector<simulator::Frame> frames(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(answered));
    frames.insert(frames.end(), Transmissions, whole.at(answered));
    return frames;
}

inline QString RowText(int row) {
    return driver::FindAs<QTableWidget>(QStringLiteral("Devices"))->item(row, 0)->text();
}

/// Enough "OK" for every box that might come: how many did is what a test asks afterwards.
inline std::vector<QString> AnyNumberOfOk(std::vector<QString> first = {}) {
    first.insert(first.end(), 20, QStringLiteral("OK"));
    return first;
}

} // namespace nrv::test
