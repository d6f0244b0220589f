#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

#include <functional>

class QPainter;

namespace nrv::ui {

/// Draws a picture of `resources/pictures` in the pixels of the painter's device. `name` is its file's, without the
/// ending; what the file paints in "currentColor" gets the colour `ink`.
void DrawPicture(QPainter& painter, const QRectF& place, const QString& name, const QColor& ink);

/// A picture as an icon, drawn for every size and pixel ratio by itself; `ink` is asked whenever it is drawn.
QIcon PictureIcon(const QString& name, std::function<QColor(QIcon::Mode)> ink);

} // namespace nrv::ui
