#pragma once

#include "controls/control.h"

#include <QObject>

namespace nrv::ui {

/// The observation of a control, owned by what shows it and over when that goes.
class Subscription : public QObject {
    Q_OBJECT
  public:
    Subscription(QObject& owner, controls::Control& control, controls::Control::Observer observer);
    ~Subscription() override;

  private:
    controls::Control& control_;
    int number_;
};

/// Tells of the changes of a control for as long as the owner lives. The control outlives it.
void Subscribe(QObject& owner, controls::Control& control, controls::Control::Observer observer);
/// Ends what a window and all that lies in it subscribed to, for a window that goes later.
void EndSubscriptions(QObject& window);

} // namespace nrv::ui
