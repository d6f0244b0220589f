#pragma once

#include "ui/accessible/spoken.h"

#include <QLabel>

namespace nrv::ui {

/// A value that the program writes: plain text in the middle of its place, with a yellow ground when it is marked.
class ValueText : public QLabel, public Spoken {
    Q_OBJECT
  public:
    explicit ValueText(QWidget* parent);

    void ShowText(const QString& text) { setText(text); }
    bool Marked() const { return marked_; }
    void SetMarked(bool marked);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    bool marked_ = false;
};

} // namespace nrv::ui
