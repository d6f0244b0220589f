#include "ui/guide/guide_view.h"

#include "ui/look/theme.h"

#include <QImage>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>

namespace nrv::ui {
namespace {

// Pixels.
constexpr int TextSize = 13;
constexpr int PageMargin = 16;
constexpr int ListIndent = 22;
constexpr int CodeIndent = 18;
constexpr double BetweenParagraphs = 9.0;
constexpr double BetweenEntries = 3.0;
constexpr double BeforeHeading = 16.0;
constexpr double CellPadding = 4.0;

bool IsCode(const QTextBlock& block) {
    return block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage) ||
           block.blockFormat().hasProperty(QTextFormat::BlockCodeFence) || block.blockFormat().nonBreakableLines();
}

void SpaceOut(const QTextBlock& block) {
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    if (cursor.currentTable() != nullptr) {
        return;
    }
    if (format.headingLevel() > 0) {
        format.setTopMargin(BeforeHeading);
        format.setBottomMargin(BetweenParagraphs / 2);
    } else if (block.textList() != nullptr) {
        const bool last = block.next().textList() != block.textList();
        format.setBottomMargin(last ? BetweenParagraphs : BetweenEntries);
    } else if (IsCode(block)) {
        format.setLeftMargin(CodeIndent);
        format.setBottomMargin(IsCode(block.next()) ? 0.0 : BetweenParagraphs);
    } else {
        format.setBottomMargin(BetweenParagraphs);
    }
    cursor.setBlockFormat(format);
}

void SpaceOut(QTextTable& table) {
    QTextTableFormat format = table.format();
    format.setBorder(1.0);
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(CurrentTheme().Line);
    format.setCellSpacing(0.0);
    format.setCellPadding(CellPadding);
    format.setBottomMargin(BetweenParagraphs);
    table.setFormat(format);
}

} // namespace

GuideView::GuideView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    QFont text = font();
    text.setPixelSize(TextSize);
    setFont(text);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { TurnTo(link.fragment()); });
}

void GuideView::Show(const QUrl& markdown) {
    setSource(markdown, QTextDocument::MarkdownResource);
    document()->setDocumentMargin(PageMargin);
    document()->setIndentWidth(ListIndent);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        SpaceOut(block);
    }
    const QList<QTextFrame*> frames = document()->rootFrame()->childFrames();
    for (QTextFrame* frame : frames) {
        if (auto* table = qobject_cast<QTextTable*>(frame)) {
            SpaceOut(*table);
        }
    }
}

void GuideView::TurnTo(const QString& link_name) {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && LinkName(block.text()) == link_name) {
            // From the end, the heading comes to the top of the window and not to its foot.
            moveCursor(QTextCursor::End);
            setTextCursor(QTextCursor(block));
            ensureCursorVisible();
            return;
        }
    }
}

QString GuideView::LinkName(const QString& heading) {
    QString name;
    for (const QChar sign : heading) {
        if (sign.isLetterOrNumber()) {
            name += sign.toLower();
        } else if (sign.isSpace() || sign == u'-') {
            name += u'-';
        }
    }
    return name;
}

QVariant GuideView::loadResource(int type, const QUrl& name) {
    const QVariant found = QTextBrowser::loadResource(type, name);
    const QImage picture = type == QTextDocument::ImageResource ? QImage::fromData(found.toByteArray()) : QImage();
    const int widest = width() - 2 * PageMargin - verticalScrollBar()->sizeHint().width() - 2 * frameWidth();
    return picture.width() > widest ? picture.scaledToWidth(widest, Qt::SmoothTransformation) : found;
}

} // namespace nrv::ui
