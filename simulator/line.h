#pragma once

#include "simulator/faults.h"
#include "simulator/frame_reader.h"
#include "simulator/link_file.h"
#include "simulator/outbox.h"
#include "simulator/pty.h"
#include "simulator/rack.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace nrv::simulator {

/// One start bit, eight data bits and one stop bit at 19200 baud.
inline constexpr std::chrono::nanoseconds ByteTime{520833};

struct LineOptions {
    /// With pacing each byte takes its time on the line; without, an answer comes at once and whole.
    bool Paced = true;
    /// One pair of wires for both directions: an answer that meets a request is lost.
    bool HalfDuplex = false;
    /// About so often a stray byte comes while nothing else is on the line; never at 0.
    std::chrono::milliseconds Noise{0};
    /// Gets each frame in words, called from the line's own thread; must not throw.
    std::function<void(const std::string&)> Trace;
};

struct RecordedFrame {
    Frame Request{};
    TimePoint At; ///< when its last byte was read
};

/// A rack on a pseudo-terminal that answers with the timing of a 19200 baud line.
class Line {
  public:
    /// Opens the pseudo-terminal; nothing is answered before Start. Throws std::system_error.
    explicit Line(Rack rack, LineOptions options = {});
    ~Line(); ///< stops, and removes the links
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    void Start();
    void Stop(); ///< at once; what was still to be sent is not sent

    /// The line's end goes away, for whoever has it open too, and its links with it. The devices stay as they are.
    void Unplug();
    /// It comes back, under another device path but the same links. Throws as the constructor and LinkAs do, and the
    /// line then stays unplugged.
    void PlugIn();
    bool PluggedIn() const { return pty_.has_value(); }

    /// Only while the line is plugged in.
    const std::string& DevicePath() const { return pty_->DevicePath(); }
    /// Makes a link to the device that lasts as long as the line. Throws std::runtime_error (see LinkFile).
    void LinkAs(const std::filesystem::path& path);

    /// Runs `work(Rack&)` while the line's thread keeps its hands off the rack; gives back what it gives.
    template <typename Work>
    auto WithRack(Work&& work) {
        const std::scoped_lock lock(mutex_);
        return std::forward<Work>(work)(rack_);
    }

    void Order(const Fault& fault); ///< see FaultPlan; these three may be called at any time
    void Revive(std::optional<int> id);
    void ClearOrders();
    void SetHalfDuplex(bool on) { half_duplex_ = on; }
    void SetNoise(std::chrono::milliseconds interval);

    /// Every whole frame that came, oldest first, to whatever ID; the last 100000 are kept.
    std::vector<Frame> Frames() const;
    std::vector<RecordedFrame> Records() const;
    void ClearFrames();

  private:
    void Run();
    void StopThread();
    bool Wait();
    void TakeRequests();
    std::size_t Hear();
    void NoteWhoIsThere();
    void MakeNoise();
    void Wake();
    void Answer(const Frame& request, TimePoint complete);

    LineOptions options_;
    std::optional<Pty> pty_; ///< none while unplugged
    Descriptor wake_;
    std::list<LinkFile> links_;
    std::vector<std::filesystem::path> link_paths_;
    bool running_ = false; ///< the thread runs, or will when the line is plugged in
    std::thread thread_;

    // The line thread's own.
    FrameReader reader_;
    Outbox outbox_;
    std::vector<std::pair<Transmission, TimePoint>> fresh_; ///< answers of this pass, and when each may begin
    TimePoint line_in_free_at_{};
    bool hung_up_ = false;
    std::optional<TimePoint> noise_at_;
    std::minstd_rand noise_values_{718}; ///< the same noise in every run

    std::atomic<bool> stopping_{false};
    std::atomic<bool> half_duplex_;
    std::atomic<std::chrono::milliseconds::rep> noise_;

    mutable std::mutex mutex_; ///< for all that follows
    Rack rack_;
    FaultPlan faults_;
    std::deque<RecordedFrame> records_;
};

} // namespace nrv::simulator
