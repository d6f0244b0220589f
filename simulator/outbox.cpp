#include "simulator/outbox.h"

#include <algorithm>

namespace nrv::simulator {

void Outbox::Add(Transmission answer, TimePoint start) {
    if (answer.bytes.empty())
        return;
    const TimePoint due = start + answer.late;
    waiting_.push_back({std::move(answer), due});
}

std::list<Outbox::Waiting>::const_iterator Outbox::First() const {
    return std::min_element(waiting_.begin(), waiting_.end(),
                            [](const Waiting& a, const Waiting& b) { return a.start < b.start; });
}

std::optional<TimePoint> Outbox::NextDeadline() const {
    if (current_)
        return next_at_;
    if (waiting_.empty())
        return std::nullopt;
    return First()->start;
}

bool Outbox::Begin(TimePoint now) {
    const auto first = First();
    if (first == waiting_.end() || first->start > now)
        return false;
    current_ = first->answer;
    next_index_ = 0;
    next_at_ = std::max(first->start, line_free_at_) + byte_time_;
    waiting_.erase(first);
    return true;
}

std::vector<Byte> Outbox::TakeDue(TimePoint now) {
    std::vector<Byte> due;
    while (current_ || Begin(now)) {
        if (next_at_ > now)
            break;
        due.push_back(current_->bytes[next_index_]);
        line_free_at_ = next_at_;
        next_at_ += byte_time_ + current_->pause;
        if (++next_index_ == current_->bytes.size())
            current_.reset();
    }
    return due;
}

} // namespace nrv::simulator
