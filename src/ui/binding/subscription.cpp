#include "ui/binding/subscription.h"

namespace nrv::ui {

Subscription::Subscription(QObject& owner, controls::Control& control, controls::Control::Observer observer)
    : QObject(&owner), control_(control), number_(control.Observe(std::move(observer))) {}

Subscription::~Subscription() {
    control_.EndObservation(number_);
}

void Subscribe(QObject& owner, controls::Control& control, controls::Control::Observer observer) {
    new Subscription(owner, control, std::move(observer));
}

void EndSubscriptions(QObject& window) {
    qDeleteAll(window.findChildren<Subscription*>());
}

} // namespace nrv::ui
