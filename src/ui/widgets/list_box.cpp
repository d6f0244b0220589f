#include "ui/widgets/list_box.h"

#include <QAbstractItemView>
#include <QWheelEvent>

#include <algorithm>

namespace nrv::ui {

ListBox::ListBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    // Its place is fixed: measuring the entries at every change would be work for nothing.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void ListBox::showPopup() {
    constexpr int margins = 24;
    view()->setMinimumWidth(std::max(width(), view()->sizeHintForColumn(0) + margins));
    QComboBox::showPopup();
}

void ListBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    }
    event->accept(); // what lies behind would scroll
}

} // namespace nrv::ui
