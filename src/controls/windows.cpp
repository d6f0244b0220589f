#include "controls/windows.h"

namespace nrv::controls {

Windows::Windows() {
    for (std::unique_ptr<FrmCtrl>& record : ControlWindows) {
        record = std::make_unique<FrmCtrl>();
    }
}

} // namespace nrv::controls
