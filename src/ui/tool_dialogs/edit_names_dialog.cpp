#include "ui/tool_dialogs/edit_names_dialog.h"

#include "ui/binding/text.h"
#include "ui/look/theme.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace nrv::ui {
namespace {

constexpr int NameMarkSize = 8;

} // namespace

EditNamesDialog::EditNamesDialog(controls::FrmEditLabel& record, const controls::EventEntry& entry, QWidget* parent)
    : ToolDialogBase(record.Window, QStringLiteral("FrmEditLabel"), entry, parent) {
    auto* panel = new Panel(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(Inner, Inner, Inner, Inner);
    grid->setHorizontalSpacing(Gap);
    grid->setVerticalSpacing(Inner);
    for (std::size_t channel = 0; channel < record.Text1.size(); ++channel) {
        const bool input = IsInput(channel);
        grid->addWidget(MakeName(record, channel), input ? 0 : 1,
                        static_cast<int>(input ? channel : OutputOf(channel)));
    }
    Column().addWidget(panel);

    QPushButton* ok = MakeButton(record.Command1[0], Indexed("Command1", 0));
    QPushButton* cancel = MakeButton(record.Command1[1], Indexed("Command1", 1));
    Column().addLayout(ButtonRow({cancel, ok}));
    ok->setDefault(true);
    findChild<TextField*>(Indexed("Text1", InputCount))->Offer();
}

QWidget* EditNamesDialog::MakeName(controls::FrmEditLabel& record, std::size_t channel) {
    auto* cell = new QWidget;
    auto* column = new QVBoxLayout(cell);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(CaptionGap);
    auto* heading = new QHBoxLayout;
    heading->setSpacing(5);
    const QColor colour = ChannelColour(static_cast<int>(channel));
    auto* mark = new Lamp(cell, colour, 1.0);
    mark->setFixedSize(NameMarkSize, NameMarkSize);
    heading->addWidget(mark);
    heading->addWidget(MakeCaption(record.Captions[channel], Indexed("Captions", channel)), 1);
    column->addLayout(heading);

    controls::TextBox& box = record.Text1[channel];
    TextField* field = MakeField(box, Indexed("Text1", channel), Enter::PressesDefault);
    field->setAccessibleName(FromBytes(record.Captions[channel].Caption()));
    if (box.Locked()) {
        field->setFocusPolicy(Qt::ClickFocus); // the keyboard goes to what can be edited
    }
    column->addWidget(field);
    return cell;
}

} // namespace nrv::ui
