#include "ui/tool_dialogs/copy_dialogs.h"

#include "ui/binding/text.h"
#include "ui/widgets/panel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace nrv::ui {
namespace {

constexpr int WideButton = 220;
constexpr int ChoiceWidth = 140;

} // namespace

CopyInputDialog::CopyInputDialog(controls::FrmCopyIn& record, const controls::EventEntry& entry, QWidget* parent)
    : ToolDialogBase(record.Window, QStringLiteral("FrmCopyIn"), entry, parent) {
    auto* panel = new Panel(this);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(2 * Inner, 2 * Inner, 2 * Inner, 2 * Inner);
    column->setSpacing(Inner);
    for (std::size_t way = 0; way < record.Command1.size(); ++way) {
        QPushButton* button = MakeButton(record.Command1[way], Indexed("Command1", way));
        button->setFixedWidth(WideButton);
        column->addWidget(button);
    }
    Column().addWidget(panel);
}

CopyOutputDialog::CopyOutputDialog(controls::FrmCopyOut& record, const controls::EventEntry& entry, QWidget* parent)
    : ToolDialogBase(record.Window, QStringLiteral("FrmCopyOut"), entry, parent) {
    auto* panel = new Panel(this);
    auto* columns = new QHBoxLayout(panel);
    columns->setContentsMargins(Inner, Inner, Inner, Inner);
    columns->setSpacing(2 * Inner);
    for (std::size_t end = 0; end < record.Combo1.size(); ++end) {
        auto* column = new QVBoxLayout;
        column->setSpacing(CaptionGap);
        column->addWidget(MakeCaption(record.Captions[end], Indexed("Captions", end)));
        QComboBox* choice = MakeChoice(record.Combo1[end], Indexed("Combo1", end));
        choice->setAccessibleName(FromBytes(record.Captions[end].Caption()));
        choice->setMinimumWidth(ChoiceWidth);
        column->addWidget(choice);
        columns->addLayout(column);
    }
    Column().addWidget(panel);

    QPushButton* copy = MakeButton(record.Command1, QStringLiteral("Command1"));
    Column().addLayout(ButtonRow({copy}));
    copy->setDefault(true);
}

} // namespace nrv::ui
