#include "ui/windows/full_text_label.h"

#include "ui/look/painting.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace nrv::ui {

bool FullTextLabel::Fits() const {
    return fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
}

QSize FullTextLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void FullTextLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                     fontMetrics().elidedText(Printable(text()), Qt::ElideRight, contentsRect().width()));
}

bool FullTextLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    if (Fits()) {
        QToolTip::hideText();
    } else {
        // Broken into lines by the tool tip itself.
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           QStringLiteral("<p>%1</p>").arg(text().toHtmlEscaped()), this);
    }
    return true;
}

} // namespace nrv::ui
