#pragma once

#include "controls/event_boundary.h"
#include "controls/forms.h"

#include <QWidget>

namespace nrv::ui {

/// The window that stands while the program starts. The user cannot close it.
class SplashWindow : public QWidget {
  public:
    SplashWindow(controls::FrmSplash& record, const controls::EventEntry& entry);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};

} // namespace nrv::ui
