#pragma once

#include <QObject>

#include <functional>

namespace nrv::ui {

/// A shortcut that also works for as long as its key is held: `LetGo` runs when a key that was armed is let go after
/// more than half a second. Times are those of the keyboard's own events: the program may stand still in between.
class HeldKey : public QObject {
  public:
    static constexpr quint64 ShortestHold = 500; ///< ms

    explicit HeldKey(int key);
    /// The press that came last has done its work.
    void Arm() { armed_ = true; }
    std::function<void()> LetGo;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    int key_;
    quint64 pressed_ = 0;
    bool armed_ = false;
};

} // namespace nrv::ui
