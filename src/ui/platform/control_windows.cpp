// The windows of devices inside the main window: how they come, stand and go, and which is in front.

#include "ports/flag_guard.h"
#include "ports/numbering.h"
#include "ui/binding/subscription.h"
#include "ui/control_window/control_window_view.h"
#include "ui/platform/cascade.h"
#include "ui/platform/qt_window_host.h"
#include "ui/windows/device_list_window.h"
#include "ui/windows/form_binding.h"
#include "ui/windows/main_window.h"
#include "ui/windows/mdi_child.h"

#include <QApplication>
#include <QMdiArea>

#include <algorithm>

namespace nrv::ui {
namespace {

using Kind = controls::EventSource::Kind;

constexpr QSize SmallestControlWindow(controls::FrmCtrl::WidthTwips / TwipsPerPixel,
                                      controls::FrmCtrl::HeightTwips / TwipsPerPixel);

} // namespace

void QtWindowHost::ShowControlWindow(int slot) {
    RemoveControlWindow(slot);
    // Before the new content takes over the record.
    delete leaving_[At(slot)].data();

    auto* window = new MdiChild;
    control_windows_[At(slot)] = window;
    window->setObjectName(QStringLiteral("FrmCtrl(%1)").arg(slot));
    QWidget* content = factory_(slot, window);
    window->setWidget(content);
    BindForm(records_.Control.ControlWindows[At(slot)]->Window, *window, *content, [this, slot] {
        const controls::Form& form = records_.Control.ControlWindows[At(slot)]->Window;
        if (MdiChild* const view = control_windows_[At(slot)]; view != nullptr && !view->isMinimized()) {
            view->resize(form.Width() / TwipsPerPixel, form.Height() / TwipsPerPixel);
        }
    });
    main_->Area().addSubWindow(window);
    window->setMinimumSize(SmallestControlWindow.expandedTo(window->minimumSizeHint()));
    window->resize(window->minimumSize());
    PlaceControlWindow(*window);
    window->MayClose = [this, slot] { return ControlWindowMayClose(slot); };
    window->Resized = [this, slot] { ControlWindowResized(slot); };
    QObject::connect(window, &QMdiSubWindow::windowStateChanged, main_.get(), [this, slot, window] {
        if (control_windows_[At(slot)] == window) {
            ShowTitle(records_.Control.ControlWindows[At(slot)]->Window, *window);
        }
        TellFront();
    });
    window->show();
    main_->Area().setActiveSubWindow(window);
    TellFront();
}

void QtWindowHost::FocusControlWindow(int slot) {
    if (MdiChild* const window = control_windows_[At(slot)]; window != nullptr) {
        if (window->isMinimized()) {
            window->showNormal();
        }
        main_->Area().setActiveSubWindow(window);
    }
}

void QtWindowHost::PlaceControlWindow(MdiChild& window) {
    const auto before = static_cast<int>(
        std::count_if(control_windows_.begin(), control_windows_.end(),
                      [&window](const QPointer<MdiChild>& other) { return other != nullptr && other != &window; }));
    const QSize room = (main_->Area().viewport()->size() - window.size()).expandedTo({0, 0});
    // Beside the list, or over it where there is no room for both.
    const bool list_stands = list_ != nullptr && !list_->isMinimized();
    window.move(CascadePlace(before, list_stands ? list_->geometry().right() + 1 : 0, room));
}

void QtWindowHost::RemoveControlWindow(int slot) {
    MdiChild* const window = control_windows_[At(slot)];
    if (window == nullptr) {
        return;
    }
    Detach(slot);
    control_windows_[At(slot)] = nullptr;
    delete leaving_[At(slot)].data();
    leaving_[At(slot)] = window;
    CloseDialogsOf(slot);
    {
        const FlagGuard removing(removing_);
        window->hide();
        main_->Area().removeSubWindow(window);
    }
    TellFront();
    // It may be inside an event of its own; it goes when that is over.
    if (!boundary_.Current().Running()) {
        OperationOver();
    }
}

/// Whatever stands over a window that goes belongs to its operation, and goes unanswered.
void QtWindowHost::CloseDialogsOf(int slot) {
    const auto& subject = boundary_.Current().Of();
    if (!subject || subject->Slot != slot) {
        return;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* dialog = qobject_cast<QDialog*>(window);
            dialog != nullptr && dialog->isModal() && dialog->isVisible()) {
            dialog->reject();
        }
    }
}

/// Nothing of an operation is on the stack but the widget that began it: the windows that went in it may die.
void QtWindowHost::OperationOver() {
    for (const QPointer<MdiChild>& window : leaving_) {
        if (window != nullptr) {
            window->deleteLater();
        }
    }
}

void QtWindowHost::Detach(int slot) {
    EndSubscriptions(*control_windows_[At(slot)]);
    if (auto* view = qobject_cast<ControlWindowView*>(control_windows_[At(slot)]->widget())) {
        view->Detach();
    }
}

int QtWindowHost::SlotOf(const QMdiSubWindow* window) const {
    const auto found = std::find(control_windows_.begin(), control_windows_.end(), window);
    const bool is_one = window != nullptr && found != control_windows_.end();
    return is_one ? static_cast<int>(found - control_windows_.begin()) : Operation::NoSlot;
}

void QtWindowHost::ControlWindowActivated(QMdiSubWindow* window) {
    const int slot = SlotOf(window);
    if (slot != Operation::NoSlot && events_.Activated && !removing_) {
        boundary_.RunWhenOver([this, slot] { events_.Activated(slot); });
    }
    TellFront();
}

void QtWindowHost::TellFront() {
    QList<QMdiSubWindow*> from_the_back = main_->Area().subWindowList(QMdiArea::StackingOrder);
    from_the_back.append(main_->Area().activeSubWindow()); // it may not be raised yet
    int front = Operation::NoSlot;
    for (const QMdiSubWindow* window : from_the_back) {
        const int slot = SlotOf(window);
        front = slot != Operation::NoSlot && window->isVisible() && !window->isMinimized() ? slot : front;
    }
    if (events_.FrontChanged) {
        events_.FrontChanged(front);
    }
}

void QtWindowHost::ControlWindowResized(int slot) {
    const MdiChild* const window = control_windows_[At(slot)];
    if (window != nullptr && events_.Resized) {
        boundary_.Run({Kind::Always}, [&] {
            events_.Resized(slot, window->width() * TwipsPerPixel, window->height() * TwipsPerPixel);
        });
    }
}

bool QtWindowHost::ControlWindowMayClose(int slot) {
    bool may_close = false;
    // The logic may have taken the window away itself by then.
    if (control_windows_[At(slot)] != nullptr) {
        boundary_.Run({Kind::Device, slot}, [&] { may_close = events_.QueryUnload(slot); });
    }
    if (may_close) {
        RemoveControlWindow(slot);
    }
    return may_close;
}

} // namespace nrv::ui
