#pragma once

#include "rack_desk.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSlider>

#include <array>
#include <random>

namespace nrv::test {

/// What is typed into a widget.
enum class Input { None, Hertz, Delay };
/// Widgets of one name, by their number.
struct WidgetKind {
    const char* Name = "";
    int Count = 0;
    Input Typed = Input::None;
};
inline constexpr std::array WidgetKinds{WidgetKind{"Slider1", 16},
                                        WidgetKind{"Slider2", 44},
                                        WidgetKind{"Slider3", 10},
                                        WidgetKind{"Slider4", 8},
                                        WidgetKind{"Slider5", 8},
                                        WidgetKind{"Slider6", 8},
                                        WidgetKind{"UpDown1", 16},
                                        WidgetKind{"UpDown2", 16},
                                        WidgetKind{"UpDown3", 44},
                                        WidgetKind{"Combo1", 10},
                                        WidgetKind{"Combo2", 12},
                                        WidgetKind{"Combo3", 6},
                                        WidgetKind{"Check1", 16},
                                        WidgetKind{"Check2", 16},
                                        WidgetKind{"Check3", 8},
                                        WidgetKind{"Check4", 6},
                                        WidgetKind{"Check8", 6},
                                        WidgetKind{"Option1", 2},
                                        WidgetKind{"Option2", 18},
                                        WidgetKind{"Label5", 44},
                                        WidgetKind{"Text4", 44, Input::Hertz},
                                        WidgetKind{"Text7", 10, Input::Hertz},
                                        WidgetKind{"Text8", 12, Input::Hertz},
                                        WidgetKind{"Text2", 16, Input::Delay}};

/// Works the widgets of control windows by chance, with the keys and clicks of a user, on whatever tab they lie.
class WidgetEdits {
  public:
    WidgetEdits(RackDesk& desk, unsigned seed) : desk_(desk), random_(seed) {}

    int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    /// One edit in a window; gives the name of the widget that was worked.
    QString Edit(int slot) {
        while (true) {
            const WidgetKind& kind = WidgetKinds[static_cast<std::size_t>(Below(int(WidgetKinds.size())))];
            QWidget* const widget = desk_.Control(kind.Name, Below(kind.Count), slot);
            if (widget == nullptr || !widget->isEnabled()) {
                continue;
            }
            ShowTabOf(*widget, slot);
            if (widget->isVisible()) {
                Work(*widget, kind.Typed);
                return widget->objectName();
            }
        }
    }

  private:
    void ShowTabOf(const QWidget& widget, int slot) {
        for (const QWidget* above = &widget; above != nullptr; above = above->parentWidget()) {
            if (above->objectName().startsWith(QStringLiteral("Page("))) {
                if (!above->isVisible()) {
                    desk_.ShowTab(above->objectName().mid(5).chopped(1).toInt(), slot);
                }
                return;
            }
        }
    }

    void Work(QWidget& widget, Input typed) {
        if (typed != Input::None) {
            const QString text = typed == Input::Hertz
                                     ? QString::number(20 + Below(20000))
                                     : QStringLiteral("%1.%2").arg(Below(50)).arg(Below(1000), 3, 10, QLatin1Char('0'));
            Type(&widget, text);
            driver::Press(&widget, Qt::Key_Return);
        } else if (qobject_cast<QSlider*>(&widget) != nullptr) {
            MoveFader(widget);
        } else if (auto* list = qobject_cast<QComboBox*>(&widget)) {
            driver::Choose(list, Below(list->count()));
        } else if (widget.objectName().startsWith(QStringLiteral("UpDown"))) {
            for (int times = Below(3); times >= 0; --times) {
                QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier,
                                  QPoint(widget.width() / 2, widget.height() * (Below(2) == 0 ? 1 : 3) / 4));
            }
        } else if (widget.objectName().startsWith(QStringLiteral("Label5"))) {
            const QWidget& paper = *widget.parentWidget();
            driver::Drag(&widget, {QPoint(Below(paper.width()), Below(paper.height())),
                                   QPoint(Below(paper.width()), Below(paper.height()))});
        } else {
            driver::ClickMark(&widget);
        }
    }

    void MoveFader(QWidget& fader) {
        constexpr std::array keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
        if (Below(4) == 0) {
            QTest::mouseClick(&fader, Qt::LeftButton, Qt::NoModifier,
                              QPoint(fader.width() / 2, 4 + Below(fader.height() - 8)));
        } else {
            driver::Press(&fader, keys[static_cast<std::size_t>(Below(int(keys.size())))]);
        }
    }

    RackDesk& desk_;
    std::mt19937 random_;
};

} // namespace nrv::test
