#include "ui/control_window/control_binder.h"

#include "ui/binding/binding.h"
#include "ui/binding/follow.h"
#include "ui/binding/subscription.h"
#include "ui/binding/text.h"
#include "ui/control_window/page_builder.h"
#include "ui/look/tool_icons.h"
#include "ui/widgets/block.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/graph_view.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"
#include "ui/widgets/up_down_arrows.h"
#include "ui/widgets/value_text.h"

#include <QAbstractButton>

namespace nrv::ui {

using controls::Aspect;

namespace {

constexpr auto NothingMore = [] {};

} // namespace

template <class Widget>
Widget* ControlBinder::WidgetOf(std::string_view name, int index) const {
    return qobject_cast<Widget*>(widgets_.Find(name, index));
}

void ControlBinder::operator()(std::string_view name, int index, controls::Frame& frame) {
    if (auto* panel = WidgetOf<Panel>(name, index)) {
        Bind(frame, *panel);
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Button& button) {
    if (auto* widget = WidgetOf<QAbstractButton>(name, index)) {
        if (name == "Command2") {
            Follow(button, *widget, [&button, widget, index] { widget->setIcon(ToolIcon(index, button.InForce())); });
            BindClick(button, *widget, entry_);
        } else {
            Bind(button, *widget, entry_);
        }
        widget->setAccessibleName(FromBytes(button.Caption().empty() ? button.ToolTip() : button.Caption()));
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Shape& shape) {
    if (auto* lamp = WidgetOf<Lamp>(name, index)) {
        Follow(shape, *lamp, [&shape, lamp] {
            const controls::Colour fill = shape.Fill();
            shape.Lit() ? lamp->Light(QColor(fill.Red, fill.Green, fill.Blue)) : lamp->Extinguish();
        });
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Fader& fader) {
    auto* widget = WidgetOf<Fader>(name, index);
    if (widget == nullptr) {
        return;
    }
    const auto show = [&fader, widget] {
        const bool outside = fader.Position() != fader.Shown();
        widget->ShowPosition(fader.Shown());
        widget->SetOutside(outside);
        // Codes count from the fader's foot.
        widget->setToolTip(
            outside ? QStringLiteral("The device holds %1, outside the scale").arg(fader.Maximum() - fader.Position())
                    : FromBytes(fader.ToolTip()));
    };
    const auto set_up = [&fader, widget] {
        widget->setRange(fader.Minimum(), fader.Maximum());
        widget->SetTicks(fader.TickSpacing(), fader.ZeroPosition());
    };
    set_up();
    ShowAllCommon(fader, *widget);
    show();
    Subscribe(*widget, fader, [&fader, widget, show, set_up](Aspect aspect) {
        if (aspect == Aspect::Items) {
            set_up();
        }
        if (!ShowCommon(fader, *widget, aspect)) {
            show();
        }
    });
    QObject::connect(widget, &Fader::UserMoved, widget, [entry = entry_, &fader, show](int position) {
        entry.Run([&] { fader.UserMove(position); });
        show();
    });
}

void ControlBinder::operator()(std::string_view name, int index, controls::TextBox& box) {
    if (auto* field = WidgetOf<TextField>(name, index)) {
        Bind(box, *field, entry_, Typing::WaitsForEnter);
    } else if (auto* text = WidgetOf<ValueText>(name, index)) {
        Follow(box, *text, [&box, text] {
            text->ShowText(FromBytes(box.Text()));
            text->SetMarked(box.Marked());
        });
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::CheckBox& box) {
    if (auto* widget = WidgetOf<QAbstractButton>(name, index)) {
        Bind(box, *widget, entry_);
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::UpDown& up_down) {
    if (auto* arrows = WidgetOf<UpDownArrows>(name, index)) {
        Follow(up_down, *arrows, NothingMore);
        arrows->setAccessibleName(FromBytes(up_down.Caption()));
        if (QLabel* const caption = widgets_.CaptionOf(name, index)) {
            caption->setText(FromBytes(up_down.Caption()));
        }
        QObject::connect(arrows, &UpDownArrows::Stepped, arrows,
                         [entry = entry_, &up_down](int steps) { entry.Run([&] { up_down.UserStep(steps); }); });
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::List& list) {
    if (auto* box = WidgetOf<ListBox>(name, index)) {
        Bind(list, *box, entry_);
        box->HeldOutside = [&list] {
            return list.Index() != list.Shown()
                       ? QStringLiteral("The device holds %1, outside the list").arg(list.Index())
                       : QString();
        };
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Label& label) {
    if (auto* block = WidgetOf<Block>(name, index)) {
        Follow(label, *block, [&label, block] { block->SetCaption(FromBytes(label.Caption())); });
        QObject::connect(block, &QAbstractButton::clicked, block,
                         [entry = entry_, &label] { entry.Run([&] { label.UserClick(); }); });
    } else if (auto* text = WidgetOf<QLabel>(name, index)) {
        Bind(label, *text);
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Option& option) {
    if (auto* widget = WidgetOf<QAbstractButton>(name, index)) {
        Bind(option, *widget, entry_);
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Picture& picture) {
    if (auto* graph = WidgetOf<GraphView>(name, index)) {
        graph->ShowPicture(&picture);
        Follow(picture, *graph, [graph] { graph->update(); });
    } else if (QWidget* widget = widgets_.Find(name, index)) {
        Follow(picture, *widget, NothingMore);
    }
}

void ControlBinder::operator()(std::string_view name, int index, controls::Line& line) {
    if (QWidget* widget = widgets_.Find(name, index)) {
        Follow(line, *widget, NothingMore);
    }
}

} // namespace nrv::ui
