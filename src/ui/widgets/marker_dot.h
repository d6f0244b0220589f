#pragma once

#include "controls/control.h"
#include "ui/accessible/spoken.h"

#include <QColor>
#include <QWidget>

namespace nrv::ui {

/// A numbered point on a graph: a disc of 13 pixels that can be dragged, or moved by keys when it has the keyboard,
/// which a press gives it. Its place is told in position units, 15 to a pixel.
class MarkerDot : public QWidget, public Spoken {
    Q_OBJECT
  public:
    /// `graph_origin` is the graph's top left corner in the parent.
    MarkerDot(QWidget* parent, const QColor& colour, QPoint graph_origin);

    static constexpr int Extent = 15; ///< pixels of the widget's side

    const QString& Number() const { return number_; }
    void SetNumber(const QString& number);
    /// The marker's corner in position units.
    void PlaceAt(double left, double top);
    /// A ring while the point or a control that belongs to it is attended to.
    void SetHighlighted(bool highlighted);
    bool InHand() const { return in_hand_; }

  signals:
    void Pressed();
    /// In position units from the marker's own corner.
    void Dragged(double x, double y);
    void Released();
    /// It was hidden or locked, or a box came over it, while in hand: no release comes.
    void TakenAway();
    void HoverChanged(bool hovered);
    /// Escape ended the drag.
    void GivenUp();
    void Stepped(controls::PointStep what, int steps);
    void FocusLeft();

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void SetInHand(bool in_hand);
    void TakeAway();
    bool StepBy(int key);

    QColor colour_;
    QPoint graph_origin_;
    QString number_;
    double left_ = 0.0;
    double top_ = 0.0;
    bool in_hand_ = false;
    bool moved_ = false;
    QPoint pressed_at_; ///< on the screen
    bool highlighted_ = false;
};

} // namespace nrv::ui
