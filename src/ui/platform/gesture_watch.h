#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

namespace nrv::ui {

/// Tells which of the user's operations are one gesture: all from a mouse button's press to its release, and a run of
/// the same key, or of the wheel, on one widget in which no second goes by.
class GestureWatch : public QObject {
  public:
    static constexpr qint64 LongestPause = 1000; ///< ms

    /// Watches the application's events from now on.
    GestureWatch();

    /// The same number as before while the gesture goes on.
    long Serial();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Next() { ++serial_; }

    long serial_ = 0;
    bool held_ = false;   ///< a mouse button is down
    quint64 pressed_ = 0; ///< when it went down
    int key_ = 0;         ///< of the run, or 0
    QPointer<QObject> at_;
    QElapsedTimer since_; ///< the last operation
};

} // namespace nrv::ui
