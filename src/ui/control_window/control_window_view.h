#pragma once

#include "controls/event_boundary.h"
#include "controls/frm_ctrl.h"
#include "ui/control_window/page_builder.h"

#include <QWidget>

#include <array>

class QTimer;

namespace nrv::ui {

class GraphView;
class MarkerDot;
class SectionLights;
class TabStrip;
class ValuePlate;

/// The inside of the window of one device: every control of the record as a widget under its name, at a fixed place.
///
/// A disabled frame disables what lies in it because what lies in it is its child.
class ControlWindowView : public QWidget {
    Q_OBJECT
  public:
    static constexpr int ViewWidth = 728;
    static constexpr int ViewHeight = 522;

    /// The record and the event boundary outlive the view, or the view is detached first.
    ControlWindowView(controls::FrmCtrl& form, const controls::EventEntry& entry, QWidget* parent = nullptr);
    ~ControlWindowView() override;

    /// Ends the binding: the record's changes no longer show, and nothing the user does reaches the record.
    void Detach();
    /// The surface of a channel's curves, 0 In A to 7 Out 6.
    GraphView& Graph(int channel) const { return *graphs_.at(static_cast<std::size_t>(channel)); }

    QSize sizeHint() const override { return {ViewWidth, ViewHeight}; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Build();
    void BindTabs();
    /// Tells who does not see the window what each control is.
    void Name();
    /// The keys that show the tabs, the order of the Tab key, and where it begins.
    void SetUpKeys();
    void BindMarker(int section);
    void ShowTab();
    void ShowPlate(int section);

    controls::FrmCtrl& form_;
    controls::EventEntry entry_;
    PageBuilder widgets_;
    TabStrip* tabs_ = nullptr;
    QTimer* timer_ = nullptr;
    SectionLights* lights_ = nullptr;
    std::array<QWidget*, controls::TabCount> pages_{};
    std::array<GraphView*, ChannelCount> graphs_{};
    std::array<MarkerDot*, PeqCount> markers_{};
    std::array<ValuePlate*, ChannelCount> plates_{};
    bool attached_ = true;
};

} // namespace nrv::ui
