#pragma once

#include "controls/control.h"

#include <vector>

namespace nrv::testing {

/// Stands in for a view: keeps what it was told.
struct Observed {
    explicit Observed(controls::Control& control) {
        control.Observe([this](controls::Aspect aspect) { Aspects.push_back(aspect); });
    }
    std::vector<controls::Aspect> Aspects;
};

} // namespace nrv::testing
