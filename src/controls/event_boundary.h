#pragma once

#include "controls/control.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/runtime_error.h"

namespace nrv::controls {

/// Where every event enters the logic: an error that no operation has a path for ends here as a message.
class EventBoundary {
  public:
    explicit EventBoundary(MessageBoxes& boxes) : boxes_(boxes) {}

    template <class Event>
    void Run(Event&& event) {
        try {
            event();
        } catch (const RuntimeError& error) {
            boxes_.Show({error.what(), "Error", BoxIcon::Critical});
        } catch (const EndOfProcess&) {
            // What comes after the end does not happen.
        }
    }

  private:
    MessageBoxes& boxes_;
};

} // namespace nrv::controls
