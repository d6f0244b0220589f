#include "ui/widgets/mute_button.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QEvent>
#include <QPainter>

namespace nrv::ui {

MuteButton::MuteButton(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("MUTE"));
}

bool MuteButton::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        update();
    }
    return QAbstractButton::event(event);
}

void MuteButton::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    const QColor ground = theme.Dark ? theme.Panel : theme.Field;
    QColor fill = isChecked() ? theme.Muted : ground;
    QColor ink = isChecked() ? QColor(Qt::white) : theme.Text;
    if (!isEnabled()) {
        fill = isChecked() ? Mixed(theme.Muted, theme.Panel, 0.5) : theme.Panel;
        ink = isChecked() ? theme.Text : theme.Disabled;
    } else if (isDown()) {
        fill = Mixed(fill, Qt::black, 0.12);
    } else if (underMouse()) {
        fill = Mixed(fill, isChecked() ? QColor(Qt::white) : theme.Focus, 0.10);
    }
    DrawBox(painter, rect(), fill, isChecked() ? Mixed(fill, Qt::black, 0.2) : theme.Line, 3.0);
    painter.setPen(ink);
    DrawFitted(painter, rect(), Qt::AlignCenter, QStringLiteral("MUTE"));
    if (hasFocus()) {
        DrawFocusFrame(painter, rect());
        if (isChecked()) { // on red a blue line alone is hardly seen
            DrawBox(painter, QRectF(rect()).adjusted(2.0, 2.0, -2.0, -2.0), Qt::transparent, Qt::white, 2.0);
        }
    }
}

} // namespace nrv::ui
