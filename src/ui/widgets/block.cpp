#include "ui/widgets/block.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace nrv::ui {

Block::Block(QWidget* parent, Kind kind, const QColor& colour) : QAbstractButton(parent), kind_(kind), colour_(colour) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setFont(kind == Kind::Channel ? StrongFont() : TextFont());
}

void Block::SetCaption(const QString& caption) {
    setText(caption);
    setShortcut(QKeySequence());
    update();
}

QString Block::Shown() const {
    return kind_ == Kind::Source ? toolTip() : text();
}

bool Block::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave || event->type() == QEvent::ToolTipChange) {
        update();
    }
    return QAbstractButton::event(event);
}

void Block::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

void Block::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    const bool shaded = kind_ == Kind::Socket || kind_ == Kind::Source;
    QColor fill = shaded ? theme.Unlit : theme.Dark ? theme.Window : theme.Field;
    if (isDown()) {
        fill = Mixed(fill, theme.Focus, 0.25);
    } else if (underMouse()) {
        fill = Mixed(fill, theme.Focus, 0.12);
    }
    const bool channel = kind_ == Kind::Channel;
    DrawBox(painter, rect(), fill, channel ? colour_ : theme.Line, 3.0);
    QRectF text_place = QRectF(rect()).adjusted(2.0, 0.0, -2.0, 0.0);
    if (channel) {
        QPainterPath outline;
        outline.addRoundedRect(rect(), 3.0, 3.0);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(QRect(0, 0, 4, height()));
        painter.fillPath(outline, colour_);
        painter.restore();
        text_place.adjust(3.0, 0.0, 0.0, 0.0);
    }
    painter.setPen(theme.Text);
    DrawFitted(painter, text_place, Qt::AlignCenter, Shown());
    if (hasFocus()) {
        DrawFocusFrame(painter, rect());
    }
}

} // namespace nrv::ui
