#include "ui/widgets/fader.h"

#include "controls/value_controls.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace nrv::ui {
namespace {

constexpr double CapHeight = 9.0;
constexpr double CapWidth = 17.0;
constexpr double GrooveWidth = 3.0;
constexpr double EndMargin = 7.0; // from the widget's edge to the cap's middle at either end
constexpr double TickGap = 3.5;   // from the groove's middle to a tick
constexpr double TickLength = 3.5;
constexpr double ZeroTickLength = 7.0;
constexpr int RepeatMilliseconds = 90;
constexpr int SmallStep = controls::Fader::SmallStep;
constexpr int LargeStep = controls::Fader::LargeStep;

} // namespace

Fader::Fader(QWidget* parent)
    : QSlider(Qt::Vertical, parent), Spoken(QAccessible::Slider), colour_(CurrentTheme().Accent),
      repeat_(*this, RepeatMilliseconds) {
    setInvertedAppearance(true);
    setSingleStep(SmallStep);
    setPageStep(LargeStep);
    setFocusPolicy(Qt::StrongFocus);
}

void Fader::SetColour(const QColor& colour) {
    colour_ = colour;
    update();
}

void Fader::SetTicks(int spacing, int zero_position) {
    tick_spacing_ = std::max(spacing, 1);
    zero_position_ = zero_position;
    update();
}

double Fader::PlaceOf(int position) const {
    const int range = maximum() - minimum();
    const double length = height() - 2.0 * EndMargin;
    return EndMargin + (range > 0 ? length * (position - minimum()) / range : 0.0);
}

int Fader::PositionAt(double y) const {
    const double length = height() - 2.0 * EndMargin;
    const double share = length > 0.0 ? (y - EndMargin) / length : 0.0;
    const double position = minimum() + share * (maximum() - minimum());
    return static_cast<int>(std::lround(std::clamp<double>(position, minimum(), maximum())));
}

void Fader::MoveTo(int position) {
    const int target = std::clamp(position, minimum(), maximum());
    if (target != value() || outside_) {
        setValue(target);
        emit UserMoved(target);
    }
}

void Fader::StepTowards(double y) {
    const int wanted = PositionAt(y);
    const int here = value();
    MoveTo(wanted > here ? std::min(here + LargeStep, wanted) : std::max(here - LargeStep, wanted));
}

void Fader::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const double y = event->position().y();
    const double offset = y - PlaceOf(value());
    if (std::abs(offset) <= CapHeight / 2.0 + 1.5) {
        dragging_ = true;
        grip_ = offset;
        setSliderDown(true);
    } else {
        paging_to_ = y;
        repeat_.Press([this] { StepTowards(paging_to_); });
    }
    update();
}

void Fader::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_) {
        MoveTo(PositionAt(event->position().y() - grip_));
    } else {
        paging_to_ = event->position().y();
    }
}

void Fader::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const bool on_the_cap = dragging_;
        LetGo();
        if (on_the_cap && outside_) {
            MoveTo(value());
        }
    }
}

void Fader::LetGo() {
    dragging_ = false;
    repeat_.End();
    setSliderDown(false);
    update();
}

void Fader::timerEvent(QTimerEvent* event) {
    if (!repeat_.Tick(*event, [this] { StepTowards(paging_to_); })) {
        QSlider::timerEvent(event);
    }
}

void Fader::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        MoveTo(value() - SmallStep);
        break;
    case Qt::Key_Down:
    case Qt::Key_Left:
        MoveTo(value() + SmallStep);
        break;
    case Qt::Key_PageUp:
        MoveTo(value() - LargeStep);
        break;
    case Qt::Key_PageDown:
        MoveTo(value() + LargeStep);
        break;
    case Qt::Key_Home:
        MoveTo(reaches_ends_ ? minimum() : value());
        break;
    case Qt::Key_End:
        MoveTo(reaches_ends_ ? maximum() : value());
        break;
    default:
        event->ignore();
    }
}

void Fader::wheelEvent(QWheelEvent* event) {
    event->accept(); // what lies behind would scroll
    if (!hasFocus()) {
        return;
    }
    MoveTo(value() - wheel_.Take(*event) * SmallStep);
}

void Fader::changeEvent(QEvent* event) {
    // A disabled widget gets no release.
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        LetGo();
    }
    QSlider::changeEvent(event);
}

bool Fader::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        update();
    }
    // Neither a hidden widget nor one that lost the mouse to a box gets a release.
    if (event->type() == QEvent::Hide || event->type() == QEvent::UngrabMouse) {
        LetGo();
    }
    if (event->type() == QEvent::FocusOut) {
        wheel_.Reset();
    }
    return QSlider::event(event);
}

void Fader::PaintTicks(QPainter& painter) const {
    const double middle = width() / 2.0;
    const QColor plain = CurrentTheme().Line;
    for (int position = minimum(); position <= maximum(); position += tick_spacing_) {
        const double y = std::floor(PlaceOf(position));
        painter.fillRect(QRectF(middle - TickGap - TickLength, y, TickLength, 1.0), plain);
        painter.fillRect(QRectF(middle + TickGap, y, TickLength, 1.0), plain);
    }
    if (zero_position_ != NoZero) {
        const double y = std::floor(PlaceOf(zero_position_));
        const QColor strong = CurrentTheme().Dim;
        painter.fillRect(QRectF(middle - TickGap - ZeroTickLength, y, ZeroTickLength, 1.0), strong);
        painter.fillRect(QRectF(middle + TickGap, y, ZeroTickLength, 1.0), strong);
    }
}

void Fader::PaintCap(QPainter& painter) const {
    const Theme& theme = CurrentTheme();
    const double middle = width() / 2.0;
    const double y = std::floor(PlaceOf(value())) + 0.5;
    const QRectF cap(middle - CapWidth / 2.0, y - CapHeight / 2.0, CapWidth, CapHeight);
    const bool lively = isEnabled() && (isSliderDown() || underMouse());
    const QColor ground = theme.Dark ? QColor(0xE6, 0xEA, 0xEE) : QColor(Qt::white);
    const QColor fill = isEnabled() ? ground : theme.Panel;
    const QColor border = hasFocus() ? theme.Focus : lively ? theme.Text : Mixed(theme.Groove, theme.Dim, 0.5);
    DrawBox(painter, cap, fill, border, 2.5);
    if (hasFocus()) {
        DrawFocusFrame(painter, cap.adjusted(-1.0, -1.0, 1.0, 1.0), 3.5);
    }
    painter.fillRect(QRectF(cap.left() + 3.0, y - 1.0, CapWidth - 6.0, 2.0), isEnabled() ? colour_ : theme.Disabled);
}

void Fader::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    const double middle = width() / 2.0;
    PaintTicks(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.Groove);
    painter.drawRoundedRect(
        QRectF(middle - GrooveWidth / 2.0, EndMargin - 2.0, GrooveWidth, height() - 2.0 * EndMargin + 4.0), 1.5, 1.5);
    if (zero_position_ != NoZero) {
        const double from = PlaceOf(zero_position_);
        const double to = PlaceOf(value());
        painter.fillRect(QRectF(middle - GrooveWidth / 2.0, std::min(from, to), GrooveWidth, std::abs(to - from)),
                         isEnabled() ? colour_ : theme.Disabled);
    }
    PaintCap(painter);
}

} // namespace nrv::ui
