#include "simulator/device.h"

#include <algorithm>
#include <stdexcept>

namespace nrv::simulator {
namespace {

/// Where a channel's block begins in the preset: 72 bytes an input, then 48 bytes an output.
constexpr std::size_t BlockStart(std::size_t channel) {
    return channel < 2 ? 72 * channel : 144 + 48 * (channel - 2);
}

/// Where the fields lie in a channel's block; the two kinds of channel have the same fields in another order.
struct BlockLayout {
    std::size_t Gain;
    std::size_t Delay;
    std::size_t Peq;
    std::size_t PeqCount;
    std::size_t Tone;
    std::size_t ToneCount;
    std::size_t Phase;
    std::size_t Limiter;
};
constexpr BlockLayout InputBlock{1, 2, 5, 10, 55, 2, 65, 66};
constexpr BlockLayout OutputBlock{40, 31, 6, 4, 26, 1, 38, 34};

// Fields that outputs alone have.
constexpr std::size_t OutputSourceOffset = 41;
constexpr std::size_t OutputNameOffset = 42;

bool IsPresenceQuestion(const Frame& request) {
    return std::all_of(request.begin() + 3, request.end() - 1, [](Byte value) { return value == 0; });
}

std::size_t Address(const Frame& request) {
    return std::size_t{P(request, 2)} * 256 + P(request, 3);
}

void CheckPosition(int position) {
    if (position < 0 || position >= PositionCount) {
        throw std::invalid_argument("memory position " + std::to_string(position) + " is not 0 to 8");
    }
}

} // namespace

Device::Device(int id, std::string_view label)
    : id_(id), memory_(FactoryMemory(label.empty() ? FactoryLabel(id) : label)), live_(FactoryPreset()) {
    if (id < 0 || id > HighestId) {
        throw std::invalid_argument("device ID " + std::to_string(id) + " is not 0 to 32");
    }
}

std::optional<Reply> Device::Handle(const Frame& request, const Levels& moving) {
    // An acknowledgement is the request itself, with the bytes that were asked for put into it.
    Reply reply(request.begin(), request.end());
    const auto command = static_cast<Command>(P(request, 1));
    switch (command) {
    case Command::Presence:
        if (!IsPresenceQuestion(request)) {
            return std::nullopt;
        }
        reply[4] = PresenceMark;
        return reply;
    case Command::Unconnect:
    case Command::ExitNotice:
        return std::nullopt;
    case Command::MemoryRead:
        reply[8] = Memory(Address(request));
        return reply;
    case Command::MemoryWrite:
        SetMemory(Address(request), P(request, 6));
        return reply;
    case Command::LevelPoll:
        std::ranges::copy(fixed_levels_.value_or(moving), reply.begin() + 4);
        return reply;
    case Command::PresetRead: {
        if (P(request, 2) == LivePreset) {
            return Reply(live_.begin(), live_.end());
        }
        if (P(request, 2) >= PositionCount) {
            return std::nullopt;
        }
        const PresetBody body = Preset(P(request, 2));
        return Reply(body.begin(), body.end());
    }
    case Command::Gain:
    case Command::Delay:
    case Command::Phase:
    case Command::Crossover:
    case Command::Peq:
    case Command::Tone:
    case Command::Limiter:
    case Command::Source:
    case Command::Mute:
    case Command::BulkUpdate:
    case Command::MasterGain:
    case Command::InputType:
    case Command::ChannelName:
        SetParameter(request);
        return reply;
    }
    return std::nullopt;
}

void Device::SetParameter(const Frame& request) {
    const auto command = static_cast<Command>(P(request, 1));
    switch (command) {
    case Command::BulkUpdate:
        bulk_updating_ = P(request, 2) == 0;
        break;
    case Command::MasterGain:
        Set(MasterGainOffset, P(request, 9));
        break;
    case Command::InputType: {
        const unsigned others = memory_[OptionBitsAddress] & ~unsigned{InputTypeBit};
        memory_[OptionBitsAddress] = static_cast<Byte>(P(request, 9) != 0 ? others | InputTypeBit : others);
        break;
    }
    default:
        if (P(request, 2) < ChannelCount) {
            SetChannelParameter(command, request);
        }
        break;
    }
}

void Device::SetChannelParameter(Command command, const Frame& request) {
    const std::size_t channel = P(request, 2);
    const std::size_t start = BlockStart(channel);
    const BlockLayout& layout = channel < InputCount ? InputBlock : OutputBlock;
    const std::size_t section = P(request, 3);
    switch (command) {
    case Command::Gain:
        Set(start + layout.Gain, P(request, 9));
        break;
    case Command::Delay:
        Set(start + layout.Delay, P(request, 7));
        Set(start + layout.Delay + 1, P(request, 8));
        Set(start + layout.Delay + 2, P(request, 9));
        break;
    case Command::Phase:
        Set(start + layout.Phase, P(request, 9));
        break;
    case Command::Peq:
    case Command::Tone: {
        const bool peq = command == Command::Peq;
        if (section >= (peq ? layout.PeqCount : layout.ToneCount)) {
            break;
        }
        const std::size_t block = start + (peq ? layout.Peq : layout.Tone) + 5 * section;
        Set(block + 1, P(request, 6));
        Set(block + 2, P(request, 7));
        Set(block + 4, P(request, 9));
        break;
    }
    case Command::Limiter:
        Set(start + layout.Limiter, P(request, 6));
        Set(start + layout.Limiter + 1, P(request, 7));
        Set(start + layout.Limiter + 3, P(request, 9));
        break;
    case Command::Mute: {
        const unsigned bit = 1U << channel;
        const unsigned others = live_[PresetMutesOffset] & ~bit;
        Set(PresetMutesOffset, static_cast<Byte>(P(request, 9) != 0 ? others | bit : others));
        break;
    }
    default:
        if (channel >= InputCount) {
            SetOutputParameter(command, request);
        }
        break;
    }
}

void Device::SetOutputParameter(Command command, const Frame& request) {
    const std::size_t start = BlockStart(P(request, 2));
    if (command == Command::Crossover && P(request, 3) < 2) {
        const std::size_t block = start + std::size_t{3} * P(request, 3);
        Set(block + 1, P(request, 8));
        Set(block + 2, P(request, 9));
    } else if (command == Command::Source) {
        Set(start + OutputSourceOffset, P(request, 9));
    } else if (command == Command::ChannelName) {
        for (std::size_t j = 0; j < 6; ++j) {
            Set(start + OutputNameOffset + j, P(request, 4 + j));
        }
    }
}

Byte Device::Memory(std::size_t address) const {
    return address < memory_.size() ? memory_[address] : Byte{0};
}

void Device::SetMemory(std::size_t address, Byte value) {
    if (address < memory_.size()) {
        memory_[address] = value;
    }
}

std::string Device::Label() const {
    return Text(LabelAddress, NameSize);
}
void Device::SetLabel(std::string_view label) {
    SetText(LabelAddress, NameSize, label);
}
std::string Device::Password() const {
    return Text(PasswordAddress, PasswordSize);
}
void Device::SetPassword(std::string_view password) {
    SetText(PasswordAddress, PasswordSize, password);
}

bool Device::Locked() const {
    return (memory_[OptionBitsAddress] & LockBit) != 0;
}

void Device::SetLocked(bool locked) {
    const unsigned others = memory_[OptionBitsAddress] & ~unsigned{LockBit};
    memory_[OptionBitsAddress] = static_cast<Byte>(locked ? others | LockBit : others);
}

void Device::PutPreset(int position, std::string_view name, const PresetBody& body) {
    CheckPosition(position);
    const auto p = static_cast<std::size_t>(position);
    memory_[UsedMarksAddress + p] = UsedMark;
    if (position < PositionCount - 1) { // a ninth name would lie on the name of the active preset
        SetText(PresetNamesAddress + NameSize * p, NameSize, name);
    }
    std::ranges::copy(body, memory_.begin() + static_cast<std::ptrdiff_t>(PresetsAddress + PresetSize * p));
}

PresetBody Device::Preset(int position) const {
    CheckPosition(position);
    PresetBody body;
    const auto start = static_cast<std::ptrdiff_t>(PresetsAddress + PresetSize * static_cast<std::size_t>(position));
    std::copy_n(memory_.begin() + start, PresetSize, body.begin());
    return body;
}

bool Device::PresetUsed(int position) const {
    CheckPosition(position);
    return memory_[UsedMarksAddress + static_cast<std::size_t>(position)] == UsedMark;
}

std::string Device::PresetName(int position) const {
    CheckPosition(position);
    return Text(PresetNamesAddress + NameSize * static_cast<std::size_t>(position), NameSize);
}

std::optional<int> Device::StoredPosition() const {
    std::optional<int> stored;
    for (int p = PositionCount - 2; p >= 0; --p) {
        if (!PresetUsed(p)) {
            continue;
        }
        stored = p;
        if (PresetName(p) == Text(ActiveNameAddress, NameSize)) {
            return p;
        }
    }
    return stored;
}

void Device::Reboot(bool to_factory) {
    bulk_updating_ = false;
    fixed_levels_.reset();
    if (const std::optional<int> position = to_factory ? std::nullopt : StoredPosition()) {
        live_ = Preset(*position);
        SetText(ActiveNameAddress, NameSize, PresetName(*position));
        return;
    }
    live_ = FactoryPreset();
    const bool locked = Locked();
    const DeviceMemory factory = FactoryMemory({});
    for (const std::size_t address : {OptionBitsAddress, MuteBitsAddress}) {
        memory_[address] = factory[address];
    }
    std::copy_n(factory.begin() + ActiveNameAddress, NameSize, memory_.begin() + ActiveNameAddress);
    SetLocked(locked);
}

std::string Device::Text(std::size_t address, std::size_t size) const {
    const auto start = memory_.begin() + static_cast<std::ptrdiff_t>(address);
    return {start, start + static_cast<std::ptrdiff_t>(size)};
}

void Device::SetText(std::size_t address, std::size_t size, std::string_view text) {
    for (std::size_t i = 0; i < size; ++i) {
        memory_[address + i] = i < text.size() ? static_cast<Byte>(text[i]) : Byte{' '};
    }
}

} // namespace nrv::simulator
