#include "ui/accessible/rows.h"

#include "ui/widgets/device_rows.h"

#include <QAccessibleWidget>

#include <vector>

namespace nrv::ui {
namespace {

class RowInterface : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    RowInterface(DeviceRows& rows, int row) : rows_(rows), row_(row) {}

    bool isValid() const override { return row_ < rows_.rowCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&rows_); }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    QString text(QAccessible::Text kind) const override {
        const QTableWidgetItem* const item = rows_.item(row_, 0);
        return kind == QAccessible::Name && item != nullptr ? item->text() : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    QRect rect() const override {
        const QRect place = rows_.visualItemRect(rows_.item(row_, 0));
        return {rows_.viewport()->mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        state.disabled = !rows_.isEnabled();
        state.invisible = !rows_.isVisible();
        state.focusable = true;
        state.selectable = true;
        state.selected = rows_.currentRow() == row_;
        state.focused = state.selected && rows_.hasFocus();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (!isValid() || !rows_.isEnabled()) {
            return;
        }
        rows_.setFocus(Qt::OtherFocusReason);
        rows_.setCurrentCell(row_, 0);
        if (name == pressAction() && rows_.Open) {
            rows_.Open(row_);
        }
    }
    QStringList keyBindingsForAction(const QString& name) const override {
        return name == pressAction() ? QStringList(QStringLiteral("Enter")) : QStringList();
    }

  private:
    DeviceRows& rows_;
    int row_;
};

class RowsInterface : public QAccessibleWidget {
  public:
    explicit RowsInterface(DeviceRows& rows) : QAccessibleWidget(&rows, QAccessible::List), rows_(rows) {}
    ~RowsInterface() override {
        for (const QAccessible::Id id : ids_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
    RowsInterface(const RowsInterface&) = delete;
    RowsInterface& operator=(const RowsInterface&) = delete;

    QString text(QAccessible::Text kind) const override {
        const QTableWidgetItem* const caption = rows_.horizontalHeaderItem(0);
        return kind == QAccessible::Name && caption != nullptr ? caption->text() : QAccessibleWidget::text(kind);
    }
    int childCount() const override { return rows_.rowCount(); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= rows_.rowCount()) {
            return nullptr;
        }
        while (ids_.size() <= static_cast<std::size_t>(index)) {
            ids_.push_back(
                QAccessible::registerAccessibleInterface(new RowInterface(rows_, static_cast<int>(ids_.size()))));
        }
        return QAccessible::accessibleInterface(ids_[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (this->child(index) == child) {
                return index;
            }
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QTableWidgetItem* const item = rows_.itemAt(rows_.viewport()->mapFromGlobal(QPoint(x, y)));
        return item == nullptr ? nullptr : child(item->row());
    }
    QAccessibleInterface* focusChild() const override { return rows_.hasFocus() ? child(rows_.currentRow()) : nullptr; }

  private:
    DeviceRows& rows_;
    mutable std::vector<QAccessible::Id> ids_; ///< of the rows asked for so far
};

} // namespace

QAccessibleInterface* MakeSpokenRows(DeviceRows& rows) {
    return new RowsInterface(rows);
}

} // namespace nrv::ui
