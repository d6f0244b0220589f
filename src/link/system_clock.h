#pragma once

#include "ports/clock.h"

namespace nrv::link {

/// The computer's clock, cut to whole seconds.
class SystemClock final : public Clock {
  public:
    double Now() override;
};

} // namespace nrv::link
