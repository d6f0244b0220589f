#pragma once

#include <QString>
#include <QTabBar>

#include <vector>

namespace nrv::ui {

/// Flat tabs of fixed widths; a tab of a channel leaves room for the channel's mark at its left.
class TabStrip : public QTabBar {
    Q_OBJECT
  public:
    explicit TabStrip(QWidget* parent);

    static constexpr int StripHeight = 24;

    /// Adds a tab `width` pixels wide.
    void AddTab(int width, bool with_mark);
    /// Any text; none of its characters becomes a key to press.
    void SetCaption(int tab, const QString& caption);
    const QString& Caption(int tab) const { return tabs_[static_cast<std::size_t>(tab)].Caption; }
    /// Where the mark of a tab belongs, in the strip.
    QRect MarkPlace(int tab) const;

  protected:
    QSize tabSizeHint(int tab) const override;
    QSize minimumTabSizeHint(int tab) const override { return tabSizeHint(tab); }
    void paintEvent(QPaintEvent*) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

  private:
    struct Tab {
        int Width;
        bool WithMark;
        QString Caption; ///< as it is shown
    };
    std::vector<Tab> tabs_;
};

} // namespace nrv::ui
