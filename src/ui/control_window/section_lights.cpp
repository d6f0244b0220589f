#include "ui/control_window/section_lights.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"
#include "ui/widgets/marker_dot.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QVariant>
#include <QWidget>

namespace nrv::ui {
namespace {

constexpr const char* SectionProperty = "section";
constexpr int NumberHeight = 14; // the section's number stands above its controls
constexpr int NoSection = -1;

/// The soft ground behind a column; lets the mouse through.
class ColumnGround : public QWidget {
  public:
    explicit ColumnGround(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

  protected:
    void paintEvent(QPaintEvent*) override {
        const Theme& theme = CurrentTheme();
        QPainter painter(this);
        DrawBox(painter, rect(), Mixed(theme.Panel, theme.Focus, 0.16), Mixed(theme.Panel, theme.Focus, 0.45), 3.0);
    }
};

int SectionOf(const QObject* object) {
    const QVariant section = object != nullptr ? object->property(SectionProperty) : QVariant();
    return section.isValid() ? section.toInt() : NoSection;
}

} // namespace

SectionLights::SectionLights(QObject* parent) : QObject(parent) {
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FollowFocus(now); });
}

void SectionLights::Add(int section, MarkerDot& dot, const std::vector<QWidget*>& controls) {
    Section& entry = sections_.at(static_cast<std::size_t>(section));
    entry.Dot = &dot;
    entry.Panel = controls.front()->parentWidget();
    dot.setProperty(SectionProperty, section);
    for (QWidget* control : controls) {
        control->setProperty(SectionProperty, section);
        control->installEventFilter(this);
        entry.Column |= control->geometry();
    }
    entry.Column.adjust(-1, -NumberHeight, 1, 3);
    connect(&dot, &MarkerDot::HoverChanged, this, [this, section, &entry](bool hovered) {
        entry.Hovered = hovered;
        Show(section);
    });
    for (const auto change : {&MarkerDot::Pressed, &MarkerDot::Released, &MarkerDot::TakenAway}) {
        connect(&dot, change, this, [this, section] { Show(section); });
    }
}

bool SectionLights::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Enter || type == QEvent::Leave || type == QEvent::Hide) {
        const int section = SectionOf(watched);
        Section& entry = sections_.at(static_cast<std::size_t>(section));
        if (type == QEvent::Enter) {
            entry.Pointed = watched;
        } else if (entry.Pointed == watched) {
            entry.Pointed = nullptr;
        }
        Show(section);
    }
    return false;
}

void SectionLights::FollowFocus(const QWidget* now) {
    // Another window's sections carry the same numbers.
    const int wanted = SectionOf(now);
    const bool ours = wanted != NoSection && (sections_[static_cast<std::size_t>(wanted)].Dot == now ||
                                              sections_[static_cast<std::size_t>(wanted)].Panel == now->parentWidget());
    const int section = ours ? wanted : NoSection;
    if (section == focused_) {
        return;
    }
    const int before = focused_;
    focused_ = section;
    for (const int changed : {before, section}) {
        if (changed != NoSection) {
            sections_[static_cast<std::size_t>(changed)].Focused = changed == section;
            Show(changed);
        }
    }
}

void SectionLights::Show(int section) {
    Section& entry = sections_[static_cast<std::size_t>(section)];
    const bool lit = entry.Hovered || entry.Focused || entry.Pointed != nullptr || entry.Dot->InHand();
    if (lit == entry.Lit) {
        return;
    }
    entry.Lit = lit;
    Light(entry);
    // What the pointer is on stays on top, whichever section has the keyboard.
    for (const Section& other : sections_) {
        if (other.Dot != nullptr && (other.Hovered || other.Dot->InHand())) {
            other.Dot->raise();
        }
    }
}

void SectionLights::Light(Section& section) {
    if (section.Ground == nullptr) {
        section.Ground = new ColumnGround(section.Panel);
        section.Ground->setGeometry(section.Column);
        section.Ground->lower();
    }
    section.Ground->setVisible(section.Lit);
    section.Dot->SetHighlighted(section.Lit);
}

} // namespace nrv::ui
