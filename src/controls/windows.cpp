#include "controls/windows.h"

namespace nrv::controls {

Windows::Windows() {
    for (std::unique_ptr<FrmCtrl>& record : ControlWindows) {
        record = std::make_unique<FrmCtrl>();
    }
}

int Windows::SlotOf(int device_id) const {
    for (const WindowSlot& slot : WindowSlots) {
        if (slot.InUse && slot.DeviceId == device_id && Loaded[At(slot.SlotIndex)]) {
            return slot.SlotIndex;
        }
    }
    return Operation::NoSlot;
}

} // namespace nrv::controls
