#include "ui/widgets/list_box.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>

namespace nrv::ui {

ListBox::ListBox(QWidget* parent) : QComboBox(parent), Spoken(QAccessible::ComboBox) {
    InWords = [this] { return currentText(); };
    setFocusPolicy(Qt::StrongFocus);
    constexpr int longest = 11; // the slopes, without scrolling
    setMaxVisibleItems(longest);
    // Its place is fixed: measuring the entries at every change would be work for nothing.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void ListBox::showPopup() {
    constexpr int margins = 24;
    view()->setMinimumWidth(std::max(width(), view()->sizeHintForColumn(0) + margins));
    QComboBox::showPopup();
}

void ListBox::TakeSpoken(int number) {
    if (number >= 0 && number < count()) {
        setCurrentIndex(number);
        emit activated(number);
    }
}

bool ListBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        // The closed list tells of the entry that it shows, or of what it cannot show.
        const QString held = HeldOutside ? HeldOutside() : QString();
        const QString tip = !held.isEmpty() ? held : currentData(Qt::ToolTipRole).toString();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip.isEmpty() ? toolTip() : tip, this);
        return true;
    }
    return QComboBox::event(event);
}

void ListBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

} // namespace nrv::ui
