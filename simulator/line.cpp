#include "simulator/line.h"

#include "simulator/words.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <system_error>
#include <unistd.h>

namespace nrv::simulator {
namespace {

using std::chrono::steady_clock;

constexpr std::size_t FramesKept = 100000;
constexpr std::chrono::milliseconds HangUpPause{20};
constexpr unsigned long TimerSlackNanoseconds = 2000; // the usual 50 us would show in every byte

timespec AsTimespec(std::chrono::nanoseconds time) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    timespec spec{};
    spec.tv_sec = seconds.count();
    spec.tv_nsec = (time - seconds).count();
    return spec;
}

std::chrono::nanoseconds Pace(const LineOptions& options) {
    return options.Paced ? ByteTime : std::chrono::nanoseconds(0);
}

} // namespace

Line::Line(Rack rack, LineOptions options)
    : options_(std::move(options)), pty_(std::in_place), wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      outbox_(Pace(options_)), half_duplex_(options_.HalfDuplex), noise_(options_.Noise.count()),
      rack_(std::move(rack)) {
    if (wake_.Get() < 0) {
        throw std::system_error(errno, std::generic_category(), "no event descriptor to be had");
    }
}

Line::~Line() {
    Stop();
}

void Line::Start() {
    running_ = true;
    if (pty_ && !thread_.joinable()) {
        thread_ = std::thread([this] { Run(); });
    }
}

void Line::Stop() {
    running_ = false;
    StopThread();
}

void Line::StopThread() {
    if (!thread_.joinable()) {
        return;
    }
    stopping_ = true;
    Wake();
    thread_.join();
    stopping_ = false;
    outbox_.Clear();
    reader_ = FrameReader();
}

void Line::Wake() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wake_.Get(), &one, sizeof one);
}

void Line::SetNoise(std::chrono::milliseconds interval) {
    noise_ = interval.count();
    Wake();
}

void Line::LinkAs(const std::filesystem::path& path) {
    const std::filesystem::path absolute = std::filesystem::absolute(path);
    if (pty_) {
        links_.emplace_back(absolute, DevicePath());
    }
    link_paths_.push_back(absolute);
}

void Line::Unplug() {
    StopThread();
    links_.clear();
    pty_.reset();
    line_in_free_at_ = {};
    noise_at_.reset();
    hung_up_ = false;
}

void Line::PlugIn() {
    if (pty_) {
        return;
    }
    pty_.emplace();
    try {
        for (const auto& path : link_paths_) {
            links_.emplace_back(path, DevicePath());
        }
    } catch (...) {
        Unplug();
        throw;
    }
    if (running_) {
        Start();
    }
}

void Line::Order(const Fault& fault) {
    const std::scoped_lock lock(mutex_);
    faults_.Order(fault);
}

void Line::Revive(std::optional<int> id) {
    const std::scoped_lock lock(mutex_);
    faults_.Revive(id);
}

void Line::ClearOrders() {
    const std::scoped_lock lock(mutex_);
    faults_.Clear();
}

std::vector<RecordedFrame> Line::Records() const {
    const std::scoped_lock lock(mutex_);
    return {records_.begin(), records_.end()};
}

std::vector<Frame> Line::Frames() const {
    const std::scoped_lock lock(mutex_);
    std::vector<Frame> frames;
    frames.reserve(records_.size());
    for (const RecordedFrame& record : records_) {
        frames.push_back(record.Request);
    }
    return frames;
}

void Line::ClearFrames() {
    const std::scoped_lock lock(mutex_);
    records_.clear();
}

void Line::Run() {
    ::prctl(PR_SET_TIMERSLACK, TimerSlackNanoseconds, 0UL, 0UL, 0UL);
    while (Wait()) {
        NoteWhoIsThere();
        TakeRequests();
        // Whoever sent a request opened the line before it; that must be known before it is answered, and who closed it
        // before that, or the answer would be lost.
        NoteWhoIsThere();
        for (auto& [answer, start] : fresh_) {
            outbox_.Add(std::move(answer), start);
        }
        fresh_.clear();
        const std::vector<Byte> due = outbox_.TakeDue(steady_clock::now());
        if (pty_->OpenElsewhere()) {
            pty_->Write(due);
        }
        MakeNoise();
        for (int lost = outbox_.TakeLost(); options_.Trace && lost > 0; --lost) {
            options_.Trace("   an answer met a request and is lost");
        }
    }
}

void Line::MakeNoise() {
    const auto interval = noise_.load();
    if (interval == 0 || !pty_->OpenElsewhere()) {
        noise_at_.reset();
        return;
    }
    const TimePoint now = steady_clock::now();
    if (noise_at_ && *noise_at_ > now) {
        return;
    }
    if (noise_at_ && !outbox_.Busy()) {
        const std::array<Byte, 1> stray{static_cast<Byte>(noise_values_() >> 8U)};
        pty_->Write(stray);
    }
    // From half the interval to one and a half.
    noise_at_ = now + std::chrono::milliseconds(interval) * (500 + noise_values_() % 1000) / 1000;
}

/// What was under way for the one who closed the line is nobody's any more.
void Line::NoteWhoIsThere() {
    if (!pty_->UpdateOpenCount()) {
        return;
    }
    outbox_.Clear();
    if (pty_->OpenElsewhere()) {
        return;
    }
    // The last request before the close is still heard; a flood behind it is not.
    if (Hear() == Pty::ReadSize) {
        pty_->DiscardRead();
    }
    // Whoever opened it meanwhile may have sent what was just heard.
    pty_->UpdateOpenCount();
    if (pty_->OpenElsewhere()) {
        return;
    }
    fresh_.clear();
    reader_ = FrameReader();
}

/// Rests until a request comes, a byte is due or Stop is called; false for the last.
bool Line::Wait() {
    const TimePoint now = steady_clock::now();
    std::optional<TimePoint> deadline = outbox_.NextDeadline();
    const auto not_after = [&deadline](TimePoint time) { deadline = std::min(deadline.value_or(time), time); };
    // A line that is hung up would wake the poll at once, again and again; so would one that is asked too fast.
    const bool deaf = hung_up_ || line_in_free_at_ > now;
    if (hung_up_) {
        not_after(now + HangUpPause);
    } else if (deaf) {
        not_after(line_in_free_at_);
    }
    if (noise_at_) {
        not_after(*noise_at_);
    }
    std::array<pollfd, 3> waits{
        {{wake_.Get(), POLLIN, 0}, {pty_->WatchFd(), POLLIN, 0}, {deaf ? -1 : pty_->RequestFd(), POLLIN, 0}}};
    timespec rest{};
    if (deadline) {
        rest = AsTimespec(std::max(*deadline - steady_clock::now(), steady_clock::duration(0)));
    }
    ::ppoll(waits.data(), waits.size(), deadline ? &rest : nullptr, nullptr);
    if ((waits[0].revents & POLLIN) != 0) {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t taken = ::read(wake_.Get(), &count, sizeof count);
    }
    return !stopping_;
}

/// Hears what has come, but not ahead of what the line can have carried by now.
void Line::TakeRequests() {
    if (line_in_free_at_ <= steady_clock::now()) {
        Hear();
    }
}

std::size_t Line::Hear() {
    const std::vector<Byte> bytes = pty_->Read(hung_up_);
    const TimePoint now = steady_clock::now();
    const TimePoint from = std::max(now, line_in_free_at_);
    for (Byte byte : bytes) {
        // The program hands over a frame in one piece; on a line each byte would take its time.
        line_in_free_at_ = std::max(now, line_in_free_at_) + Pace(options_);
        if (const auto frame = reader_.Take(byte)) {
            Answer(*frame, line_in_free_at_);
        }
    }
    if (half_duplex_ && !bytes.empty()) {
        outbox_.Meet(from, line_in_free_at_);
    }
    return bytes.size();
}

void Line::Answer(const Frame& request, TimePoint complete) {
    std::optional<Transmission> answer;
    std::string note;
    {
        const std::scoped_lock lock(mutex_);
        records_.push_back({request, steady_clock::now()});
        if (records_.size() > FramesKept) {
            records_.pop_front();
        }
        answer = faults_.Answer(rack_, request, note);
    }
    if (options_.Trace) {
        options_.Trace(RequestInWords(request));
        if (answer) {
            options_.Trace(AnswerInWords(request, answer->Bytes, answer->Note));
        } else if (!note.empty()) {
            options_.Trace(NoAnswerInWords(request, note));
        }
    }
    if (answer) {
        fresh_.emplace_back(std::move(*answer), complete);
    }
}

} // namespace nrv::simulator
