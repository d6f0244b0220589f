#include "ui/application.h"

#include "ui/accessible/spoken.h"
#include "ui/control_window/control_window_view.h"
#include "ui/tool_dialogs/tool_dialogs.h"

#include <QCoreApplication>

#include <clocale>

namespace nrv::ui {

Application::Application(const std::filesystem::path& folder) : Application(folder, Substitutes{}) {}

Application::Application(const std::filesystem::path& folder, const Substitutes& substitutes)
    : folder_(folder), names_(QString::fromStdString(folder.string())), port_(names_), own_process_(port_),
      boxes_(substitutes.Boxes != nullptr ? *substitutes.Boxes : own_boxes_),
      process_(substitutes.Run != nullptr ? *substitutes.Run : own_process_),
      clock_(substitutes.WallClock != nullptr ? *substitutes.WallClock : own_clock_),
      host_({forms_.Splash, forms_.Main, forms_.Select, forms_.List, forms_.Windows}, boundary_,
            [this](int slot, QWidget* parent) {
                return new ControlWindowView(*forms_.Windows.ControlWindows[static_cast<std::size_t>(slot)],
                                             {boundary_, {controls::EventSource::Kind::Device, slot}}, parent);
            }),
      program_({port_, clock_, process_, boxes_, substitutes.Files != nullptr ? *substitutes.Files : own_files_, host_,
                boundary_},
               forms_) {
    InstallSpoken();
    // The system's reasons stand within sentences of ours, which are English and of single bytes.
    std::setlocale(LC_MESSAGES, "C");
    host_.SetEvents(Events());
    host_.SetGuide([this] { guide_.Open(); });
    host_.SetFolder(QString::fromStdString(folder.string()));
    host_.SetToolDialogs([this](ToolDialog dialog, QWidget* parent) {
        return MakeToolDialog(dialog, forms_, {boundary_, controls::EventSource::Kind::Dialog}, parent);
    });
    port_.WentAway = [this](const std::string& what) {
        boundary_.RunWhenOver([this, what] { program_.TellPortWentAway(what); });
    };
    program_.History.Gesture = [this] { return gestures_.Serial(); };
    WatchOperations();
    forms_.Select.ComSelect.Looked = [this] {
        const ComPortEntries entries = names_.Entries();
        forms_.Select.ComSelect.SetItemToolTips(entries.ToolTips);
        forms_.Select.ComSelect.SetDimItems(entries.Missing);
    };
}

void Application::Start() {
    boundary_.Run({controls::EventSource::Kind::Program}, [this] { program_.StartUp.LoadSplash(folder_); });
    host_.ShowSplash();
}

void Application::WatchOperations() {
    Operation::Hooks& watch = boundary_.Current().Watch;
    watch.Began = [this] { gate_.Began(); };
    watch.LoopBegins = [this] { gate_.LoopBegins(); };
    watch.LoopEnds = [this] { gate_.LoopEnds(); };
    watch.Ending = [this] { gate_.Ending(); };
}

WindowEvents Application::Events() {
    WindowEvents events;
    events.QueryUnload = [this](int slot) { return program_.Control.QueryUnload(slot); };
    events.Activated = [this](int slot) { program_.Control.Activate(slot); };
    events.FrontChanged = [this](int slot) { program_.DeviceList.MarkFront(slot); };
    events.Resized = [this](int slot, int width, int height) { program_.Control.Resize(slot, width, height); };
    events.ListQueryUnload = [this] { program_.DeviceList.QueryUnload(); };
    events.ConnectionQueryUnload = [this] { return program_.Connection.QueryUnload(); };
    events.MainQueryUnload = [this] {
        const bool gone = program_.StartUp.MainQueryUnload();
        if (gone) {
            // Without its main window the program has nothing left to do.
            QCoreApplication::quit();
        }
        return gone;
    };
    return events;
}

} // namespace nrv::ui
