#include "ui/windows/mdi_child.h"

#include "controls/control.h"

#include <QCloseEvent>

namespace nrv::ui {

void MdiChild::closeEvent(QCloseEvent* event) {
    // Not the base's way, which would close and drop the content first.
    event->setAccepted(MayClose && MayClose());
}

void MdiChild::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    if (!isMinimized() && !isShaded()) {
        controls::Run(Resized);
    }
}

} // namespace nrv::ui
