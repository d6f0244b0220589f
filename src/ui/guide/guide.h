#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;

namespace nrv::ui {

class GuideView;

/// The user guide in a window of its own. F1 opens it at the page of what has the keyboard, in every window.
class Guide : public QObject {
  public:
    /// Watches the application's keys from now on.
    Guide();

    /// Opens it, or turns the open one to the page of what has the keyboard.
    void Open();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void OpenFor(const QWidget* asked);

    QPointer<GuideView> window_;
};

} // namespace nrv::ui
