#include "ui/look/title_bar.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QVariant>
#include <QWidget>

namespace nrv::ui {
namespace {

constexpr double SignHalf = 4.0; ///< pixels from a sign's middle to its edge

void DrawSign(QPainter& painter, QStyle::SubControl button, QPointF at) {
    switch (button) {
    case QStyle::SC_TitleBarCloseButton:
        painter.drawLine(at + QPointF(-SignHalf, -SignHalf), at + QPointF(SignHalf, SignHalf));
        painter.drawLine(at + QPointF(-SignHalf, SignHalf), at + QPointF(SignHalf, -SignHalf));
        break;
    case QStyle::SC_TitleBarMaxButton:
        painter.drawRect(QRectF(at - QPointF(SignHalf, SignHalf), at + QPointF(SignHalf, SignHalf)));
        break;
    case QStyle::SC_TitleBarNormalButton:
        painter.drawRect(QRectF(at + QPointF(-SignHalf, -SignHalf + 2.0), at + QPointF(SignHalf - 2.0, SignHalf)));
        painter.drawLine(at + QPointF(-SignHalf + 2.0, -SignHalf), at + QPointF(SignHalf, -SignHalf));
        painter.drawLine(at + QPointF(SignHalf, -SignHalf), at + QPointF(SignHalf, SignHalf - 2.0));
        break;
    case QStyle::SC_TitleBarMinButton:
        painter.drawLine(at + QPointF(-SignHalf, SignHalf), at + QPointF(SignHalf, SignHalf));
        break;
    default:
        break;
    }
}

void DrawButton(QPainter& painter, const QStyleOptionTitleBar& option, const QStyle& style, const QWidget* widget,
                QStyle::SubControl button) {
    const QRect place = style.subControlRect(QStyle::CC_TitleBar, &option, button, widget);
    if (!place.isValid() || (option.subControls & button) == 0) {
        return;
    }
    const Theme& theme = CurrentTheme();
    const bool under_pointer =
        (option.activeSubControls & button) != 0 && option.state.testFlag(QStyle::State_MouseOver);
    const bool pressed = (option.activeSubControls & button) != 0 && option.state.testFlag(QStyle::State_Sunken);
    if (under_pointer || pressed) {
        DrawBox(painter, place, pressed ? theme.Unlit : theme.Field, theme.Line, 3.0);
    }
    painter.setPen(QPen((option.titleBarState & Qt::WindowActive) != 0 ? theme.Text : theme.Dim, 1.2));
    DrawSign(painter, button, QRectF(place).center());
}

/// Draws a word on a plate of its own at the right end of a title; gives the width that it takes.
int DrawMark(QPainter& painter, const QRect& label, const QString& mark) {
    const Theme& theme = CurrentTheme();
    constexpr int margin = 7;
    const int width = painter.fontMetrics().horizontalAdvance(mark) + 2 * margin;
    const QRect plate(label.right() - width - margin, label.top() + 4, width, label.height() - 9);
    DrawBox(painter, plate, theme.Text, theme.Text, 3.0);
    painter.setPen(theme.Panel);
    painter.drawText(plate, Qt::AlignCenter, mark);
    return width + 2 * margin;
}

bool Offers(const QStyleOptionTitleBar& option, Qt::WindowType hint) {
    return option.titleBarFlags.testFlag(hint);
}

} // namespace

void DrawTitleBar(QPainter& painter, const QStyleOptionTitleBar& option, const QStyle& style, const QWidget* widget) {
    const Theme& theme = CurrentTheme();
    const bool active = (option.titleBarState & Qt::WindowActive) != 0;
    painter.save();
    painter.fillRect(option.rect,
                     active ? Mixed(theme.Window, theme.Focus, 0.18) : Mixed(theme.Window, theme.Groove, 0.4));
    painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), theme.Line);
    painter.setRenderHint(QPainter::Antialiasing);

    const QRect icon = style.subControlRect(QStyle::CC_TitleBar, &option, QStyle::SC_TitleBarSysMenu, widget);
    if (!option.icon.isNull() && icon.isValid()) {
        constexpr int Side = 16;
        QRect place(0, 0, Side, Side);
        place.moveCenter(icon.center());
        option.icon.paint(&painter, place);
    }
    const QRect label = style.subControlRect(QStyle::CC_TitleBar, &option, QStyle::SC_TitleBarLabel, widget);
    painter.setFont(StrongFont());
    const QString mark = widget == nullptr ? QString() : widget->property(TitleMark).toString();
    const int mark_width = mark.isEmpty() ? 0 : DrawMark(painter, label, mark);
    painter.setPen(active ? theme.Text : theme.Dim);
    DrawFitted(painter, QRectF(label).adjusted(6, 0, -6 - mark_width, 0), Qt::AlignLeft | Qt::AlignVCenter,
               Printable(option.text));

    const bool minimised = (option.titleBarState & Qt::WindowMinimized) != 0;
    const bool maximised = (option.titleBarState & Qt::WindowMaximized) != 0;
    DrawButton(painter, option, style, widget, QStyle::SC_TitleBarCloseButton);
    if (Offers(option, Qt::WindowMaximizeButtonHint) && !maximised) {
        DrawButton(painter, option, style, widget, QStyle::SC_TitleBarMaxButton);
    }
    if (Offers(option, Qt::WindowMinimizeButtonHint) && !minimised) {
        DrawButton(painter, option, style, widget, QStyle::SC_TitleBarMinButton);
    }
    if (minimised || maximised) {
        DrawButton(painter, option, style, widget, QStyle::SC_TitleBarNormalButton);
    }
    painter.restore();
}

} // namespace nrv::ui
