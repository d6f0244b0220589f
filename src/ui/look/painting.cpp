#include "ui/look/painting.h"

#include "ui/look/theme.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace nrv::ui {
namespace {

bool CannotBeSeen(QChar character) {
    const char16_t code = character.unicode();
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0xAD;
}

} // namespace

QString Printable(const QString& text) {
    if (std::none_of(text.begin(), text.end(), CannotBeSeen)) {
        return text;
    }
    QString shown = text;
    std::replace_if(shown.begin(), shown.end(), CannotBeSeen, QChar(0xB7));
    return shown;
}

QString Centred(int alignment, const QString& text) {
    return (alignment & Qt::AlignHCenter) != 0 ? text.trimmed() : text;
}

void DrawFitted(QPainter& painter, const QRectF& place, int alignment, const QString& text) {
    const QString shown = Centred(alignment, Printable(text));
    const double wanted = QFontMetricsF(painter.font()).horizontalAdvance(shown);
    if (wanted <= place.width() || place.width() <= 0.0) {
        painter.drawText(place, alignment | Qt::TextSingleLine | Qt::TextDontClip, shown);
        return;
    }
    painter.save();
    const double narrowing = place.width() / wanted;
    painter.translate(place.left(), 0.0);
    painter.scale(narrowing, 1.0);
    painter.drawText(QRectF(0.0, place.top(), wanted + 1.0, place.height()),
                     (alignment & Qt::AlignVertical_Mask) | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip,
                     shown);
    painter.restore();
}

void DrawBox(QPainter& painter, const QRectF& place, const QColor& fill, const QColor& border, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(border, 1.0));
    painter.setBrush(fill);
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void DrawFocusFrame(QPainter& painter, const QRectF& place, double radius) {
    DrawBox(painter, place, Qt::transparent, CurrentTheme().Focus, radius);
}

QColor Mixed(const QColor& one, const QColor& other, double share_of_other) {
    const double rest = 1.0 - share_of_other;
    return QColor::fromRgbF(static_cast<float>(one.redF() * rest + other.redF() * share_of_other),
                            static_cast<float>(one.greenF() * rest + other.greenF() * share_of_other),
                            static_cast<float>(one.blueF() * rest + other.blueF() * share_of_other));
}

QColor ReadableOn(const QColor& ground) {
    const double luminance = 0.2126 * ground.redF() + 0.7152 * ground.greenF() + 0.0722 * ground.blueF();
    return luminance > 0.5 ? QColor(0x1B, 0x20, 0x26) : QColor(Qt::white);
}

} // namespace nrv::ui
