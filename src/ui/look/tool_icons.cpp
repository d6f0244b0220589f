#include "ui/look/tool_icons.h"

#include "controls/frm_ctrl.h"
#include "ports/numbering.h"
#include "ui/look/painting.h"
#include "ui/look/picture.h"
#include "ui/look/theme.h"

#include <array>

namespace nrv::ui {

QString Padlock(bool shut) {
    return shut ? QStringLiteral("padlock-shut") : QStringLiteral("padlock-open");
}

QIcon ToolIcon(int tool, bool in_force) {
    constexpr std::array names = {"open-file", "save-file", "store", "read",       "",
                                  "unconnect", "",          "names", "copy-input", "copy-output"};
    static_assert(names.size() == controls::ToolButtonCount);
    const QString name = tool == controls::PasswordTool ? Padlock(in_force) : QLatin1String(names[At(tool)]);
    return PictureIcon(name, [](QIcon::Mode mode) {
        const Theme& theme = CurrentTheme();
        return mode == QIcon::Disabled ? Mixed(theme.Disabled, theme.Window, 0.5) : theme.Text;
    });
}

} // namespace nrv::ui
