#include "ui/look/flat_style.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"
#include "ui/look/title_bar.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace nrv::ui {
namespace {

constexpr double BoxRadius = 3.0;
constexpr int IndicatorSize = 13;
constexpr int ComboArrowWidth = 15;

bool Has(const QStyleOption& option, QStyle::StateFlag state) {
    return option.state.testFlag(state);
}

void DrawButton(QPainter& painter, const QStyleOption& option) {
    const Theme& theme = CurrentTheme();
    QColor fill = theme.Dark ? theme.Panel : theme.Field;
    if (Has(option, QStyle::State_Sunken) || Has(option, QStyle::State_On)) {
        fill = theme.Unlit;
    } else if (Has(option, QStyle::State_MouseOver) && Has(option, QStyle::State_Enabled)) {
        fill = Mixed(fill, theme.Focus, 0.10);
    }
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool enter_presses_it = button != nullptr && Has(option, QStyle::State_Enabled) &&
                                  button->features.testFlag(QStyleOptionButton::DefaultButton);
    DrawBox(painter, option.rect, Has(option, QStyle::State_Enabled) ? fill : theme.Panel,
            enter_presses_it ? theme.Focus : theme.Line, BoxRadius);
    if (button != nullptr && Has(option, QStyle::State_HasFocus)) {
        DrawFocusFrame(painter, option.rect);
        DrawFocusFrame(painter, QRectF(option.rect).adjusted(1, 1, -1, -1), BoxRadius - 1.0);
    }
}

/// A tool button shows a box only under the pointer or the finger.
void DrawToolButton(QPainter& painter, const QStyleOption& option) {
    const bool lively = Has(option, QStyle::State_Enabled) &&
                        (Has(option, QStyle::State_MouseOver) || Has(option, QStyle::State_Sunken));
    if (lively || Has(option, QStyle::State_On)) {
        DrawButton(painter, option);
    }
}

void DrawField(QPainter& painter, const QStyleOption& option, bool typed) {
    const Theme& theme = CurrentTheme();
    const bool shaded = Has(option, QStyle::State_ReadOnly) || !Has(option, QStyle::State_Enabled);
    const QColor resting = typed ? theme.Typed : theme.Line;
    const QColor border = Has(option, QStyle::State_HasFocus) ? theme.Focus : resting;
    DrawBox(painter, option.rect, shaded ? Mixed(theme.Panel, theme.Unlit, 0.6) : theme.Field, border, BoxRadius);
    if (typed) {
        DrawBox(painter, option.rect.adjusted(1, 1, -1, -1), Qt::transparent, theme.Typed, BoxRadius - 1.0);
    }
}

QRectF IndicatorBox(const QStyleOption& option) {
    QRectF box(0, 0, IndicatorSize, IndicatorSize);
    box.moveCenter(QRectF(option.rect).center());
    return {box.toRect()};
}

QColor MarkColour(const QStyleOption& option) {
    return Has(option, QStyle::State_Enabled) ? CurrentTheme().Text : CurrentTheme().Disabled;
}

void DrawCheckIndicator(QPainter& painter, const QStyleOption& option) {
    const Theme& theme = CurrentTheme();
    const QRectF box = IndicatorBox(option).adjusted(1, 1, -1, -1);
    DrawBox(painter, box, theme.Field, Has(option, QStyle::State_MouseOver) ? theme.Dim : theme.Groove, 2.0);
    if (Has(option, QStyle::State_On)) {
        QPainterPath tick(box.topLeft() + QPointF(2.5, 5.5));
        tick.lineTo(box.topLeft() + QPointF(4.7, 7.9));
        tick.lineTo(box.topLeft() + QPointF(8.7, 3.1));
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(MarkColour(option), 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(tick);
        painter.restore();
    }
}

void DrawOptionIndicator(QPainter& painter, const QStyleOption& option) {
    const Theme& theme = CurrentTheme();
    const QRectF box = IndicatorBox(option).adjusted(1, 1, -1, -1);
    DrawBox(painter, box, theme.Field, Has(option, QStyle::State_MouseOver) ? theme.Dim : theme.Groove, 5.0);
    if (Has(option, QStyle::State_On)) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(MarkColour(option));
        painter.drawEllipse(box.center(), 2.7, 2.7);
        painter.restore();
    }
}

void DrawComboBox(QPainter& painter, const QStyleOptionComboBox& option) {
    const Theme& theme = CurrentTheme();
    const bool enabled = Has(option, QStyle::State_Enabled);
    const QColor fill = enabled ? theme.Field : Mixed(theme.Panel, theme.Unlit, 0.6);
    DrawBox(painter, option.rect, fill, Has(option, QStyle::State_HasFocus) ? theme.Focus : theme.Line, BoxRadius);
    const QPointF centre(option.rect.right() - 7.5, option.rect.center().y() + 0.5);
    QPainterPath arrow(centre + QPointF(-3.0, -1.5));
    arrow.lineTo(centre + QPointF(0.0, 1.5));
    arrow.lineTo(centre + QPointF(3.0, -1.5));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(enabled ? theme.Dim : theme.Disabled, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(arrow);
    painter.restore();
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        DrawButton(*painter, *option);
        break;
    case PE_FrameDefaultButton:
        break;
    case PE_PanelButtonTool:
        DrawToolButton(*painter, *option);
        break;
    case PE_PanelLineEdit:
        DrawField(*painter, *option, widget != nullptr && widget->property(TypedProperty).toBool());
        break;
    case PE_FrameLineEdit:
        break;
    case PE_IndicatorCheckBox:
        DrawCheckIndicator(*painter, *option);
        break;
    case PE_IndicatorRadioButton:
        DrawOptionIndicator(*painter, *option);
        break;
    case PE_FrameFocusRect:
        DrawFocusFrame(*painter, option->rect);
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ComboBox && combo != nullptr) {
        DrawComboBox(*painter, *combo);
    } else if (const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
               control == CC_TitleBar && bar != nullptr) {
        DrawTitleBar(*painter, *bar, *proxy(), widget);
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

void FlatStyle::drawItemText(QPainter* painter, const QRect& place, int alignment, const QPalette& palette,
                             bool enabled, const QString& text, QPalette::ColorRole role) const {
    const QString shown = Centred(alignment, Printable(text));
    constexpr int reads_mnemonics = Qt::TextShowMnemonic | Qt::TextHideMnemonic;
    const bool mnemonics = (alignment & reads_mnemonics) != 0 && shown.contains(u'&');
    const bool one_line = (alignment & Qt::TextWordWrap) == 0 && !mnemonics && !place.isEmpty();
    if (!one_line || painter->fontMetrics().horizontalAdvance(shown) <= place.width()) {
        QProxyStyle::drawItemText(painter, place, alignment | Qt::TextDontClip, palette, enabled, shown, role);
        return;
    }
    painter->save();
    if (role != QPalette::NoRole) {
        painter->setPen(palette.color(enabled ? QPalette::Active : QPalette::Disabled, role));
    }
    DrawFitted(*painter, place, alignment & (int{Qt::AlignHorizontal_Mask} | int{Qt::AlignVertical_Mask}), shown);
    painter->restore();
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_ComboBox) {
        const QRect& whole = option->rect;
        switch (part) {
        case SC_ComboBoxEditField:
            return whole.adjusted(2, 1, -ComboArrowWidth, -1);
        case SC_ComboBoxArrow:
            return {whole.right() - ComboArrowWidth + 1, whole.top(), ComboArrowWidth, whole.height()};
        default:
            break;
        }
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return IndicatorSize;
    case PM_TitleBarHeight:
        return TitleBarHeight;
    case PM_MdiSubWindowFrameWidth:
        return 0;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 4;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ButtonDefaultIndicator:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_ComboBox_Popup:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

} // namespace nrv::ui
