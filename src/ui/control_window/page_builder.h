#pragma once

#include "controls/frm_ctrl.h"

#include <QHash>
#include <QLabel>
#include <QRect>
#include <QString>
#include <QWidget>

#include <string_view>
#include <utility>

namespace nrv::ui {

/// The object name of a control's widget: "Slider2(5)", or "SSTab1" for one that is no array's.
QString ControlName(std::string_view name, int index);

enum class TextRole { Plain, Caption, Scale };

/// Puts widgets at fixed places and knows each by the name of its control.
class PageBuilder {
  public:
    /// The widget of a control, a child of `parent` at `place`.
    template <class Widget, class... Arguments>
    Widget& Add(QWidget& parent, std::string_view name, int index, const QRect& place, Arguments&&... arguments) {
        auto* widget = new Widget(&parent, std::forward<Arguments>(arguments)...);
        widget->setGeometry(place);
        Enter(*widget, name, index);
        return *widget;
    }
    /// A text that stays as it is.
    QLabel& AddText(QWidget& parent, const QRect& place, const QString& text, TextRole role,
                    Qt::Alignment alignment = Qt::AlignCenter);

    /// Where the caption of a control stands that shows none itself.
    void AddCaption(QWidget& parent, std::string_view name, int index, const QRect& place);
    /// That text; null for a control that has none.
    QLabel* CaptionOf(std::string_view name, int index) const { return captions_.value(ControlName(name, index)); }

    /// Gives a widget its control's name.
    void Enter(QWidget& widget, std::string_view name, int index);
    /// The widget of a control; null for a control that has none.
    QWidget* Find(std::string_view name, int index) const { return widgets_.value(ControlName(name, index)); }

  private:
    QHash<QString, QWidget*> widgets_;
    QHash<QString, QLabel*> captions_;
};

} // namespace nrv::ui
