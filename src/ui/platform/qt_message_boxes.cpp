#include "ui/platform/qt_message_boxes.h"

#include "ui/binding/text.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGridLayout>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QShowEvent>
#include <QSpacerItem>

#include <algorithm>

namespace nrv::ui {
namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A window of ours that a box can belong to, so that it does not come up behind it: the one in front, also while
/// another program has the keyboard.
QWidget* OwnerOfBox() {
    for (QWidget* window : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (window != nullptr) {
            return window;
        }
    }
    QWidget* owner = nullptr;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        const bool main = qobject_cast<QMainWindow*>(window) != nullptr;
        if (window->isVisible() && (main || (owner == nullptr && window->windowType() != Qt::ToolTip))) {
            owner = window;
        }
    }
    return owner;
}

/// A box as wide as its title, which may hold the only words that say what is asked. It comes up below the dialog that
/// asked and not over it.
class Box : public QMessageBox {
  public:
    explicit Box(QWidget* owner) : QMessageBox(owner) {
        setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowCloseButtonHint);
    }
    void MakeRoomForTitle() {
        constexpr int frame_and_buttons = 110; // the icon, the close button and what a desktop leaves around a title
        auto* grid = qobject_cast<QGridLayout*>(layout());
        const int needed = QFontMetrics(TitleFont()).horizontalAdvance(windowTitle()) + frame_and_buttons;
        const QMargins margins = grid->contentsMargins();
        grid->addItem(
            new QSpacerItem(needed - margins.left() - margins.right(), 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
            grid->rowCount(), 0, 1, grid->columnCount());
    }

  protected:
    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        const auto* dialog = qobject_cast<QDialog*>(parentWidget());
        if (!event->spontaneous() && dialog != nullptr) {
            PlaceBelow(*dialog);
        }
    }

  private:
    /// The desktop's own is not known here; this is larger than most.
    static QFont TitleFont() {
        QFont font = QGuiApplication::font();
        font.setPixelSize(14);
        font.setBold(true);
        return font;
    }
    /// Or above it, where there is no room below; where there is none at all it stays where the toolkit puts it.
    void PlaceBelow(const QDialog& dialog) {
        const QRect asked = dialog.frameGeometry();
        const QRect room = dialog.screen()->availableGeometry();
        const int height = this->height() + asked.height() - dialog.height();
        const int left = std::clamp(asked.center().x() - width() / 2, room.left(),
                                    std::max(room.left(), room.right() + 1 - width()));
        if (asked.bottom() + 1 + height <= room.bottom() + 1) {
            move(left, asked.bottom() + 1);
        } else if (asked.top() - height >= room.top()) {
            move(left, asked.top() - height);
        }
    }
};

} // namespace

BoxAnswer QtMessageBoxes::Show(const MessageBox& box) {
    // On the heap and watched: the window it belongs to may go while it stands.
    const QPointer<Box> view = new Box(OwnerOfBox());
    view->setObjectName(QStringLiteral("MessageBox"));
    view->setWindowModality(Qt::ApplicationModal);
    view->setTextFormat(Qt::PlainText);
    view->setText(FromBytes(box.Text));
    if (!box.Title.empty()) {
        view->setWindowTitle(FromBytes(box.Title));
    }
    view->setIcon(IconOf(box.Icon));
    if (box.Buttons == BoxButtons::YesNo) {
        view->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        view->setDefaultButton(box.Default == BoxAnswer::No ? QMessageBox::No : QMessageBox::Yes);
        view->setEscapeButton(QMessageBox::No);
    } else {
        view->setStandardButtons(QMessageBox::Ok);
    }
    view->MakeRoomForTitle();
    const int answer = view->exec();
    delete view.data();
    if (box.Buttons == BoxButtons::Ok) {
        return BoxAnswer::Ok;
    }
    return answer == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

} // namespace nrv::ui
