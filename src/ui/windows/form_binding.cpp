#include "ui/windows/form_binding.h"

#include "ui/binding/subscription.h"
#include "ui/binding/text.h"
#include "ui/look/painting.h"
#include "ui/look/title_bar.h"

#include <QMdiSubWindow>
#include <QWidget>

namespace nrv::ui {

using controls::Aspect;

void ShowTitle(const controls::Form& form, QWidget& window) {
    QString title = Printable(FromBytes(form.Caption()));
    // A maximised window has no title bar of its own that could show the mark.
    if (qobject_cast<QMdiSubWindow*>(&window) != nullptr && window.isMaximized() && !form.Mark().empty()) {
        title += QStringLiteral(" - ") + FromBytes(form.Mark());
    }
    window.setWindowTitle(title);
}

void BindForm(controls::Form& form, QWidget& window, QWidget& area, const std::function<void()>& place) {
    const auto title = [&form, &window] { ShowTitle(form, window); };
    const auto pointer = [&form, &area] {
        switch (form.MousePointer()) {
        case controls::Pointer::ArrowAndHourglass:
            area.setCursor(Qt::BusyCursor);
            break;
        case controls::Pointer::Hourglass:
            area.setCursor(Qt::WaitCursor);
            break;
        case controls::Pointer::Default:
            area.unsetCursor();
            break;
        }
    };
    const auto mark = [&form, &window] {
        window.setProperty(TitleMark, FromBytes(form.Mark()));
        window.update();
        ShowTitle(form, window);
    };
    title();
    pointer();
    mark();
    Subscribe(window, form, [=, &window](Aspect aspect) {
        switch (aspect) {
        case Aspect::Caption:
            title();
            break;
        case Aspect::Text:
            mark();
            break;
        case Aspect::Value:
            pointer();
            break;
        case Aspect::Place:
            controls::Run(place);
            break;
        case Aspect::Repaint:
            window.repaint();
            break;
        default:
            break;
        }
    });
}

} // namespace nrv::ui
