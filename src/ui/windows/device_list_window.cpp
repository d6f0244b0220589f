#include "ui/windows/device_list_window.h"

#include "controls/frm_ctrl.h"
#include "ui/binding/binding.h"
#include "ui/binding/subscription.h"
#include "ui/binding/text.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"
#include "ui/widgets/device_rows.h"
#include "ui/windows/form_binding.h"

#include <QHeaderView>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace nrv::ui {
namespace {

constexpr int RowHeight = 22;
constexpr int CellMargins = 16;

/// A caption as its control would show it: "&&" stands for "&".
QString ShownCaption(const std::string& caption) {
    QString shown;
    const QString text = FromBytes(caption);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && i + 1 < text.size()) {
            ++i;
        }
        shown += text[i];
    }
    return shown;
}

/// The widest text that a row can take: a label of sixteen characters and an ID of two digits.
int WidestRow(const QFontMetrics& metrics) {
    return metrics.horizontalAdvance(QStringLiteral("WWWWWWWWWWWWWWWW  ID:32")) + CellMargins;
}

} // namespace

DeviceListWindow::DeviceListWindow(controls::FrmSearchNet& record, const controls::EventEntry& entry,
                                   const std::function<void()>& query_unload)
    : record_(record), grid_(new DeviceRows) {
    setObjectName(QStringLiteral("FrmSearchNet"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(2);
    column->addWidget(grid_, 1);
    BuildGrid(entry);
    AddNotice(record.SearchingNotice, QStringLiteral("SearchingNotice"), *column);
    AddNotice(record.LoadingNotice, QStringLiteral("LoadingNotice"), *column);
    setWidget(content);

    for (const auto& [timer, name] : {std::pair(&record.Timer1, "Timer1"), std::pair(&record.Timer2, "Timer2")}) {
        auto* toolkit_timer = new QTimer(this);
        toolkit_timer->setObjectName(QLatin1String(name));
        Bind(*timer, *toolkit_timer, entry.As(controls::EventSource::Kind::Tick));
    }
    BindForm(record.Window, *this, *content);
    MayClose = [entry, query_unload] {
        entry.Run(query_unload);
        return false;
    };
}

void DeviceListWindow::FitContent() {
    setMinimumWidth(minimumSizeHint().width());
    resize(minimumWidth(), controls::FrmCtrl::HeightTwips / TwipsPerPixel);
}

void DeviceListWindow::FocusGrid() {
    grid_->setFocus(Qt::OtherFocusReason);
}

void DeviceListWindow::BuildGrid(const controls::EventEntry& entry) {
    grid_->setObjectName(QStringLiteral("Devices"));
    grid_->setColumnCount(1);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setTabKeyNavigation(false);
    grid_->setShowGrid(false);
    grid_->setWordWrap(false);
    grid_->setTextElideMode(Qt::ElideNone);
    grid_->verticalHeader()->hide();
    grid_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid_->verticalHeader()->setDefaultSectionSize(RowHeight);
    grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->horizontalHeader()->setSectionsClickable(false);
    grid_->horizontalHeader()->setHighlightSections(false);
    grid_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    grid_->setMinimumWidth(
        std::max(controls::FrmSearchNet::ColumnWidth / TwipsPerPixel, WidestRow(QFontMetrics(StrongFont()))) +
        2 * grid_->frameWidth());
    BindCaption();

    ShowAllCommon(record_.Devices, *grid_);
    FollowSize();
    Subscribe(*grid_, record_.Devices, [this](controls::Aspect aspect) {
        switch (aspect) {
        case controls::Aspect::Items:
            FollowSize();
            break;
        case controls::Aspect::Text:
            FollowCells();
            break;
        case controls::Aspect::Colour:
            FollowMark();
            break;
        case controls::Aspect::Repaint:
            grid_->viewport()->repaint();
            break;
        default:
            ShowCommon(record_.Devices, *grid_, aspect);
        }
    });
    grid_->Open = [this, entry](int row) { entry.Run([&] { record_.Devices.UserDoubleClick(row); }); };
}

void DeviceListWindow::BindCaption() {
    auto* caption = new QTableWidgetItem;
    caption->setFont(CaptionFont());
    caption->setForeground(CurrentTheme().Dim);
    grid_->setHorizontalHeaderItem(0, caption);
    const auto show = [this, caption] { caption->setText(ShownCaption(record_.ListCaption.Caption())); };
    show();
    Subscribe(*grid_, record_.ListCaption, [show](controls::Aspect) { show(); });
}

void DeviceListWindow::AddNotice(controls::Label& notice, const QString& name, QVBoxLayout& column) {
    auto* label = new QLabel;
    label->setObjectName(name);
    // Its place is kept while it is hidden: it must be there at once when it is shown in the middle of an exchange.
    QSizePolicy policy = label->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    label->setSizePolicy(policy);
    label->setContentsMargins(2, 1, 2, 1);
    Bind(notice, *label);
    column.addWidget(label);
}

void DeviceListWindow::FollowSize() {
    const controls::Grid& devices = record_.Devices;
    grid_->setRowCount(devices.Rows());
    for (int row = 0; row < devices.Rows(); ++row) {
        grid_->setItem(row, 0, new QTableWidgetItem);
    }
    FollowCells();
    FollowMark();
}

void DeviceListWindow::FollowCells() {
    const controls::Grid& devices = record_.Devices;
    int needed = devices.ColumnWidth() / TwipsPerPixel;
    for (int row = 0; row < devices.Rows() && devices.Columns() > 0; ++row) {
        const QString text = Printable(FromBytes(devices.Cell(row, 0)));
        grid_->item(row, 0)->setText(text);
        const QString note = FromBytes(devices.RowNote(row));
        grid_->item(row, 0)->setToolTip(note.isEmpty() ? QString()
                                                       : FromBytes(devices.ToolTip()) + QStringLiteral("\n") + note);
        // Any of them may be the marked one.
        needed = std::max(needed, QFontMetrics(StrongFont()).horizontalAdvance(text) + CellMargins);
    }
    // The column fills the list, and a wider one scrolls.
    grid_->horizontalHeader()->setMinimumSectionSize(needed);
}

void DeviceListWindow::FollowMark() {
    for (int row = 0; row < grid_->rowCount(); ++row) {
        const bool marked = row == record_.Devices.MarkedRow();
        QTableWidgetItem& cell = *grid_->item(row, 0);
        cell.setFont(marked ? StrongFont() : TextFont());
        cell.setBackground(marked ? QBrush(Mixed(CurrentTheme().Field, CurrentTheme().Focus, 0.18)) : QBrush());
    }
}

} // namespace nrv::ui
