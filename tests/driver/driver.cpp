#include "driver/driver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

namespace nrv::driver {

QWidget* Find(const QString& name, QWidget* below) {
    if (below != nullptr) {
        return below->objectName() == name ? below : below->findChild<QWidget*>(name);
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (QWidget* found = Find(name, window)) {
            return found;
        }
    }
    return nullptr;
}

bool WaitUntil(const std::function<bool()>& holds, int milliseconds) {
    return QTest::qWaitFor(holds, milliseconds);
}

void Click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton);
}

void ClickMark(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, widget->height() / 2));
}

void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    widget->setFocus();
    QTest::keyClick(widget, key, modifiers);
}

void Choose(QComboBox* list, int entry) {
    list->setFocus();
    while (list->currentIndex() < entry) {
        const int before = list->currentIndex();
        QTest::keyClick(list, Qt::Key_Down);
        if (list->currentIndex() == before) {
            return;
        }
    }
    while (list->currentIndex() > entry) {
        const int before = list->currentIndex();
        QTest::keyClick(list, Qt::Key_Up);
        if (list->currentIndex() == before) {
            return;
        }
    }
}

void DoubleClickRow(QWidget* table, int row) {
    auto* view = qobject_cast<QAbstractItemView*>(table);
    if (view == nullptr) {
        return;
    }
    const QPoint place = view->visualRect(view->model()->index(row, 0)).center();
    // The first click of two is what makes the second a double one.
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void ShowTab(QWidget* tabs, int tab) {
    auto* bar = qobject_cast<QTabBar*>(tabs);
    if (bar == nullptr) {
        bar = tabs->findChild<QTabBar*>();
    }
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
}

WhenShown::WhenShown(const QString& name, std::function<void(QWidget&)> action) : timer_(new QTimer) {
    QObject::connect(timer_, &QTimer::timeout, timer_, [this, name, action = std::move(action)] {
        QWidget* window = Find(name);
        if (window != nullptr && window->isVisible()) {
            timer_->stop();
            done_ = true;
            action(*window);
        }
    });
    timer_->start(20);
}

WhenShown::~WhenShown() {
    delete timer_;
}

void Drag(QWidget* widget, const std::vector<QPoint>& parent_points, const std::function<void()>& before_release) {
    QTest::mousePress(widget, Qt::LeftButton);
    for (const QPoint& point : parent_points) {
        QTest::mouseMove(widget, widget->mapFromParent(point));
        QCoreApplication::processEvents();
    }
    if (before_release) {
        before_release();
    }
    const QPoint last = parent_points.empty() ? widget->rect().center() : widget->mapFromParent(parent_points.back());
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, last);
}

BoxAnswers::BoxAnswers(std::vector<QString> buttons) : timer_(new QTimer), buttons_(std::move(buttons)) {
    QObject::connect(timer_, &QTimer::timeout, timer_, [this] { Look(); });
    timer_->start(20);
}

BoxAnswers::~BoxAnswers() {
    delete timer_;
}

void BoxAnswers::Look() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible() || answered_ == buttons_.size()) {
        return;
    }
    const QString wanted = buttons_[answered_];
    const QList<QAbstractButton*> all = box->buttons();
    for (QAbstractButton* button : all) {
        if (button->text().remove(QLatin1Char('&')) == wanted) {
            ++answered_;
            seen_.push_back({box->windowTitle(), box->text()});
            if (OnBox) {
                OnBox(*box);
            }
            Click(button);
            return;
        }
    }
}

} // namespace nrv::driver
