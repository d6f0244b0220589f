#include "tool/line_desk.h"

#include "model/device_stores.h"
#include "model/preset_image.h"
#include "ports/runtime_error.h"
#include "tool/preset_file.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

namespace nrv::tool {

namespace fs = std::filesystem;

WorkFolder::WorkFolder() {
    std::string pattern = (fs::temp_directory_path() / "nrv718-preset-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw Trouble(pattern + ": no folder can be made there; set TMPDIR to another.");
    }
    path_ = pattern;
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void LineProcess::RunPendingEvents() {
    process_.RunPendingEvents();
    if (Probe == nullptr || !Probe->Running()) {
        ticking_ = false;
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (!ticking_) {
        ticking_ = true;
        due_ = now + std::chrono::milliseconds(Probe->Interval());
    } else if (now >= due_) {
        ticking_ = false;
        Probe->Tick();
    }
}

LineDesk::LineDesk(const LinePorts& ports, int com_number)
    : interrupted_(ports.Interrupted), port_(ports.Serial, ports.Interrupted), process_(ports.Run),
      program_(std::make_unique<program::Program>(
          program::Ports{port_, ports.WallClock, process_, boxes_, files_, host_, events_}, *forms_)) {
    process_.Probe = &program_->Main.SerialTimer;
    program_->State.AppFolder = folder_.Path();
    program_->Link.ComIndex = com_number;
    program_->Link.OpenPort();
    if (!program_->Link.PortOpened) {
        throw Trouble(program_->Link.PortRefusal(), Outcome::NoLine);
    }
    try {
        program_->Link.ReopenPort(link::FrameLength);
    } catch (const RuntimeError& refused) {
        throw Trouble(refused.what(), Outcome::NoLine);
    }
    program_->Link.ReportLinkFailure = true;
}

void LineDesk::RequireLine(const std::string& error) {
    const bool window_gone = opened_ && !program_->Windows.Loaded[At(program_->Windows.CurrentWindow)];
    if (error.empty() && !process_.Ended && !window_gone && !interrupted_) {
        return;
    }
    std::string why = error.empty() ? program_->Status.Text() : error;
    if (interrupted_ && !why.starts_with("Interrupted")) {
        why = "Interrupted.";
    } else if (why.empty() || process_.Ended) {
        why = IdText(id_) + " does not answer.";
    }
    // What follows in the program is for one who sees a list of devices.
    const std::size_t row = why.find(" Double-click");
    throw Trouble(why.substr(0, row), Outcome::NoLine);
}

void LineDesk::Do(const std::function<void()>& work) {
    using Kind = controls::EventSource::Kind;
    std::string error;
    const controls::EventSource source = opened_ ? controls::EventSource{Kind::Device, program_->Windows.CurrentWindow}
                                                 : controls::EventSource{Kind::Program};
    events_.Run(source, [&] {
        try {
            work();
        } catch (const RuntimeError& refused) {
            error = refused.what();
        }
    });
    RequireLine(error);
}

void LineDesk::Pause(int milliseconds) {
    constexpr int longest = 50;
    for (int left = milliseconds; left > 0 && !interrupted_; left -= longest) {
        process_.Sleep(std::min(left, longest));
    }
}

void LineDesk::TickMeters() {
    events_.Run({controls::EventSource::Kind::Meters, program_->Windows.CurrentWindow},
                [this] { program_->Windows.Current().Timer1.Tick(); });
    RequireLine({});
}

void LineDesk::Open(int id) {
    if (!IsDeviceId(id)) {
        throw Trouble("There is no ID " + std::to_string(id) + "; IDs are 0 to " + std::to_string(DeviceCount - 1) +
                      ".");
    }
    id_ = id;
    program_->State.SpeakerRecords[At(id)].SetDeviceId(id);
    program_->State.FoundLast = 0;
    program_->State.FoundDevices[0] = id;
    program_->DeviceList.Load();
    Do([this] { program_->DeviceList.OpenDevice(0); });
    opened_ = program_->Windows.SlotOf(id) != Operation::NoSlot;
    if (!opened_) {
        throw Trouble(IdText(id) + " does not answer; look at the cable and at the ID that the device shows.",
                      Outcome::NoLine);
    }
    if (!program_->Status.Free()) {
        throw Trouble(program_->Status.Text(), Outcome::NoLine);
    }
}

bool LineDesk::Reading::operator==(const Reading& other) const {
    return Label == other.Label && std::ranges::equal(BytesOf(Image), BytesOf(other.Image)) && Used == other.Used &&
           Names == other.Names;
}

LineDesk::Reading LineDesk::LastReading() {
    // As the opening does: what is live has one mute byte, and the copy in the preset follows it.
    model::StoreMuteBits(Image().SystemPage[model::MuteBitsAddress], Image());
    Reading reading{Label(), Image(), {}, {}};
    std::copy_n(Values().PresetUsed.begin(), MemoryPositions, reading.Used.begin());
    std::copy_n(Values().PresetNames.begin(), MemoryPositions, reading.Names.begin());
    return reading;
}

template <class Read>
auto LineDesk::ReadTwice(Read read) -> decltype(read()) {
    constexpr int most = 8;
    auto before = read();
    for (int n = 1; n < most; ++n) {
        auto now = read();
        if (now == before) {
            return now;
        }
        before = std::move(now);
    }
    throw Trouble("No two answers of " + IdText(id_) +
                      " are alike: the line is disturbed, or two devices have this ID.",
                  Outcome::NoLine);
}

void LineDesk::Confirm() {
    bool first = true;
    ReadTwice([&] {
        if (!first) {
            bool read = false;
            Do([this] { program_->List.Timer1.Tick(); });
            Do([&] { read = program_->Devices.ReadDeviceState(id_); });
            if (!read) {
                throw Trouble(IdText(id_) + " does not answer any more.", Outcome::NoLine);
            }
        }
        first = false;
        return LastReading();
    });
}

void LineDesk::Fetch(int position, model::PresetImageRow& image) {
    using Preset = std::array<std::uint8_t, link::BulkLength>;
    const auto fetched = ReadTwice([&] {
        Preset preset{};
        bool came = false;
        Do([&] { came = program_->Link.FetchPreset(id_, static_cast<std::uint8_t>(position), preset); });
        if (!came) {
            throw Trouble(IdText(id_) + " does not answer.", Outcome::NoLine);
        }
        return preset;
    });
    std::ranges::copy(fetched, image.PresetBody.begin());
}

void LineDesk::Load(const model::PresetImageRow& image) {
    files_.File = folder_.Path() / "load.n91";
    WritePreset(*files_.File, image);
    Do([this] { program_->Windows.Current().Command2[controls::LoadPresetTool].Clicked(); });
}

} // namespace nrv::tool
