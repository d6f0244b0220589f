#include "presets/read_dialog.h"

#include "controls/busy_pointer.h"
#include "model/encodings.h"
#include "model/number_text.h"
#include "ports/flag_guard.h"
#include "ports/runtime_error.h"
#include "presets/apply_image.h"
#include "presets/memory_positions.h"
#include "presets/preset_titles.h"

#include <array>
#include <utility>

namespace nrv::presets {
namespace {

constexpr const char* Title = "Read Preset";

/// The mute byte goes to the channels shifted: bits 2 and 3 overwrite bits 0 and 1, and the inputs stay; that is meant,
/// and applying the image puts it right or not.
void DecodeShiftedMutes(std::uint8_t bits, model::ParamRow& values) {
    constexpr std::array<std::size_t, 8> ChannelOfBit{2, 3, 2, 3, 4, 5, 6, 7};
    for (std::size_t bit = 0; bit < ChannelOfBit.size(); ++bit) {
        values.ChannelMute[ChannelOfBit[bit]] = model::DecodeBit(bits, static_cast<int>(bit));
    }
}

} // namespace

ReadDialog::ReadDialog(ToolContext context, controls::FrmRead& form) : context_(std::move(context)), form_(form) {
    form_.Command1[0].Clicked = [this] { context_.Host.CloseDialog(ToolDialog::Read); };
    form_.Command1[1].Clicked = [this] { Read(); };
}

void ReadDialog::Open() {
    ListPositions(context_.Commands, form_.List1);
    form_.List1.Select(0);
    context_.RunDialog(ToolDialog::Read);
}

void ReadDialog::Read() {
    const int position = form_.List1.Shown();
    if (!HoldsPreset(context_.Commands.Values(), At(position))) {
        context_.Boxes.Show({"Preset empty", Title, BoxIcon::Critical});
        return;
    }
    if (context_.Boxes.Show({"Overwrite current editing, are you sure ? ", Title, BoxIcon::None, BoxButtons::YesNo,
                             BoxAnswer::No}) != BoxAnswer::Yes) {
        return;
    }
    {
        const controls::BusyPointer busy(context_.MainWindow);
        ReadPreset(position);
    }
    context_.Host.CloseDialog(ToolDialog::Read);
}

void ReadDialog::ReadPreset(int position) {
    context_.Current().Call("the read", Operation::Untold);
    context_.Current().Title("read of \"" + model::TrimBlanks(context_.Commands.Values().PresetNames[At(position)]) +
                             '"');
    // In demo mode the image is applied as it stands, and counts as the position.
    const Fetched fetched = context_.Commands.Link.DemoMode ? Fetched::Position : Fetch(position);
    if (fetched == Fetched::Nothing) {
        return;
    }
    try {
        Apply();
    } catch (const RuntimeError&) {
        // What came before the code without an entry is applied, and its graphs were cleared and not drawn.
        context_.Current().Leave(Operation::Leaves::Pieces);
        RedrawAll();
        throw;
    }
    RedrawAll();
    if (fetched == Fetched::Position) {
        context_.Current().Leave(Operation::Leaves::Preset);
        TitleFromDevice(context_.Commands, At(position));
        context_.TellApplied();
    }
}

void ReadDialog::Apply() {
    const FlagGuard suppressed(context_.Commands.Link.TxSuppressed);
    const FlagGuard unplotted(context_.Response.PlotSuspended);
    ApplyImage(context_.Commands, context_.Response, ImageCase::FromDevice);
}

void ReadDialog::RedrawAll() {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        context_.Response.RedrawChannel(channel);
    }
}

ReadDialog::Fetched ReadDialog::Fetch(int position) {
    link::Link& link = context_.Commands.Link;
    const int id = context_.Commands.DeviceId();
    if (link.MemoryRead(id, static_cast<int>(model::MuteBitsAddress))) {
        return Fetched::Nothing;
    }
    model::PresetImageRow& image = context_.Commands.Image();
    image.SystemPage[model::MuteBitsAddress] = link.MemoryValue();
    DecodeShiftedMutes(link.MemoryValue(), context_.Commands.Values());
    try {
        const bool came = link.FetchPreset(id, static_cast<std::uint8_t>(position), model::OnDevice(image));
        return came ? Fetched::Position : Fetched::WhatTheBufferHeld;
    } catch (const RuntimeError& error) {
        link.ReportLost(error);
        return Fetched::Nothing;
    }
}

} // namespace nrv::presets
