#include "simulator/words.h"

#include "simulator/scales.h"

#include <algorithm>

namespace nrv::simulator {
namespace {

std::string ChannelName(int channel) {
    if (channel >= ChannelCount) {
        return "channel " + std::to_string(channel) + " (no such channel)";
    }
    if (channel < InputCount) {
        return channel == 0 ? "In A" : "In B";
    }
    return "Out " + std::to_string(channel - 1);
}

std::string Hex(int value, int digits) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value /= 16) {
        *digit = Digits[static_cast<std::size_t>(value % 16)];
    }
    return "0x" + text;
}

/// What lies at an address of device memory.
std::string Place(std::size_t address) {
    std::string number = std::to_string(address);
    const auto within = [address](std::size_t start, std::size_t size) {
        return address >= start && address < start + size;
    };
    const auto numbered = [&number](const char* what, std::size_t index) {
        return number + " (" + what + " " + std::to_string(index) + ")";
    };
    if (address == OptionBitsAddress) {
        return number + " (option bits)";
    }
    if (address == MuteBitsAddress) {
        return number + " (mute bits)";
    }
    if (within(PasswordAddress, PasswordSize)) {
        return number + " (password)";
    }
    if (within(LabelAddress, NameSize)) {
        return number + " (label)";
    }
    if (within(UsedMarksAddress, PositionCount)) {
        return numbered("used mark of position", address - UsedMarksAddress);
    }
    if (within(PresetNamesAddress, NameSize * (PositionCount - 1))) {
        return numbered("name of position", (address - PresetNamesAddress) / NameSize);
    }
    if (within(ActiveNameAddress, NameSize)) {
        return number + " (name of the active preset)";
    }
    if (within(PresetsAddress, PresetSize * PositionCount)) {
        return numbered("preset of position", (address - PresetsAddress) / PresetSize);
    }
    return number;
}

std::string Bytes(std::span<const Byte> bytes) {
    std::string text;
    for (Byte value : bytes) {
        text += text.empty() ? "" : " ";
        text += Hex(value, 2).substr(2);
    }
    return text;
}

std::string Printable(std::span<const Byte> bytes) {
    std::string text;
    for (Byte value : bytes) {
        text += value >= 0x20 && value < 0x7F ? static_cast<char>(value) : '?';
    }
    return text;
}

std::string DescribeChannelCommand(const Frame& f) {
    const int channel = P(f, 2);
    const bool input = channel < InputCount;
    const std::string of = " of " + ChannelName(channel) + ": ";
    const std::string section = std::to_string(P(f, 3) + 1) + of;
    switch (static_cast<Command>(P(f, 1))) {
    case Command::Gain:
        return "Gain" + of + GainCode(P(f, 9));
    case Command::Delay:
        return "Delay" + of + DelayCodes(256 * P(f, 7) + P(f, 8), P(f, 9));
    case Command::Phase:
        return "Phase" + of + (P(f, 9) != 0 ? "180 degrees" : "0 degrees");
    case Command::Mute:
        return "Mute" + of + (P(f, 9) != 0 ? "muted" : "sounding");
    case Command::Crossover:
        return (P(f, 3) == 0   ? "High pass"
                : P(f, 3) == 1 ? "Low pass"
                               : "Crossover with no such side") +
               of + "frequency " + FrequencyCode(P(f, 8)) + ", slope " + SlopeCode(P(f, 9));
    case Command::Peq:
        return "PEQ " + section + "frequency " + FrequencyCode(P(f, 6)) + ", bandwidth " + BandwidthCode(P(f, 7)) +
               ", gain " + PeqGainCode(P(f, 9));
    case Command::Tone:
        return "Tone filter " + section + "frequency " + FrequencyCode(P(f, 6)) + ", type " +
               ToneTypeCode(input, P(f, 7)) + ", gain " + ToneGainCode(P(f, 9));
    case Command::Limiter:
        return (input ? "Noise gate" : "Limiter") + of + "attack " + AttackCode(P(f, 6)) + ", release " +
               ReleaseCode(P(f, 7)) + ", threshold " + ThresholdCode(input, P(f, 9));
    case Command::Source:
        return "Source" + of + SourceCode(P(f, 9));
    case Command::ChannelName:
        return "Name" + of + "\"" + Printable(std::span(f).subspan(6, 6)) + "\"";
    default:
        return "Unknown command " + Hex(P(f, 1), 2) + ": " + Bytes(std::span(f).subspan(4, 8));
    }
}

} // namespace

std::string DescribeRequest(const Frame& request) {
    const std::size_t address = std::size_t{P(request, 2)} * 256 + P(request, 3);
    switch (static_cast<Command>(P(request, 1))) {
    case Command::Presence:
        if (std::any_of(request.begin() + 4, request.end() - 1, [](Byte value) { return value != 0; })) {
            break;
        }
        return "Are you there?";
    case Command::MemoryRead:
        return "Read memory byte " + Place(address);
    case Command::MemoryWrite:
        return "Write memory byte " + Place(address) + ": " + std::to_string(P(request, 6));
    case Command::LevelPoll:
        return "Levels?";
    case Command::PresetRead:
        return P(request, 2) == LivePreset ? "Read live preset"
                                           : "Read preset of position " + std::to_string(P(request, 2));
    case Command::BulkUpdate:
        return P(request, 2) == 0 ? "Bulk update begins" : "Bulk update ends";
    case Command::MasterGain:
        return "Master gain: " + GainCode(P(request, 9));
    case Command::InputType:
        return std::string("Input type: ") + (P(request, 9) != 0 ? "digital" : "analog");
    case Command::Unconnect:
        return "Unconnect, no answer expected";
    case Command::ExitNotice:
        return "The remote control goes away, no answer expected";
    default:
        break;
    }
    return DescribeChannelCommand(request);
}

std::string DescribeAnswer(const Frame& request, std::span<const Byte> answer) {
    const auto command = static_cast<Command>(P(request, 1));
    if (command == Command::PresetRead) {
        return std::to_string(answer.size()) + " bytes of preset";
    }
    if (answer.size() < FrameSize) {
        return Bytes(answer);
    }
    switch (command) {
    case Command::Presence:
        return answer[4] == PresenceMark ? "Here" : "Byte 4 is " + Hex(answer[4], 2);
    case Command::MemoryRead:
        return "Value " + std::to_string(answer[8]);
    case Command::LevelPoll: {
        std::string text = "Levels";
        for (Byte level : answer.subspan(4, ChannelCount)) {
            text += ' ';
            text += std::to_string(level);
        }
        return text;
    }
    default:
        return "Obeyed";
    }
}

std::string RequestInWords(const Frame& request) {
    return "-> ID " + std::to_string(request[2]) + "  " + DescribeRequest(request);
}

std::string AnswerInWords(const Frame& request, std::span<const Byte> answer, std::string_view note) {
    std::string text = "<- ID " + std::to_string(request[2]) + "  " + DescribeAnswer(request, answer);
    if (!note.empty()) {
        text += " [" + std::string(note) + "]";
    }
    return text;
}

std::string NoAnswerInWords(const Frame& request, std::string_view reason) {
    return "<- ID " + std::to_string(request[2]) + "  No answer [" + std::string(reason) + "]";
}

} // namespace nrv::simulator
