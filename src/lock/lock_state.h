#pragma once

#include "controls/dialog_forms.h"
#include "model/command_context.h"

namespace nrv::lock {

/// Disables or enables what may change a device, by its lock. The limiters of Out 5 and Out 6, the way to the password
/// and the way to unconnect stay open.
void ApplyLockState(const model::CommandContext& context, controls::FrmEditLabel& names);

/// The names dialog's part of it alone: the one dialog serves the windows of all devices, locked or not.
void ApplyLockToNames(const model::CommandContext& context, controls::FrmEditLabel& names);

} // namespace nrv::lock
