#pragma once

#include "controls/containers.h"

namespace nrv::controls {

/// Shows a busy pointer over a window for the length of an operation.
class BusyPointer {
  public:
    explicit BusyPointer(Form& form, Pointer pointer = Pointer::Hourglass) : form_(form) {
        form_.SetMousePointer(pointer);
    }
    ~BusyPointer() { form_.SetMousePointer(Pointer::Default); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    Form& form_;
};

} // namespace nrv::controls
