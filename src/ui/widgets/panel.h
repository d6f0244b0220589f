#pragma once

#include <QColor>
#include <QWidget>

namespace nrv::ui {

/// A frame: what lies in it is its child. Framed with a caption and, for a channel, a line of its colour along the top;
/// or bare, a caption at most.
class Panel : public QWidget {
    Q_OBJECT
  public:
    enum class Kind { Framed, Bare };

    explicit Panel(QWidget* parent, Kind kind = Kind::Framed);

    static constexpr int CaptionHeight = 17;

    const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    void SetAccent(const QColor& colour);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    Kind kind_;
    QString caption_;
    QColor accent_;
};

} // namespace nrv::ui
