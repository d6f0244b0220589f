#include "ui/platform/qt_message_boxes.h"

#include "ui/binding/text.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>

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

} // namespace

BoxAnswer QtMessageBoxes::Show(const MessageBox& box) {
    // On the heap and watched: the window it belongs to may go while it stands.
    const QPointer<QMessageBox> view = new QMessageBox(QApplication::activeWindow());
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
    const int answer = view->exec();
    delete view.data();
    if (box.Buttons == BoxButtons::Ok) {
        return BoxAnswer::Ok;
    }
    return answer == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

} // namespace nrv::ui
