#include "ui/windows/held_key.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <utility>

namespace nrv::ui {

HeldKey::HeldKey(int key) : key_(key) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HeldKey::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::ShortcutOverride;
    if (press || event->type() == QEvent::KeyRelease) {
        const auto& key = *static_cast<const QKeyEvent*>(event);
        if (key.key() == key_ && !key.isAutoRepeat() && watched->isWidgetType()) {
            if (press) {
                pressed_ = key.timestamp();
            } else if (std::exchange(armed_, false) && key.timestamp() - pressed_ > ShortestHold && LetGo) {
                LetGo();
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace nrv::ui
