// Draws an icon in sizes: make_icons SVG PNG...; the folder above "apps" says the size, as in
// ".../48x48/apps/name.png".

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace {

bool Draw(QSvgRenderer& drawing, const QString& file) {
    QDir folder = QFileInfo(file).dir();
    folder.mkpath(QStringLiteral("."));
    folder.cdUp();
    const int side = folder.dirName().section(QLatin1Char('x'), 0, 0).toInt();
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    return painter.end() && image.save(file);
}

} // namespace

int main(int argc, char** argv) {
    QSvgRenderer drawing(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    if (!drawing.isValid()) {
        std::fputs("make_icons: the first argument is no drawing\n", stderr);
        return 1;
    }
    for (int i = 2; i < argc; ++i) {
        if (!Draw(drawing, QString::fromLocal8Bit(argv[i]))) {
            std::fprintf(stderr, "make_icons: %s cannot be written\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
