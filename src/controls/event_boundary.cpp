#include "controls/event_boundary.h"

namespace nrv::controls {

EventBoundary::Entry EventBoundary::Admit(const EventSource& source) const {
    using Kind = EventSource::Kind;
    if (source.Of == Kind::Always) {
        return Entry::Beside;
    }
    if ((source.Of == Kind::Device || source.Of == Kind::Hover) && !windows_.Loaded[At(source.Slot)]) {
        return Entry::Refused; // the window is gone, its widgets not yet
    }
    if (source.Of == Kind::Hover && source.Slot != windows_.CurrentWindow) {
        return Entry::Refused;
    }
    if (!operation_.Running()) {
        return Entry::Operation;
    }
    const bool beside_dialog = source.Of == Kind::Dialog || source.Of == Kind::Meters;
    return beside_dialog && operation_.DialogStands() ? Entry::Part : Entry::Refused;
}

void EventBoundary::Begin(const EventSource& source) {
    using Kind = EventSource::Kind;
    if (source.Of == Kind::Device && source.Slot != windows_.CurrentWindow && actions_.MakeCurrent) {
        actions_.MakeCurrent(source.Slot);
    }
    operation_.Begin({windows_.CurrentWindow, windows_.CurrentDevice()});
    if (source.Of != Kind::Tick && source.Of != Kind::Meters && actions_.UserBegins) {
        actions_.UserBegins();
    }
}

void EventBoundary::End() {
    if (actions_.Ends) {
        actions_.Ends();
    }
    operation_.End();
    for (const auto& event : std::exchange(when_over_, {})) {
        Catch(event);
    }
}

void EventBoundary::RunWhenOver(std::function<void()> event) {
    if (operation_.Running()) {
        when_over_.push_back(std::move(event));
    } else {
        Catch(event);
    }
}

void EventBoundary::Tell(const std::exception& error) {
    if (!actions_.TellError) {
        return;
    }
    const bool expected = dynamic_cast<const RuntimeError*>(&error) != nullptr;
    actions_.TellError(expected ? error.what()
                                : std::string("The program could not go on with this: ") + error.what() + ".");
}

} // namespace nrv::controls
