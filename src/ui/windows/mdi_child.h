#pragma once

#include <QMdiSubWindow>

#include <functional>

namespace nrv::ui {

/// A window inside the main window that asks before it closes and never deletes itself.
class MdiChild : public QMdiSubWindow {
  public:
    using QMdiSubWindow::QMdiSubWindow;

    /// Whether the user may close the window; without it closing is refused.
    std::function<bool()> MayClose;
    /// The user or the code has given the window another size; not when it is minimised.
    std::function<void()> Resized;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace nrv::ui
