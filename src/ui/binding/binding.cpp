#include "ui/binding/binding.h"

#include "ui/binding/text.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QTimer>

namespace nrv::ui {

using controls::Aspect;

bool ShowCommon(const controls::Control& control, QWidget& widget, Aspect aspect) {
    switch (aspect) {
    case Aspect::Visible:
        widget.setVisible(control.Visible());
        return true;
    case Aspect::Enabled:
        widget.setEnabled(control.Enabled());
        return true;
    case Aspect::ToolTip:
        widget.setToolTip(FromBytes(control.ToolTip()).toHtmlEscaped());
        return true;
    case Aspect::Repaint:
        widget.repaint();
        return true;
    default:
        return false;
    }
}

void ShowAllCommon(const controls::Control& control, QWidget& widget) {
    if (!control.Visible()) {
        widget.setVisible(false);
    }
    widget.setEnabled(control.Enabled());
    ShowCommon(control, widget, Aspect::ToolTip);
}

namespace {

/// Shows everything once, then each change as it comes.
template <class Control, class Widget, class Show>
void Follow(Control& control, Widget& widget, Show show) {
    ShowAllCommon(control, widget);
    show();
    control.Observe([&control, &widget, show](Aspect aspect) {
        if (!ShowCommon(control, widget, aspect)) {
            show();
        }
    });
}

} // namespace

void Bind(controls::Label& label, QLabel& widget) {
    widget.setTextFormat(Qt::PlainText);
    Follow(label, widget, [&] { widget.setText(FromBytes(label.Caption())); });
}

void Bind(controls::Button& button, QAbstractButton& widget, controls::EventBoundary& boundary) {
    Follow(button, widget, [&] { widget.setText(WithoutMnemonic(button.Caption())); });
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [&] { boundary.Run([&] { button.UserClick(); }); });
}

void Bind(controls::Option& option, QAbstractButton& widget, controls::EventBoundary& boundary) {
    // The group's rule lives in the controls; the toolkit would deselect its own idea of the siblings.
    widget.setAutoExclusive(false);
    widget.setCheckable(true);
    const auto show = [&] {
        widget.setText(WithoutMnemonic(option.Caption()));
        widget.setChecked(option.Selected());
    };
    Follow(option, widget, show);
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [&boundary, &option, show] {
        boundary.Run([&] { option.Select(); });
        show();
    });
}

void Bind(controls::CheckBox& box, QAbstractButton& widget, controls::EventBoundary& boundary) {
    widget.setCheckable(true);
    const auto show = [&] {
        widget.setText(WithoutMnemonic(box.Caption()));
        widget.setChecked(box.Checked());
    };
    Follow(box, widget, show);
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [&boundary, &box, show] {
        boundary.Run([&] { box.UserToggle(); });
        show();
    });
}

void Bind(controls::List& list, QComboBox& widget, controls::EventBoundary& boundary) {
    const auto fill = [&] {
        widget.clear();
        for (const std::string& item : list.Items()) {
            widget.addItem(FromBytes(item));
        }
        for (std::size_t i = 0; i < list.ItemToolTips().size(); ++i) {
            widget.setItemData(static_cast<int>(i), FromBytes(list.ItemToolTips()[i]).toHtmlEscaped(), Qt::ToolTipRole);
        }
        widget.setCurrentIndex(list.Shown());
    };
    const auto show = [&] { widget.setCurrentIndex(list.Shown()); };
    ShowAllCommon(list, widget);
    fill();
    list.Observe([&list, &widget, fill, show](Aspect aspect) {
        if (aspect == Aspect::Items) {
            fill();
        } else if (!ShowCommon(list, widget, aspect)) {
            show();
        }
    });
    QObject::connect(&widget, &QComboBox::activated, &widget, [&boundary, &list, show](int index) {
        boundary.Run([&] { list.UserSelect(index); });
        show();
    });
}

void Bind(controls::Timer& timer, QTimer& toolkit_timer, controls::EventBoundary& boundary) {
    toolkit_timer.setTimerType(Qt::PreciseTimer);
    const auto follow = [&] {
        if (!timer.Running()) {
            toolkit_timer.stop();
        } else if (!toolkit_timer.isActive() || toolkit_timer.interval() != timer.Interval()) {
            toolkit_timer.start(timer.Interval());
        }
    };
    follow();
    timer.Observe([follow](Aspect) { follow(); });
    QObject::connect(&toolkit_timer, &QTimer::timeout, &toolkit_timer,
                     [&] { boundary.Run([&] { controls::Run(timer.Tick); }); });
}

} // namespace nrv::ui
