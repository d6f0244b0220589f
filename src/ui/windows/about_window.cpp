#include "ui/windows/about_window.h"

#include "ui/look/program_icon.h"
#include "ui/look/theme.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace nrv::ui {
namespace {

constexpr int Margin = 16;
constexpr int IconSize = 48;
constexpr int TextWidth = 340;
constexpr QSize ButtonSize(78, 26);

QLabel* MakeText(const QString& name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    label->setFixedWidth(TextWidth);
    return label;
}

} // namespace

AboutWindow::AboutWindow(const QString& folder, QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("About"));
    setWindowTitle(QStringLiteral("About"));
    setAttribute(Qt::WA_DeleteOnClose);

    auto* icon = new QLabel;
    icon->setPixmap(ProgramIcon().pixmap(QSize(IconSize, IconSize), devicePixelRatio()));
    QLabel* name = MakeText(QStringLiteral("Name"), QStringLiteral("NRV-718 remote control"));
    name->setFont(StrongFont());
    auto* close = new QPushButton(QStringLiteral("OK"));
    close->setObjectName(QStringLiteral("OK"));
    close->setFixedSize(ButtonSize);
    close->setDefault(true);
    QObject::connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(Margin, Margin, Margin, Margin);
    grid->setHorizontalSpacing(Margin);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->addWidget(icon, 0, 0, 5, 1, Qt::AlignTop);
    int row = 0;
    for (QLabel* text :
         {name, MakeText(QStringLiteral("Version"), QStringLiteral("Version " NRV718_VERSION)),
          MakeText(QStringLiteral("Purpose"),
                   QStringLiteral("Controls NRV-718 loudspeaker processors over a serial line.")),
          MakeText(QStringLiteral("Folder"), QStringLiteral("Its files are in %1").arg(folder)),
          MakeText(QStringLiteral("Licences"), QStringLiteral("It stands on Qt %1, which is used under the GNU Lesser "
                                                              "General Public License, version 3.")
                                                   .arg(QLatin1String(qVersion())))}) {
        grid->addWidget(text, row++, 1);
    }
    grid->addWidget(close, row, 1, Qt::AlignRight);
    close->setFocus();
}

} // namespace nrv::ui
