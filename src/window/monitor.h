#pragma once

#include "model/command_context.h"
#include "session/session_state.h"

#include <array>
#include <cstdint>

namespace nrv::window {

/// Polls the level meters while the "Gains" tab is on top, and paints lamps and limit marks where something changed.
/// Every window's timer works on the current window.
class Monitor {
  public:
    Monitor(const model::CommandContext& context, const session::SessionState& state)
        : context_(context), state_(state) {}

    /// Starts a window's timer; the first poll paints every lamp.
    void Start(controls::FrmCtrl& form);

  private:
    /// By channel and device ID.
    template <class Value>
    using Table = std::array<std::array<Value, DeviceCount>, 9>;

    void Tick(controls::Timer& timer);
    void Poll(int id);
    void ShowMeter(int channel);

    model::CommandContext context_;
    const session::SessionState& state_;
    Table<double> meter_now_{};       ///< level last received, 0 to 6
    Table<double> meter_shown_{};     ///< level last painted
    Table<std::uint8_t> limit_now_{}; ///< 1 when the output's level is 5 or more
    Table<std::uint8_t> limit_shown_{};
};

} // namespace nrv::window
