#include "ui/guide/guide.h"

#include "ui/guide/guide_page.h"
#include "ui/guide/guide_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>

namespace nrv::ui {
namespace {

constexpr QSize GuideSize(880, 720);

GuideView* MakeWindow(QWidget* owner) {
    auto* window = new GuideView(owner);
    window->setObjectName(QStringLiteral("Guide"));
    window->setWindowFlag(Qt::Window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(QStringLiteral("Guide"));
    window->setAccessibleName(QStringLiteral("Guide"));
    window->resize(GuideSize.boundedTo(window->screen()->availableSize() - QSize(40, 60)));
    window->Show(QUrl(QStringLiteral("qrc:/guide/user_guide.md")));
    return window;
}

} // namespace

Guide::Guide() {
    QCoreApplication::instance()->installEventFilter(this);
}

void Guide::Open() {
    OpenFor(QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : QApplication::activeWindow());
}

void Guide::OpenFor(const QWidget* asked) {
    if (window_ != nullptr && asked != nullptr && asked->window() == window_) {
        return; // who reads it keeps the page
    }
    const QString page = GuidePageOf(asked);
    // A dialog keeps the keyboard from every window but its own children, and takes them along when it goes.
    QWidget* owner = QApplication::activeModalWidget();
    if (owner == nullptr && asked != nullptr) {
        owner = asked->window();
    }
    if (window_ == nullptr || (owner != nullptr && window_->parentWidget() != owner)) {
        delete window_.data();
        window_ = MakeWindow(owner);
    }
    window_->show();
    window_->raise();
    window_->activateWindow();
    window_->TurnTo(GuideView::LinkName(page));
}

bool Guide::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
        return QObject::eventFilter(watched, event);
    }
    const auto* const widget = static_cast<const QWidget*>(watched);
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key == Qt::Key_F1) {
        OpenFor(widget);
        return true;
    }
    if (key == Qt::Key_Escape && window_ != nullptr && widget->window() == window_) {
        window_->close();
        return true;
    }
    return false;
}

} // namespace nrv::ui
