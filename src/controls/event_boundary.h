#pragma once

#include "controls/windows.h"
#include "ports/operation.h"
#include "ports/process.h"
#include "ports/runtime_error.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nrv::controls {

/// Where an event comes from.
struct EventSource {
    enum class Kind {
        Program, ///< the user, in a window that is no device's
        Device,  ///< the user, in the control window of a slot
        Hover,   ///< the mouse over a control window, no button down: passed over unless that window is the current one
        Dialog,  ///< the user, in a dialog that an operation opened
        Tick,    ///< a timer
        Meters,  ///< the timer of a control window
        Always,  ///< what an operation itself waits for: it is a part of none and runs at any time
    };
    Kind Of = Kind::Program;
    int Slot = Operation::NoSlot;
};

/// Where every event enters the logic, and the one place that says whether it may: one operation runs at a time, and
/// while it runs only the controls of its own dialogs and the meters beside them do. An error that no operation has a
/// path for ends here as a message.
class EventBoundary {
  public:
    explicit EventBoundary(Windows& windows) : windows_(windows) {}
    EventBoundary(const EventBoundary&) = delete;
    EventBoundary& operator=(const EventBoundary&) = delete;

    /// What the program does at the boundary; each may be empty.
    struct Actions {
        std::function<void()> UserBegins = {};                       ///< a user's operation begins
        std::function<void(int slot)> MakeCurrent = {};              ///< a user's event came in the window of a slot
        std::function<void(const std::string& text)> TellError = {}; ///< an error nobody has a path for
        std::function<void()> Ends = {};                             ///< an operation is about to end
    };
    void Set(Actions actions) { actions_ = std::move(actions); }

    Operation& Current() { return operation_; }

    /// Runs an event if it may run now; false when it was passed over.
    template <class Event>
    bool Run(const EventSource& source, Event&& event) {
        switch (Admit(source)) {
        case Entry::Refused:
            return false;
        case Entry::Beside:
            Catch(event);
            return true;
        case Entry::Part:
            operation_.BeginPart();
            Enclose(event, [this] { operation_.EndPart(); });
            return true;
        case Entry::Operation:
            break;
        }
        Begin(source);
        Enclose(event, [this] { End(); });
        return true;
    }
    /// Runs now, or when the operation that runs is over.
    void RunWhenOver(std::function<void()> event);

  private:
    enum class Entry { Refused, Beside, Part, Operation };

    Entry Admit(const EventSource& source) const;
    void Begin(const EventSource& source);
    void End();
    void Tell(const std::exception& error);
    /// However the event ends, so does what began with it.
    template <class Event, class Finish>
    void Enclose(Event&& event, Finish&& finish) {
        try {
            Catch(event);
        } catch (...) {
            finish();
            throw;
        }
        finish();
    }
    template <class Event>
    void Catch(Event&& event) {
        try {
            event();
        } catch (const EndOfProcess&) {
            // What comes after the end does not happen.
        } catch (const std::exception& error) {
            try {
                Tell(error);
            } catch (const EndOfProcess&) {
                // As above.
            }
        }
    }

    Windows& windows_;
    Actions actions_;
    Operation operation_;
    std::vector<std::function<void()>> when_over_;
};

/// The boundary as the widgets of one window know it.
class EventEntry {
  public:
    EventEntry(EventBoundary& boundary, const EventSource& source) : boundary_(&boundary), source_(source) {}
    EventEntry(EventBoundary& boundary, EventSource::Kind kind) : EventEntry(boundary, EventSource{kind}) {}

    /// False when the event was passed over: what shows it goes back to what holds.
    template <class Event>
    bool Run(Event&& event) const {
        return boundary_->Run(source_, std::forward<Event>(event));
    }
    /// Runs the event now or, when one runs, after that; it is an operation of its own either way.
    void RunWhenOver(std::function<void()> event) const {
        boundary_->RunWhenOver(
            [boundary = boundary_, source = source_, event = std::move(event)] { boundary->Run(source, event); });
    }
    /// The same boundary for events from elsewhere, such as a window's timer.
    EventEntry As(EventSource::Kind kind) const { return {*boundary_, EventSource{kind, source_.Slot}}; }

  private:
    EventBoundary* boundary_;
    EventSource source_;
};

} // namespace nrv::controls
