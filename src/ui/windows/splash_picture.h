#pragma once

class QPainter;
class QPalette;
class QRectF;

namespace nrv::ui {

/// Paints a processor's front panel under the response of a three-way crossover.
void PaintSplashPicture(QPainter& painter, const QRectF& area, const QPalette& palette);

} // namespace nrv::ui
