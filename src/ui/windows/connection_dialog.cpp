#include "ui/windows/connection_dialog.h"

#include "ui/binding/binding.h"
#include "ui/binding/text.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/option_button.h"
#include "ui/widgets/panel.h"
#include "ui/windows/form_binding.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace nrv::ui {
namespace {

constexpr int Margin = 8;
constexpr int FrameGap = 6;
constexpr int InnerTop = Panel::CaptionHeight + 3;
constexpr int LeftWidth = controls::FrmSelect::NarrowWidth / TwipsPerPixel - 2 * Margin;
constexpr int NumberListWidth = 44;
constexpr std::size_t LinesPerFrame = 10;

QString NumberedName(const char* name, std::size_t index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

Panel* MakeFrame(controls::Frame& frame, const QString& name) {
    auto* box = new Panel(nullptr);
    box->setObjectName(name);
    Bind(frame, *box);
    return box;
}

template <class Options>
Panel* MakeOptionFrame(controls::Frame& frame, const QString& frame_name, Options& options, const char* name,
                       const controls::EventEntry& entry) {
    Panel* box = MakeFrame(frame, frame_name);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(Margin, InnerTop, 4, 6);
    column->setSpacing(2);
    for (std::size_t i = 0; i < options.size(); ++i) {
        auto* button = new OptionButton;
        button->setObjectName(NumberedName(name, i));
        Bind(options[i], *button, entry);
        column->addWidget(button, 0, Qt::AlignLeft);
    }
    return box;
}

QComboBox* MakeList(controls::List& list, const QString& name, const controls::EventEntry& entry) {
    auto* box = new ListBox(nullptr);
    box->setObjectName(name);
    box->setMaxVisibleItems(16);
    Bind(list, *box, entry);
    return box;
}

Panel* MakeListFrame(controls::Frame& frame, const QString& frame_name, controls::List& list, const QString& name,
                     const controls::EventEntry& entry) {
    Panel* box = MakeFrame(frame, frame_name);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(Margin, InnerTop, Margin, Margin);
    QComboBox* const choice = MakeList(list, name, entry);
    choice->setAccessibleName(FromBytes(frame.Caption()));
    column->addWidget(choice);
    return box;
}

} // namespace

ConnectionDialog::ConnectionDialog(controls::FrmSelect& record, const controls::EventEntry& entry,
                                   std::function<bool()> query_unload, QWidget* parent)
    : QDialog(parent), record_(record), entry_(entry), query_unload_(std::move(query_unload)) {
    setObjectName(QStringLiteral("FrmSelect"));
    setModal(true);
    auto* columns = new QHBoxLayout(this);
    // The record decides the size.
    columns->setSizeConstraint(QLayout::SetNoConstraint);
    columns->setContentsMargins(Margin, Margin, Margin, Margin);
    columns->setSpacing(FrameGap);
    columns->addWidget(MakeLeftColumn());
    for (std::size_t i = 0; i < device_frames_.size(); ++i) {
        device_frames_[i] = MakeDeviceFrame(i);
        columns->addWidget(device_frames_[i], 1);
    }
    // Known to the dialog by now, and so the one that is pressed again when a button has lost the keyboard.
    findChild<QPushButton*>(QStringLiteral("Proceed"))->setDefault(true);
    BindForm(record.Window, *this, *this, [this] { FollowWidth(); });
    FollowWidth();
}

QWidget* ConnectionDialog::MakeLeftColumn() {
    auto* left = new QWidget;
    left->setFixedWidth(LeftWidth);
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(FrameGap);
    column->addWidget(MakeOptionFrame(record_.PortFrame, QStringLiteral("PortFrame"), record_.Link, "Link", entry_));
    column->addWidget(MakeOptionFrame(record_.ConnectionFrame, QStringLiteral("ConnectionFrame"), record_.Connection,
                                      "Connection", entry_));
    column->addWidget(MakeListFrame(record_.IdFrame, QStringLiteral("IdFrame"), record_.IdSelect,
                                    QStringLiteral("IdSelect"), entry_));
    column->addWidget(MakeListFrame(record_.ComFrame, QStringLiteral("ComFrame"), record_.ComSelect,
                                    QStringLiteral("ComSelect"), entry_));
    column->addStretch(1);
    auto* equal_ids = new QLabel;
    equal_ids->setObjectName(QStringLiteral("EqualIds"));
    equal_ids->setWordWrap(true);
    Bind(record_.EqualIds, *equal_ids);
    column->addWidget(equal_ids);
    column->addWidget(MakeButtons());
    return left;
}

QWidget* ConnectionDialog::MakeButtons() {
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(FrameGap);
    auto* exit = new QPushButton;
    exit->setObjectName(QStringLiteral("Exit"));
    Bind(record_.Exit, *exit, entry_);
    auto* proceed = new QPushButton;
    proceed->setObjectName(QStringLiteral("Proceed"));
    Bind(record_.Proceed, *proceed, entry_);
    QString mnemonics;
    exit->setText(WithMnemonic(record_.Exit.Caption(), mnemonics));
    proceed->setText(WithMnemonic(record_.Proceed.Caption(), mnemonics));
    for (QPushButton* button : {exit, proceed}) {
        button->setMinimumWidth(0);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        row->addWidget(button, 1);
    }
    return buttons;
}

Panel* ConnectionDialog::MakeDeviceFrame(std::size_t frame) {
    Panel* box = MakeFrame(record_.DeviceFrames[frame], NumberedName("DeviceFrames", frame));
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(Margin, InnerTop, 6, Margin);
    grid->setHorizontalSpacing(2);
    grid->setVerticalSpacing(2);
    for (std::size_t i = 0; i < LinesPerFrame; ++i) {
        const std::size_t line = frame * LinesPerFrame + i;
        auto* label = new QLabel;
        label->setObjectName(NumberedName("DeviceLines", line));
        Bind(record_.DeviceLines[line], *label);
        grid->addWidget(label, static_cast<int>(i), 0);
        QComboBox* list = MakeList(record_.DeviceIds[line], NumberedName("DeviceIds", line), entry_);
        list->setFixedWidth(NumberListWidth);
        list->setAccessibleName(label->text());
        grid->addWidget(list, static_cast<int>(i), 1);
    }
    grid->setColumnStretch(0, 1);
    return box;
}

void ConnectionDialog::FollowWidth() {
    using controls::FrmSelect;
    const std::array<int, 2> needed = {FrmSelect::TenWidth, FrmSelect::TwentyWidth};
    for (std::size_t i = 0; i < device_frames_.size(); ++i) {
        device_frames_[i]->setVisible(record_.DeviceFrames[i].Visible() && record_.Window.Width() >= needed[i]);
    }
    setFixedSize(record_.Window.Width() / TwipsPerPixel, record_.Window.Height() / TwipsPerPixel);
}

void ConnectionDialog::reject() {
    close();
}

void ConnectionDialog::closeEvent(QCloseEvent* event) {
    bool may_close = false;
    entry_.Run([&] { may_close = query_unload_(); });
    event->setAccepted(may_close);
}

} // namespace nrv::ui
