#pragma once

#include <QPoint>

class QWidget;

namespace nrv::ui {

class PageBuilder;
class Panel;

// Each builds one part of the window; the page or panel is its parent.

void BuildToolbar(PageBuilder& builder, QWidget& window);
/// The tab strip and the marks of the channels on it.
void BuildTabs(PageBuilder& builder, QWidget& window);
void BuildChannelPage(PageBuilder& builder, QWidget& page, int channel);
void BuildGainsPage(PageBuilder& builder, QWidget& page);
void BuildDelaysPage(PageBuilder& builder, QWidget& page);
void BuildOverviewPage(PageBuilder& builder, QWidget& page);

/// The lower row of a channel's tab: crossover and routing, equaliser, shelving, dynamics.
void BuildChannelFilters(PageBuilder& builder, QWidget& page, int channel);
/// What a delay strip holds, in a panel that is already named; `index` is that of the panel.
void FillDelayStrip(PageBuilder& builder, Panel& panel, int index, QPoint field, QPoint adjust, QPoint fine);
/// The box "180 '" in its frame "Phase".
void AddPhase(PageBuilder& builder, Panel& panel, int index, QPoint place);

} // namespace nrv::ui
