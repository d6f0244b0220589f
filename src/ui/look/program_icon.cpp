#include "ui/look/program_icon.h"

#include "ui/look/picture.h"

namespace nrv::ui {

QIcon ProgramIcon() {
    return PictureIcon(QStringLiteral("nrv718"), [](QIcon::Mode) { return QColor(); });
}

} // namespace nrv::ui
