#include "model/preset_image.h"
#include "ports/channels.h"
#include "tool/parameters.h"
#include "tool/preset_file.h"
#include "tool/show.h"

#include <ostream>

namespace nrv::tool {
namespace {

constexpr std::size_t SystemStart = offsetof(model::PresetImageRow, SystemPage);
constexpr std::size_t ViewStart = offsetof(model::PresetImageRow, ViewState);

/// Tells findings, each after the name of the file and the byte.
class Findings {
  public:
    Findings(std::string file, std::size_t size, std::ostream& out) : file_(std::move(file)), size_(size), out_(out) {}

    void Add(std::size_t byte, const std::string& what) {
        out_ << file_ << ": byte " << byte << ": " << what << "\n";
        ++count_;
    }
    /// A byte that holds more than `top`; not for one that the file does not have.
    void AddCode(std::size_t byte, int code, int top, const std::string& what) {
        if (byte < size_ && code > top) {
            Add(byte, what + " holds " + std::to_string(code) + ", and codes end at " + std::to_string(top));
        }
    }
    bool Holds(std::size_t byte) const { return byte < size_; }
    int Count() const { return count_; }

  private:
    std::string file_;
    std::size_t size_;
    std::ostream& out_;
    int count_ = 0;
};

std::string NameOf(presets::Parameter parameter, const std::string& field) {
    const std::string place = presets::PlaceOf(parameter);
    return place.empty() ? field : place + ", " + field;
}

void CheckCodes(const model::PresetImageRow& image, Findings& findings) {
    for (const presets::Parameter parameter : presets::Parameters()) {
        for (const presets::CodePlace& place : CodesOf(parameter)) {
            const int code = presets::CodeIn(image, place);
            if (code > place.Top) {
                findings.AddCode(place.Byte, code, place.Top,
                                 NameOf(parameter, FieldsOf(parameter, image)[place.Field].Name));
            }
        }
        if (parameter.Kind == presets::ParameterKind::ChannelName) {
            for (const presets::ImageBits& place : presets::PlacesOf(parameter)) {
                const int character = BytesOf(image)[place.Byte];
                if (findings.Holds(place.Byte) && character < ' ') {
                    findings.Add(place.Byte, NameOf(parameter, "name") + " holds " + std::to_string(character) +
                                                 ", which is no character");
                }
            }
        }
    }
}

void CheckView(const model::PresetImageRow& image, Findings& findings) {
    const auto& view = image.ViewState;
    const auto code = [&](std::size_t byte, int top, const std::string& what) {
        findings.AddCode(ViewStart + byte, view[byte], top, what);
    };
    for (std::size_t row = 0; row < model::ViewBoxRows; ++row) {
        for (std::size_t output = 0; output < model::ViewBoxesInRow; ++output) {
            code(model::ViewBoxStart + model::ViewBoxesInRow * row + output, 1,
                 std::string(ChannelTitles[ChannelOfOutput(output)]) + ", view box " + std::to_string(row + 1));
        }
    }
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        code(model::ShowCursorStart + channel, 1, std::string(ChannelTitles[channel]) + ", show cursor");
    }
    for (std::size_t output = 0; output < OutputCount; ++output) {
        code(model::SumButtonStart + output, SumsPerOutput - 1,
             std::string(ChannelTitles[ChannelOfOutput(output)]) + ", view option");
    }
}

} // namespace

Outcome Check(const std::filesystem::path& file, std::ostream& out) {
    const PresetBytes read = ReadPresetBytes(file);
    const model::PresetImageRow image = PresetOf(read.Bytes);
    Findings findings(file.string(), read.Bytes.size(), out);
    CheckCodes(image, findings);
    const std::size_t mutes = SystemStart + model::MuteBitsAddress;
    if (findings.Holds(mutes) && image.SystemPage[model::MuteBitsAddress] != image.PresetBody[model::MuteBitsCopy]) {
        findings.Add(mutes, "the mutes are " + std::to_string(image.SystemPage[model::MuteBitsAddress]) + " here and " +
                                std::to_string(image.PresetBody[model::MuteBitsCopy]) + " in byte " +
                                std::to_string(model::MuteBitsCopy));
    }
    CheckView(image, findings);
    if (read.Bytes.size() < sizeof image) {
        findings.Add(read.Bytes.size(),
                     "the file ends here, and a preset has " + std::to_string(sizeof image) + " bytes");
    }
    if (read.FileSize > sizeof image) {
        out << file.string() << ": note: " << read.FileSize - sizeof image
            << " bytes behind the preset, which mean nothing\n";
    }
    if (findings.Count() != 0) {
        return Outcome::Differs;
    }
    out << file.string() << ": a whole preset, every code in range\n";
    return Outcome::Well;
}

} // namespace nrv::tool
