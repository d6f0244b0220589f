#pragma once

#include <QWidget>

namespace nrv::ui {

/// A small picture beside a channel: a socket for an input, a loudspeaker for an output.
class ChannelPicture : public QWidget {
    Q_OBJECT
  public:
    enum class Kind { Socket, Loudspeaker };
    ChannelPicture(QWidget* parent, Kind kind);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    Kind kind_;
};

} // namespace nrv::ui
