#include "ui/guide/guide_page.h"

#include "controls/frm_ctrl.h"
#include "ports/numbering.h"

#include <QHash>
#include <QTabBar>

#include <array>

namespace nrv::ui {
namespace {

QString OfTab(int tab) {
    constexpr const char* input = "In A and In B";
    constexpr const char* output = "Out 1 to Out 6";
    constexpr std::array<const char*, controls::TabCount> pages = {input,  input,  output,  output,   output,    output,
                                                                   output, output, "Gains", "Delays", "Overview"};
    return QLatin1String(pages[At(tab)]);
}

/// By the number of the tool button.
QString OfTool(int tool) {
    constexpr std::array pages = {"Presets on the PC",      "Presets on the PC", "Presets in the device",
                                  "Presets in the device",  "Password",          "Unconnect device",
                                  "The tool buttons",       "Edit Names",        "Copy Input, Copy Output",
                                  "Copy Input, Copy Output"};
    static_assert(pages.size() == controls::ToolButtonCount);
    return QLatin1String(pages[At(tool)]);
}

QString OfName(const QString& name) {
    static const QHash<QString, const char*> pages = {
        {QStringLiteral("frmSplash"), "Finding devices"},
        {QStringLiteral("FrmSelect"), "The connection dialog"},
        {QStringLiteral("MDIFrmMain"), "The list of devices"},
        {QStringLiteral("FrmSearchNet"), "The list of devices"},
        {QStringLiteral("FrmCtrl"), "The window of a device"},
        {QStringLiteral("FileDialog"), "Presets on the PC"},
        {QStringLiteral("FrmStore"), "Presets in the device"},
        {QStringLiteral("FrmRead"), "Presets in the device"},
        {QStringLiteral("FrmPassword"), "Password"},
        {QStringLiteral("FrmEditLabel"), "Edit Names"},
        {QStringLiteral("FrmCopyIn"), "Copy Input, Copy Output"},
        {QStringLiteral("FrmCopyOut"), "Copy Input, Copy Output"},
        {QStringLiteral("MessageBox"), "Boxes"},
    };
    return QLatin1String(pages.value(name, ""));
}

} // namespace

QString GuidePageOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QString name = widget->objectName().section(u'(', 0, 0);
        const int index = widget->objectName().section(u'(', 1).section(u')', 0, 0).toInt();
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget); tabs != nullptr && tabs->currentIndex() >= 0) {
            return OfTab(tabs->currentIndex());
        }
        if (name == QStringLiteral("Page")) {
            return OfTab(index);
        }
        if (name == QStringLiteral("Command2")) {
            return OfTool(index);
        }
        if (QString page = OfName(name); !page.isEmpty()) {
            return page;
        }
    }
    return {};
}

} // namespace nrv::ui
