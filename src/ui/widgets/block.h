#pragma once

#include <QAbstractButton>
#include <QColor>

namespace nrv::ui {

/// A block of the diagram: a caption in a box, to be clicked.
class Block : public QAbstractButton {
    Q_OBJECT
  public:
    enum class Kind {
        Stage,  ///< a stage of a channel's chain
        Socket, ///< an input's socket
        Source, ///< what feeds an output; it reads its tool tip, as its control has no caption
        Channel ///< a channel, with a border of its colour
    };
    Block(QWidget* parent, Kind kind, const QColor& colour = {});

    /// Any text; none of its characters becomes a key to press.
    void SetCaption(const QString& caption);
    /// What it reads.
    QString Shown() const;
    QSize sizeHint() const override { return {44, 26}; }

  protected:
    void paintEvent(QPaintEvent*) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    Kind kind_;
    QColor colour_;
};

} // namespace nrv::ui
