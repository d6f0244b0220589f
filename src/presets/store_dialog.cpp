#include "presets/store_dialog.h"

#include "controls/busy_pointer.h"
#include "model/encodings.h"
#include "model/number_text.h"
#include "presets/memory_positions.h"
#include "presets/preset_titles.h"

#include <utility>

namespace nrv::presets {
namespace {

constexpr std::size_t PresetAddress = 640;
/// Mute byte, used mark, name and preset, a byte a frame.
constexpr int Frames = 2 + MemoryNameLength + model::PresetBodyOnDevice;
/// The store makes 450 steps, so the bar never fills; that is meant.
constexpr int BarMaximum = 480;
/// The byte of the view state that goes to the device's mute bits: the first box of the fourth row. A slip that is
/// kept.
constexpr std::size_t SentAsMuteBits = 18;

/// What a store into a position takes away, as the end of a sentence.
std::string Over(const model::CommandContext& context, std::size_t position) {
    return HoldsPreset(context.Values(), position)
               ? ", over \"" + model::TrimBlanks(context.Values().PresetNames[position]) + "\""
               : ", which is empty";
}

} // namespace

StoreDialog::StoreDialog(ToolContext context, controls::FrmStore& form) : context_(std::move(context)), form_(form) {
    form_.Command1[0].Clicked = [this] { context_.Host.CloseDialog(ToolDialog::Store); };
    form_.Command1[1].Clicked = [this] { Store(); };
    form_.List1.DoubleClicked = [this] { CopyName(); };
    // One choice in two places.
    form_.List1.Chosen = [this] { form_.Combo1.Select(form_.List1.Shown()); };
    form_.Combo1.Chosen = [this] { form_.List1.Select(form_.Combo1.Shown()); };
}

void StoreDialog::Open() {
    form_.ProgressBar1.SetVisible(false);
    form_.ProgressBar1.SetValue(0);
    ListPositions(context_.Commands, form_.List1);
    form_.List1.Select(0);
    CopyName();
    context_.RunDialog(ToolDialog::Store);
}

void StoreDialog::CopyName() {
    form_.Text1.SetText(form_.List1.ShownText());
    form_.Combo1.Select(form_.List1.Shown());
}

void StoreDialog::Store() {
    const int position = form_.Combo1.Shown();
    std::string name = form_.Text1.Text();
    context_.Tell("Stores \"" + model::TrimBlanks(name) + "\" into position " + std::to_string(position + 1) +
                  Over(context_.Commands, At(position)));
    const bool sure = context_.Boxes.AreYouSure("Store Preset", BoxAnswer::No);
    if (sure) {
        const controls::BusyPointer busy(context_.MainWindow);
        StorePreset(position, name);
    }
    if (!context_.Current().Reported()) {
        context_.Tell({}); // it is over; a failure has words of its own
    }
    if (!sure) {
        return;
    }
    context_.Host.CloseDialog(ToolDialog::Store);
}

void StoreDialog::StorePreset(int position, std::string& name) {
    const std::size_t p = At(position);
    model::ParamRow& values = context_.Commands.Values();
    model::PresetImageRow& image = context_.Commands.Image();
    if (name.size() < MemoryNameLength) {
        name.resize(MemoryNameLength, ' ');
    }
    values.PresetNames[p] = name.substr(0, MemoryNameLength);
    for (std::size_t i = 0; i < MemoryNameLength; ++i) {
        image.SystemPage[model::PresetNamesAddress + MemoryNameLength * p + i] = static_cast<std::uint8_t>(name[i]);
    }
    form_.ProgressBar1.SetValue(0);
    form_.ProgressBar1.SetMaximum(BarMaximum);
    form_.ProgressBar1.SetVisible(true);
    form_.ProgressBar1.Refresh();
    model::StoreMuteBits(model::SumOfMutes(values), image);
    context_.Current().Call("the store", Frames);
    if (WriteAll(p)) {
        return;
    }
    context_.Current().Leave(Operation::Leaves::Copy);
    TitleFromDevice(context_.Commands, p);
    form_.ProgressBar1.SetVisible(false);
}

bool StoreDialog::WriteAll(std::size_t position) {
    model::PresetImageRow& image = context_.Commands.Image();
    if (Write(model::MuteBitsAddress, image.ViewState[SentAsMuteBits]) ||
        Write(model::PresetUsedAddress + position, model::PresetUsedMark)) {
        return true;
    }
    context_.Commands.Values().PresetUsed[position] = model::PresetUsedMark;
    const std::size_t name = model::PresetNamesAddress + MemoryNameLength * position;
    for (std::size_t address = name; address < name + MemoryNameLength; ++address) {
        if (Write(address, image.SystemPage[address])) {
            return true;
        }
    }
    for (std::size_t i = 0; i < model::PresetBodyOnDevice; ++i) {
        if (Write(PresetAddress + model::PresetBodyOnDevice * position + i, image.PresetBody[i])) {
            return true;
        }
    }
    return false;
}

bool StoreDialog::Write(std::size_t address, std::uint8_t value) {
    if (context_.Commands.Link.MemoryWrite(context_.Commands.DeviceId(), static_cast<int>(address), value)) {
        return true;
    }
    form_.ProgressBar1.SetValue(form_.ProgressBar1.Value() + 1);
    form_.ProgressBar1.Refresh();
    return false;
}

} // namespace nrv::presets
