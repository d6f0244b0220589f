#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

namespace nrv::ui {

/// A text of arbitrary Latin-1 bytes with a middle dot in the place of each that cannot be seen.
QString Printable(const QString& text);

/// A text that stands in the middle of its place does so without the blanks around it; any other stays as it is.
QString Centred(int alignment, const QString& text);

/// Draws one line of text; one too long for its place is narrowed to fit, never cut off.
void DrawFitted(QPainter& painter, const QRectF& place, int alignment, const QString& text);

/// A filled box with a border of one pixel inside `place`.
void DrawBox(QPainter& painter, const QRectF& place, const QColor& fill, const QColor& border, double radius);

/// The mark of the control that has the keyboard, just inside `place`.
void DrawFocusFrame(QPainter& painter, const QRectF& place, double radius = 3.0);

QColor Mixed(const QColor& one, const QColor& other, double share_of_other);

/// Black or white, whichever can be read on `ground`.
QColor ReadableOn(const QColor& ground);

} // namespace nrv::ui
