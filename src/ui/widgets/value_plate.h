#pragma once

#include <QWidget>

namespace nrv::ui {

/// The small dark plate that a point in hand carries, with its values.
class ValuePlate : public QWidget {
    Q_OBJECT
  public:
    /// A sibling of the graph that it never leaves. Hidden at first; lets the mouse through.
    explicit ValuePlate(const QWidget& graph);

    /// Shows the text beside a place of the parent, above it where there is room.
    void ShowAt(QPoint place, const QString& text);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    const QWidget& graph_;
    QString text_;
};

} // namespace nrv::ui
