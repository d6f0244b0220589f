#include "ui/widgets/channel_picture.h"

#include "ui/look/picture.h"
#include "ui/look/theme.h"

#include <QPainter>

namespace nrv::ui {

ChannelPicture::ChannelPicture(QWidget* parent, Kind kind) : QWidget(parent), kind_(kind) {}

void ChannelPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawPicture(painter, rect(), kind_ == Kind::Socket ? QStringLiteral("socket") : QStringLiteral("loudspeaker"),
                CurrentTheme().Dim);
}

} // namespace nrv::ui
