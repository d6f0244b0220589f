#pragma once

#include "ui/accessible/spoken.h"

#include <QColor>
#include <QWidget>

namespace nrv::ui {

/// A square that is lit in a colour or not at all.
class Lamp : public QWidget, public Spoken {
    Q_OBJECT
  public:
    /// `unlit` is the colour of a lamp that is out; a mark of a channel is never dark.
    Lamp(QWidget* parent, const QColor& unlit, double radius);

    bool Lit() const { return lit_; }
    void Light(const QColor& colour);
    void Extinguish();

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    QColor unlit_;
    double radius_;
    QColor colour_;
    bool lit_ = false;
};

} // namespace nrv::ui
