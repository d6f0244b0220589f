#include "ui/control_window/control_window_view.h"

#include "controls/spoken.h"
#include "ports/numbering.h"
#include "ui/binding/binding.h"
#include "ui/binding/follow.h"
#include "ui/binding/subscription.h"
#include "ui/binding/text.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/control_binder.h"
#include "ui/control_window/pages.h"
#include "ui/control_window/reading_order.h"
#include "ui/control_window/section_lights.h"
#include "ui/look/theme.h"
#include "ui/widgets/graph_view.h"
#include "ui/widgets/marker_dot.h"
#include "ui/widgets/tab_strip.h"
#include "ui/widgets/up_down_arrows.h"
#include "ui/widgets/value_plate.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QShortcut>
#include <QTimer>

#include <type_traits>
#include <utility>
#include <vector>

namespace nrv::ui {

using controls::Aspect;

namespace {

/// A gain as a point's plate tells it, with its sign.
QString SignedGain(const std::string& gain) {
    const QString text = FromBytes(gain);
    return text.startsWith(u'-') || text == QStringLiteral("0") ? text : u'+' + text;
}

/// A channel's own title and the name that it was given.
QString SpokenTab(int tab, QString caption) {
    // An input's name ends in bytes that are settings and no signs.
    caption.removeIf([](QChar sign) { return !sign.isPrint(); });
    caption = caption.trimmed();
    const QString title = tab < ChannelCount ? FromBytes(std::string(ChannelTitles[At(tab)])) : caption;
    return caption == title || caption.isEmpty() ? title : title + QStringLiteral(", ") + caption;
}

} // namespace

ControlWindowView::ControlWindowView(controls::FrmCtrl& form, const controls::EventEntry& entry, QWidget* parent)
    : QWidget(parent), form_(form), entry_(entry) {
    setMinimumSize(ViewWidth, ViewHeight);
    resize(ViewWidth, ViewHeight);
    Build();
    lights_ = new SectionLights(this);
    controls::ForEachControl(form_, ControlBinder(widgets_, entry_));
    for (int section = 0; section < PeqCount; ++section) {
        BindMarker(section);
    }
    BindTabs();
    Name();
    SetUpKeys();
    timer_ = new QTimer(this);
    timer_->setObjectName(ControlName("Timer1", controls::NoIndex));
    timer_->setTimerType(Qt::PreciseTimer);
    Bind(form_.Timer1, *timer_, entry_.As(controls::EventSource::Kind::Meters));
}

ControlWindowView::~ControlWindowView() {
    Detach();
}

void ControlWindowView::Detach() {
    if (!attached_) {
        return;
    }
    attached_ = false;
    EndSubscriptions(*this);
    for (GraphView* graph : graphs_) {
        graph->ShowPicture(nullptr);
    }
    timer_->stop();
    tabs_->disconnect(this);
    delete std::exchange(lights_, nullptr);
    setEnabled(false);
}

/// Enter that a button has left alone presses it, as in a dialog; a box is for the blank.
void ControlWindowView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* button = qobject_cast<QAbstractButton*>(focusWidget());
    if (enter && button != nullptr && !button->isCheckable()) {
        button->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ControlWindowView::Build() {
    BuildToolbar(widgets_, *this);
    BuildTabs(widgets_, *this);
    tabs_ = qobject_cast<TabStrip*>(widgets_.Find("SSTab1", controls::NoIndex));
    for (int tab = 0; tab < controls::TabCount; ++tab) {
        auto* page = new QWidget(this);
        page->setObjectName(QStringLiteral("Page(%1)").arg(tab));
        page->setGeometry(0, PageTop, PageWidth, PageHeight);
        page->hide();
        pages_[At(tab)] = page;
    }
    for (int channel = 0; channel < ChannelCount; ++channel) {
        BuildChannelPage(widgets_, *pages_[At(channel)], channel);
        graphs_[At(channel)] = qobject_cast<GraphView*>(widgets_.Find("Picture1", channel));
        plates_[At(channel)] = new ValuePlate(*graphs_[At(channel)]);
    }
    BuildGainsPage(widgets_, *pages_[controls::GainsTab]);
    BuildDelaysPage(widgets_, *pages_[controls::DelaysTab]);
    BuildOverviewPage(widgets_, *pages_[controls::OverviewTab]);
}

void ControlWindowView::BindTabs() {
    controls::TabControl& control = form_.SSTab1;
    const auto show_captions = [this, &control] {
        for (int tab = 0; tab < tabs_->count() && At(tab) < control.TabCaptions().size(); ++tab) {
            const QString caption = FromBytes(control.TabCaptions()[At(tab)]);
            tabs_->SetCaption(tab, caption);
            tabs_->setAccessibleTabName(tab, SpokenTab(tab, caption));
        }
    };
    ShowAllCommon(control, *tabs_);
    show_captions();
    ShowTab();
    Subscribe(*tabs_, control, [this, &control, show_captions](Aspect aspect) {
        if (aspect == Aspect::Items) {
            show_captions();
        } else if (!ShowCommon(control, *tabs_, aspect)) {
            ShowTab();
        }
    });
    connect(tabs_, &QTabBar::currentChanged, this, [this, &control](int tab) {
        entry_.Run([&] { control.SetTab(tab); });
        ShowTab();
    });
}

void ControlWindowView::Name() {
    controls::ForEachControl(form_, [this](std::string_view name, int index, const auto& control) {
        using Control = std::decay_t<decltype(control)>;
        QWidget* const widget = widgets_.Find(name, index);
        if (const std::string words = controls::SpokenName(name, index); widget != nullptr && !words.empty()) {
            widget->setAccessibleName(FromBytes(words));
        }
        constexpr bool has_value = std::is_same_v<Control, controls::Fader> ||
                                   std::is_same_v<Control, controls::UpDown> ||
                                   std::is_same_v<Control, controls::Marker>;
        if constexpr (has_value) {
            if (auto* spoken = dynamic_cast<Spoken*>(widget)) {
                spoken->InWords = [this, name, index] { return FromBytes(controls::SpokenValue(form_, name, index)); };
            }
        }
        if constexpr (std::is_same_v<Control, controls::UpDown>) {
            if (auto* arrows = qobject_cast<UpDownArrows*>(widget)) {
                arrows->Position = [&control] {
                    return Spoken::Scale{control.Minimum(), control.Maximum(), control.Shown()};
                };
            }
        }
    });
}

void ControlWindowView::SetUpKeys() {
    constexpr std::array<Qt::Key, controls::TabCount> keys = {Qt::Key_1, Qt::Key_2, Qt::Key_3,    Qt::Key_4,
                                                              Qt::Key_5, Qt::Key_6, Qt::Key_7,    Qt::Key_8,
                                                              Qt::Key_9, Qt::Key_0, Qt::Key_Minus};
    for (int tab = 0; tab < controls::TabCount; ++tab) {
        const auto show = [this, tab] {
            tabs_->setFocus(Qt::ShortcutFocusReason);
            tabs_->setCurrentIndex(tab);
        };
        new QShortcut(QKeySequence(Qt::CTRL | keys[At(tab)]), this, show, Qt::WidgetWithChildrenShortcut);
    }
    std::vector<QWidget*> order = InReadingOrder(*widgets_.Find("Toolbar1", controls::NoIndex));
    order.push_back(tabs_);
    for (const QWidget* page : pages_) {
        const std::vector<QWidget*> controls = InReadingOrder(*page);
        order.insert(order.end(), controls.begin(), controls.end());
    }
    SetTabOrder(order);
    tabs_->setFocus(Qt::OtherFocusReason);
}

void ControlWindowView::ShowTab() {
    const int on_top = form_.SSTab1.Tab();
    tabs_->setCurrentIndex(on_top);
    // With the page that goes its keyboard would go to whatever comes next, such as the first fader.
    QWidget* const focused = QApplication::focusWidget();
    if (focused != nullptr && isAncestorOf(focused) && !pages_.at(At(on_top))->isAncestorOf(focused) &&
        focused->parentWidget() != widgets_.Find("Toolbar1", controls::NoIndex)) {
        tabs_->setFocus(Qt::OtherFocusReason);
    }
    pages_.at(At(on_top))->show();
    for (int tab = 0; tab < controls::TabCount; ++tab) {
        if (tab != on_top) {
            pages_[At(tab)]->hide();
        }
    }
}

void ControlWindowView::BindMarker(int section) {
    auto* dot = qobject_cast<MarkerDot*>(widgets_.Find("Label5", section));
    markers_[At(section)] = dot;
    controls::Marker& marker = form_.Label5[At(section)];
    const auto show = [dot, &marker] {
        dot->SetNumber(FromBytes(marker.Caption()));
        dot->PlaceAt(marker.Left(), marker.Top());
    };
    Follow(marker, *dot, show);
    connect(dot, &MarkerDot::Pressed, this, [this, &marker, section] {
        entry_.Run([&] { controls::Run(marker.Pressed); });
        ShowPlate(section);
    });
    connect(dot, &MarkerDot::Dragged, this, [this, dot, &marker, section](double x, double y) {
        // A move over a point that nobody holds is no event.
        if (marker.Moved && (dot->InHand() || form_.MarkerDragging[At(section)])) {
            const auto entry = dot->InHand() ? entry_ : entry_.As(controls::EventSource::Kind::Hover);
            entry.Run([&] { marker.Moved(x, y); });
        }
        // A drag whose button-up was lost goes on, and so does its plate.
        if (dot->InHand() || form_.MarkerDragging[At(section)]) {
            ShowPlate(section);
        }
    });
    connect(dot, &MarkerDot::Released, this, [this, self = QPointer(this), &marker, section] {
        // One that comes while the program is at work is done when it is over, or the point would cling to the mouse.
        entry_.RunWhenOver([self, &marker] {
            if (self != nullptr && self->attached_) {
                controls::Run(marker.Released);
            }
        });
        plates_[At(ChannelOfPeq(section))]->hide();
    });
    const auto hide_plate = [this, section] { plates_[At(ChannelOfPeq(section))]->hide(); };
    connect(dot, &MarkerDot::TakenAway, this, hide_plate);
    connect(dot, &MarkerDot::FocusLeft, this, hide_plate);
    connect(dot, &MarkerDot::GivenUp, this, [this, hide_plate, &marker] {
        entry_.Run([&] { controls::Run(marker.GivenUp); });
        hide_plate();
    });
    connect(dot, &MarkerDot::Stepped, this, [this, dot, &marker, section](controls::PointStep what, int steps) {
        entry_.Run([&] {
            if (marker.Stepped) {
                marker.Stepped(what, steps);
            }
        });
        if (dot->hasFocus()) { // the box of a refused text or a dead line may have taken it
            ShowPlate(section);
        }
    });
    std::vector<QWidget*> section_controls;
    for (const char* const name : {"Text3", "Slider2", "Text4", "Text5", "UpDown3"}) {
        section_controls.push_back(widgets_.Find(name, section));
    }
    lights_->Add(section, *dot, section_controls);
}

void ControlWindowView::ShowPlate(int section) {
    const QString text =
        QStringLiteral("%1 Hz   %2 dB   %3 Oct")
            .arg(FromBytes(form_.Text4[At(section)].Text()), SignedGain(form_.Text3[At(section)].Text()),
                 FromBytes(form_.Text5[At(section)].Text()));
    plates_[At(ChannelOfPeq(section))]->ShowAt(markers_[At(section)]->geometry().center(), text);
}

} // namespace nrv::ui
