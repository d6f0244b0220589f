#pragma once

#include "simulator/faults.h"
#include "simulator/protocol.h"

#include <chrono>
#include <list>
#include <optional>
#include <utility>
#include <vector>

namespace nrv::simulator {

using TimePoint = std::chrono::steady_clock::time_point;

/// Answers on their way out: which byte is due on the line when.
///
/// Byte k, from 1, of an answer that starts at t is due at t + k byte times. One answer is on the line at a time; of
/// several that wait the one that is due first goes first, so a late answer does not hold up another device's. Of more
/// than MostWaiting bytes that wait, the answers that are due last are lost.
class Outbox {
  public:
    /// `byte_time` is what one byte takes on the line; zero sends an answer at once.
    explicit Outbox(std::chrono::nanoseconds byte_time) : byte_time_(byte_time) {}

    static constexpr std::size_t MostWaiting = 4096; ///< two seconds of the line

    /// Queues an answer whose first byte may begin at `start` (the lateness of the answer is added here).
    void Add(Transmission answer, TimePoint start);

    /// On a wire of half duplex: a request is on it from `from` to `until`, and an answer that meets it is lost, with
    /// what is still to come of one that was begun.
    void Meet(TimePoint from, TimePoint until);
    /// How many answers were lost that way since the last call.
    int TakeLost() { return std::exchange(lost_, 0); }

    /// Forgets all answers; what was begun ends where it is.
    void Clear();

    /// The next moment at which TakeDue has something to do.
    std::optional<TimePoint> NextDeadline() const;

    /// True while an answer is on the line.
    bool Busy() const { return current_.has_value(); }

    /// The bytes whose time has come, in order.
    std::vector<Byte> TakeDue(TimePoint now);

  private:
    struct Waiting {
        Transmission Answer;
        TimePoint Start;
    };
    std::list<Waiting>::const_iterator First() const;
    bool Begin(TimePoint now);
    void DropLast();

    std::chrono::nanoseconds byte_time_;
    std::list<Waiting> waiting_;
    std::size_t waiting_bytes_ = 0;
    std::optional<Transmission> current_;
    std::size_t next_index_ = 0;
    TimePoint next_at_{};
    TimePoint line_free_at_{};
    TimePoint request_from_{};
    TimePoint request_until_{};
    int lost_ = 0;
};

} // namespace nrv::simulator
