#include "ui/widgets/list_box.h"

#include "ui/look/theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyleOption>
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
    emit Looked();
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
        emit Looked();
        // The closed list tells of the entry that it shows, or of what it cannot show.
        const QString held = HeldOutside ? HeldOutside() : QString();
        const QString tip = !held.isEmpty() ? held : currentData(Qt::ToolTipRole).toString();
        if (!tip.isEmpty()) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
            return true;
        }
    }
    return QComboBox::event(event);
}

void ListBox::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    const QString note = currentData(NoteRole).toString();
    if (note.isEmpty()) {
        return;
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    constexpr int gap = 4;
    const QRect place = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    QPainter painter(this);
    painter.setPen(isEnabled() ? CurrentTheme().Dim : CurrentTheme().Disabled);
    painter.drawText(place.adjusted(0, 0, -gap, 0), Qt::AlignRight | Qt::AlignVCenter, note);
}

void ListBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    }
    event->accept(); // what lies behind would scroll
}

} // namespace nrv::ui
