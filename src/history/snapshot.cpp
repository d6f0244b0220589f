#include "history/snapshot.h"

#include "model/tables.h"
#include "ports/flag_guard.h"
#include "ports/numbering.h"
#include "ports/runtime_error.h"
#include "presets/channel_names.h"
#include "presets/parameters.h"
#include "response/view_options.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <type_traits>

namespace nrv::history {
namespace {

using model::CommandContext;
using presets::Parameter;
using presets::ParameterKind;
using response::Response;

template <class Value>
std::string Bytes(const Value& value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

template <class Value>
void FromBytes(const std::string& bytes, Value& value) {
    std::memcpy(&value, bytes.data(), sizeof value);
}

constexpr std::size_t InputTypeOption = extra::Options + 2;
constexpr std::size_t DelayUnitOption = extra::Options + 4;

/// In the order of `extra::Options`.
template <class Row>
auto OptionsOf(Row& values) {
    return std::array{&values.MuteWithPreset, &values.OptionBit3, &values.InputType, &values.OptionBit5,
                      &values.DelayUnit};
}

void SetOptions(model::ParamRow& values, const Snapshot& target) {
    std::size_t entry = extra::Options;
    for (double* const option : OptionsOf(values)) {
        FromBytes(target.Extras[entry++], *option);
    }
}

/// The byte whose bits belong to different things, such as the lock and the unit.
constexpr std::size_t ByteOfBits = offsetof(model::PresetImageRow, SystemPage) + model::OptionBitsAddress;

/// What is to hold where `from` became `to`, and `now` where something else changed it.
Snapshot Target(const Snapshot& now, const Snapshot& from, const Snapshot& to) {
    Snapshot target = now;
    const auto bytes = BytesOf(target.Image);
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        const unsigned changed = BytesOf(from.Image)[n] ^ BytesOf(to.Image)[n];
        const unsigned changed_since = bytes[n] ^ BytesOf(from.Image)[n];
        const unsigned taken = n == ByteOfBits ? changed & ~changed_since : changed_since == 0 ? changed : 0;
        bytes[n] = static_cast<std::uint8_t>((bytes[n] & ~taken) | (BytesOf(to.Image)[n] & taken));
    }
    for (std::size_t n = 0; n < extra::Count; ++n) {
        if (now.Extras[n] == from.Extras[n]) {
            target.Extras[n] = to.Extras[n];
        }
    }
    return target;
}

/// A code without an entry was never shown nor sent, and is not now: it is a byte of the image and nothing more.
bool Shown(const CommandContext& context, Parameter parameter) {
    try {
        presets::ShowParameter(context, parameter);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

void BringNames(const CommandContext& context, Response& response, const Snapshot& now, const Snapshot& target) {
    controls::TabControl& tabs = context.Form().SSTab1;
    const int tab = tabs.Tab();
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::size_t name = extra::Names + At(channel);
        const bool sent = !IsInput(channel) &&
                          presets::Differs({ParameterKind::ChannelName, OutputOf(channel)}, now.Image, target.Image);
        std::optional<FlagGuard> silent;
        if (!sent) {
            silent.emplace(context.Link.TxSuppressed); // one name, typed and padded
        }
        if (sent || now.Extras[name] != target.Extras[name]) {
            presets::NameChannel(context, channel, target.Extras[name]);
        }
    }
    presets::QuoteNames(context, response);
    tabs.SetTab(tab);
}

void BringViews(const CommandContext& context, Response& response, const Snapshot& target) {
    controls::FrmCtrl& form = context.Form();
    const auto& view = target.Image.ViewState;
    FromBytes(target.Extras[extra::ViewModes], response.ViewMode);
    FromBytes(target.Extras[extra::Overlays], response.OverlayMatrix);
    for (int channel = 0; channel < ChannelCount; ++channel) {
        form.Check3[At(channel)].ShowValue(view[model::ShowCursorStart + At(channel)]);
        response::ShowCursor(context, channel);
    }
    response::ShowSharedViews(context, response); // the boxes and options of the outputs
    for (const char option : target.Extras[extra::Sums]) {
        form.Option2[static_cast<unsigned char>(option)].ShowSelected();
    }
}

bool ViewsDiffer(const Snapshot& one, const Snapshot& other) {
    return one.Image.ViewState != other.Image.ViewState ||
           one.Extras[extra::ViewModes] != other.Extras[extra::ViewModes] ||
           one.Extras[extra::Overlays] != other.Extras[extra::Overlays] ||
           one.Extras[extra::Sums] != other.Extras[extra::Sums];
}

/// What no command puts back.
void BringTheRest(const CommandContext& context, const Snapshot& now, const Snapshot& target) {
    controls::FrmCtrl& form = context.Form();
    const auto bring = [&](std::size_t first, auto& boxes) {
        for (std::size_t n = 0; n < boxes.size(); ++n) {
            if (now.Extras[first + n] != target.Extras[first + n]) {
                boxes[n].SetText(target.Extras[first + n]);
            }
        }
    };
    bring(extra::DelayTexts, form.Text2);
    bring(extra::BandwidthTexts, form.Text5);
    for (int input = 0; input < InputCount; ++input) {
        form.Label400[At(input)].SetCaption(target.Extras[extra::Sockets + At(input)]);
    }
    form.Window.SetCaption(target.Extras[extra::Title]);
    FromBytes(target.Extras[extra::LastInputType], context.Stores.LastInputType);
    FromBytes(target.Extras[extra::InputTypeOfRow0], context.Stores.ParamValues[0].InputType);
    SetOptions(context.Values(), target);
    context.Image() = target.Image;
}

} // namespace

Snapshot Take(const CommandContext& context, const Response& response) {
    Snapshot snapshot{context.Image(), {}};
    const controls::FrmCtrl& form = context.Form();
    std::vector<std::string>& extras = snapshot.Extras;
    for (const controls::TextBox& text : form.Text2) {
        extras.push_back(text.Entered());
    }
    for (const controls::TextBox& text : form.Text5) {
        extras.push_back(text.Entered());
    }
    for (const std::string& name : context.Stores.ChannelNames[At(context.DeviceId())]) {
        extras.push_back(name);
    }
    for (int input = 0; input < InputCount; ++input) {
        extras.push_back(form.Label400[At(input)].Caption());
    }
    extras.push_back(form.Window.Caption());
    for (const double* const option : OptionsOf(context.Values())) {
        extras.push_back(Bytes(*option));
    }
    extras.push_back(Bytes(context.Stores.LastInputType));
    extras.push_back(Bytes(context.Stores.ParamValues[0].InputType));
    extras.push_back(Bytes(response.ViewMode));
    extras.push_back(Bytes(response.OverlayMatrix));
    std::string sums;
    for (std::size_t option = 0; option < form.Option2.size(); ++option) {
        if (form.Option2[option].Selected()) {
            sums += static_cast<char>(option);
        }
    }
    extras.push_back(sums);
    return snapshot;
}

void Bring(const CommandContext& context, Response& response, const Snapshot& from, const Snapshot& to) {
    const Snapshot now = Take(context, response);
    const Snapshot target = Target(now, from, to);
    const std::vector<Parameter> parameters = presets::Differing(now.Image, target.Image);
    context.Image() = target.Image;
    model::DecodeMuteBits(target.Image.SystemPage[model::MuteBitsAddress], context.Values());
    const bool many = parameters.size() > 1;
    {
        std::optional<FlagGuard> unplotted;
        if (many) {
            unplotted.emplace(response.PlotSuspended);
        }
        const auto run = [&](auto which) {
            for (const Parameter parameter : parameters) {
                if (which(parameter.Kind) && Shown(context, parameter)) {
                    presets::RunParameter(context, response, parameter);
                }
            }
        };
        using enum ParameterKind;
        run([](ParameterKind kind) { return kind != ChannelName && kind != MasterGain; });
        BringNames(context, response, now, target);
        run([](ParameterKind kind) { return kind == MasterGain; });
    }
    if (ViewsDiffer(now, target)) {
        BringViews(context, response, target);
    }
    BringTheRest(context, now, target);
    // The graphs that no command drew.
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const bool moved = std::ranges::any_of(parameters, [channel](Parameter parameter) {
            return parameter.Kind == ParameterKind::MasterGain ||
                   (parameter.Kind == ParameterKind::Gain && parameter.Index == channel);
        });
        if (many || moved) {
            response.RedrawChannel(channel);
        }
    }
}

Snapshot SettingsOver(const Snapshot& now, const Snapshot& preset) {
    Snapshot over = now;
    over.Image.PresetBody = preset.Image.PresetBody;
    const auto take_bits = [&](std::size_t address, unsigned bits) {
        std::uint8_t& byte = over.Image.SystemPage[address];
        byte = static_cast<std::uint8_t>((byte & ~bits) | (preset.Image.SystemPage[address] & bits));
    };
    take_bits(model::MuteBitsAddress, 0xFF);
    take_bits(model::OptionBitsAddress, model::InputTypeBit | model::DelayUnitBit);
    std::copy_n(preset.Extras.begin(), extra::Title, over.Extras.begin());
    if (over.Extras[InputTypeOption] != preset.Extras[InputTypeOption]) {
        over.Extras[extra::LastInputType] = preset.Extras[InputTypeOption]; // chosen, as by hand
    }
    over.Extras[InputTypeOption] = preset.Extras[InputTypeOption];
    over.Extras[DelayUnitOption] = preset.Extras[DelayUnitOption];
    return over;
}

int FramesBetween(const Snapshot& from, const Snapshot& to) {
    int frames = 0;
    for (const Parameter parameter : presets::Differing(from.Image, to.Image)) {
        frames += presets::FramesOf(parameter);
    }
    return frames;
}

} // namespace nrv::history
