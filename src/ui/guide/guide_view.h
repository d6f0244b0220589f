#pragma once

#include <QTextBrowser>

namespace nrv::ui {

/// A page of text and pictures, laid out to be read: the toolkit sets what it takes from Markdown without any room.
class GuideView : public QTextBrowser {
  public:
    explicit GuideView(QWidget* parent);

    /// Shows a Markdown file of the program's own; its pictures are no wider than the view is now.
    void Show(const QUrl& markdown);
    /// Brings a heading to the top, by its name in a link to it: "The end" is "the-end". Nothing without such a
    /// heading.
    void TurnTo(const QString& link_name);

    /// The name of a heading in a link to it.
    static QString LinkName(const QString& heading);

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
};

} // namespace nrv::ui
