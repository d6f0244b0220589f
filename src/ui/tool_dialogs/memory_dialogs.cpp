#include "ui/tool_dialogs/memory_dialogs.h"

#include "ui/binding/text.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace nrv::ui {

StoreDialog::StoreDialog(controls::FrmStore& record, const controls::EventEntry& entry, QWidget* parent)
    : ToolDialogBase(record.Window, QStringLiteral("FrmStore"), entry, parent) {
    auto* panel = new Panel(this);
    auto* columns = new QHBoxLayout(panel);
    columns->setContentsMargins(Inner, Inner, Inner, Inner);
    columns->setSpacing(2 * Inner);

    auto* memory = new QVBoxLayout;
    memory->setSpacing(CaptionGap);
    memory->addWidget(MakeCaption(record.ListCaption, QStringLiteral("ListCaption")));
    QListWidget* list = MakeLines(record.List1, QStringLiteral("List1"), MemoryPositions, MemoryNameLength);
    list->setAccessibleName(FromBytes(record.ListCaption.Caption()));
    memory->addWidget(list);
    columns->addLayout(memory);

    auto* target = new QVBoxLayout;
    target->setSpacing(CaptionGap);
    target->addWidget(MakeCaption(record.NameCaption, QStringLiteral("NameCaption")));
    TextField* name = MakeField(record.Text1, QStringLiteral("Text1"), Enter::PressesDefault);
    name->setAccessibleName(FromBytes(record.NameCaption.Caption()));
    name->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    name->setTextMargins(1, 0, 1, 0);
    target->addWidget(name);
    target->addSpacing(Inner);
    target->addWidget(MakeCaption(record.PositionCaption, QStringLiteral("PositionCaption")));
    QComboBox* position = MakeChoice(record.Combo1, QStringLiteral("Combo1"));
    position->setAccessibleName(FromBytes(record.PositionCaption.Caption()));
    position->setFixedWidth(56);
    target->addWidget(position);
    target->addStretch(1);
    target->addWidget(MakeBar(record.ProgressBar1, QStringLiteral("ProgressBar1")));
    columns->addLayout(target);
    Column().addWidget(panel);

    QPushButton* cancel = MakeButton(record.Command1[0], Indexed("Command1", 0));
    QPushButton* store = MakeButton(record.Command1[1], Indexed("Command1", 1));
    Column().addLayout(ButtonRow({cancel, store}));
    store->setDefault(true);
    name->Offer();
}

ReadDialog::ReadDialog(controls::FrmRead& record, const controls::EventEntry& entry, QWidget* parent)
    : ToolDialogBase(record.Window, QStringLiteral("FrmRead"), entry, parent) {
    auto* panel = new Panel(this);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(Inner, Inner, Inner, Inner);
    column->setSpacing(CaptionGap);
    column->addWidget(MakeCaption(record.ListCaption, QStringLiteral("ListCaption")));
    QListWidget* list = MakeLines(record.List1, QStringLiteral("List1"), MemoryPositions, MemoryNameLength);
    list->setAccessibleName(FromBytes(record.ListCaption.Caption()));
    column->addWidget(list);
    Column().addWidget(panel);

    QPushButton* cancel = MakeButton(record.Command1[0], Indexed("Command1", 0));
    QPushButton* read = MakeButton(record.Command1[1], Indexed("Command1", 1));
    Column().addLayout(ButtonRow({cancel, read}));
    read->setDefault(true);
}

} // namespace nrv::ui
