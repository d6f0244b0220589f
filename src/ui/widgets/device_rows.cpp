#include "ui/widgets/device_rows.h"

#include <QAccessible>
#include <QKeyEvent>

namespace nrv::ui {

DeviceRows::DeviceRows() {
    connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row, int) {
        if (Open) {
            Open(row);
        }
    });
}

void DeviceRows::keyPressEvent(QKeyEvent* event) {
    if ((event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) || currentRow() < 0) {
        QTableWidget::keyPressEvent(event);
    } else if (!event->isAutoRepeat() && Open) {
        Open(currentRow());
    }
}

// The table's own, passed over here, would tell a reader of cells and headers; it is told of rows.

void DeviceRows::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    if (current.isValid()) {
        QAccessibleEvent event(this, QAccessible::Focus);
        event.setChild(current.row());
        QAccessible::updateAccessibility(&event);
    }
}

void DeviceRows::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
}

} // namespace nrv::ui
