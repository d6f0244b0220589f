#pragma once

#include <QColor>
#include <QWidget>

namespace nrv::ui {

/// A stroke of a drawing that can be shown and hidden; it lets the mouse through, and tells the drawing to paint anew.
class Wire : public QWidget {
    Q_OBJECT
  public:
    enum class Shape {
        Branch,  ///< from a dot at the left to the right, along the middle
        Falling, ///< from the top left to the bottom right
        Rising   ///< from the bottom left to the top right
    };
    Wire(QWidget* parent, Shape shape, const QColor& colour);

    static constexpr int BranchHeight = 10;            ///< pixels
    static constexpr int DotCentre = BranchHeight / 2; ///< pixels from the left edge to the middle of the dot

  protected:
    void paintEvent(QPaintEvent*) override;
    bool event(QEvent* event) override;

  private:
    Shape shape_;
    QColor colour_;
};

} // namespace nrv::ui
