#pragma once

#include <QTableWidget>

#include <functional>

namespace nrv::ui {

/// The rows of the device list. A double click, Enter, and a screen reader's default action on a row are the only ways
/// to act on it.
class DeviceRows : public QTableWidget {
    Q_OBJECT

  public:
    DeviceRows();
    std::function<void(int row)> Open;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
};

} // namespace nrv::ui
