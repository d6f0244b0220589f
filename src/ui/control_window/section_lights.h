#pragma once

#include "controls/frm_ctrl.h"

#include <QObject>
#include <QRect>

#include <array>
#include <vector>

class QWidget;

namespace nrv::ui {

class MarkerDot;

/// Shows which point of a graph belongs to which column of controls. A section whose point is hovered or in hand, or
/// whose point or controls have the keyboard or lie under the pointer, is lit: its point has a ring, its column a soft
/// ground.
class SectionLights : public QObject {
    Q_OBJECT
  public:
    explicit SectionLights(QObject* parent);

    /// The point and the controls of a section, 0 to 43; all controls are children of one panel.
    void Add(int section, MarkerDot& dot, const std::vector<QWidget*>& controls);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Section {
        MarkerDot* Dot = nullptr;
        QWidget* Panel = nullptr;
        QRect Column;
        QWidget* Ground = nullptr;        ///< made when it is first needed
        const QObject* Pointed = nullptr; ///< the control under the pointer
        bool Hovered = false;             ///< the point is under the pointer
        bool Focused = false;
        bool Lit = false;
    };

    void FollowFocus(const QWidget* now);
    void Show(int section);
    void Light(Section& section);

    std::array<Section, PeqCount> sections_;
    int focused_ = -1;
};

} // namespace nrv::ui
