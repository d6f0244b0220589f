#include "ui/widgets/option_button.h"

#include <QKeyEvent>

namespace nrv::ui {

void OptionButton::ChooseBeside(int steps) {
    const auto group = parentWidget()->findChildren<OptionButton*>(QString(), Qt::FindDirectChildrenOnly);
    const qsizetype wanted = group.indexOf(this) + steps;
    if (wanted >= 0 && wanted < group.size() && group[wanted]->isEnabled()) {
        group[wanted]->setFocus(Qt::OtherFocusReason);
        group[wanted]->click();
    }
}

void OptionButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        ChooseBeside(-1);
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        ChooseBeside(1);
        break;
    default:
        QRadioButton::keyPressEvent(event);
    }
}

} // namespace nrv::ui
