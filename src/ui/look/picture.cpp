#include "ui/look/picture.h"

#include <QFile>
#include <QIconEngine>
#include <QPaintDevice>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <utility>

namespace nrv::ui {
namespace {

/// `size` in pixels of a device. Drawn once; the toolkit keeps it.
QPixmap Drawn(const QString& name, const QSize& size, const QColor& ink) {
    const QString key =
        QStringLiteral("%1/%2x%3/%4").arg(name).arg(size.width()).arg(size.height()).arg(ink.rgba(), 8, 16);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    if (QFile file(QStringLiteral(":/pictures/%1.svg").arg(name)); file.open(QIODevice::ReadOnly)) {
        QSvgRenderer renderer(file.readAll().replace("currentColor", ink.name().toLatin1()));
        QPainter painter(&pixmap);
        renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    }
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

class PictureEngine : public QIconEngine {
  public:
    PictureEngine(QString name, std::function<QColor(QIcon::Mode)> ink)
        : name_(std::move(name)), ink_(std::move(ink)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        DrawPicture(*painter, place, name_, ink_(mode));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        return Drawn(name_, size, ink_(mode));
    }
    QIconEngine* clone() const override { return new PictureEngine(name_, ink_); }

  private:
    QString name_;
    std::function<QColor(QIcon::Mode)> ink_;
};

} // namespace

void DrawPicture(QPainter& painter, const QRectF& place, const QString& name, const QColor& ink) {
    const double ratio = painter.device()->devicePixelRatio();
    QPixmap pixmap = Drawn(name, (place.size() * ratio).toSize(), ink);
    pixmap.setDevicePixelRatio(ratio);
    painter.drawPixmap(place.topLeft(), pixmap);
}

QIcon PictureIcon(const QString& name, std::function<QColor(QIcon::Mode)> ink) {
    return QIcon(new PictureEngine(name, std::move(ink)));
}

} // namespace nrv::ui
