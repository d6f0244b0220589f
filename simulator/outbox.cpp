#include "simulator/outbox.h"

#include <algorithm>

namespace nrv::simulator {

void Outbox::Add(Transmission answer, TimePoint start) {
    if (answer.Bytes.empty()) {
        return;
    }
    const TimePoint due = start + answer.Late;
    waiting_bytes_ += answer.Bytes.size();
    waiting_.push_back({std::move(answer), due});
    while (waiting_bytes_ > MostWaiting) {
        DropLast();
    }
}

void Outbox::DropLast() {
    const auto later = [](const Waiting& a, const Waiting& b) { return a.Start <= b.Start; };
    const auto last = std::max_element(waiting_.begin(), waiting_.end(), later);
    waiting_bytes_ -= last->Answer.Bytes.size();
    waiting_.erase(last);
}

void Outbox::Meet(TimePoint from, TimePoint until) {
    if (from > request_until_) {
        request_from_ = from;
    }
    request_until_ = until;
    if (current_) {
        current_.reset();
        ++lost_;
    }
}

void Outbox::Clear() {
    waiting_.clear();
    waiting_bytes_ = 0;
    current_.reset();
}

std::list<Outbox::Waiting>::const_iterator Outbox::First() const {
    return std::min_element(waiting_.begin(), waiting_.end(),
                            [](const Waiting& a, const Waiting& b) { return a.Start < b.Start; });
}

std::optional<TimePoint> Outbox::NextDeadline() const {
    if (current_) {
        return next_at_;
    }
    if (waiting_.empty()) {
        return std::nullopt;
    }
    return First()->Start;
}

bool Outbox::Begin(TimePoint now) {
    const auto first = First();
    if (first == waiting_.end() || first->Start > now) {
        return false;
    }
    current_ = first->Answer;
    next_index_ = 0;
    next_at_ = std::max(first->Start, line_free_at_) + byte_time_;
    waiting_bytes_ -= current_->Bytes.size();
    waiting_.erase(first);
    const TimePoint start = next_at_ - byte_time_;
    if (start < request_until_ && next_at_ + byte_time_ * current_->Bytes.size() > request_from_) {
        current_.reset();
        ++lost_;
        return Begin(now);
    }
    return true;
}

std::vector<Byte> Outbox::TakeDue(TimePoint now) {
    std::vector<Byte> due;
    while (current_ || Begin(now)) {
        if (next_at_ > now) {
            break;
        }
        due.push_back(current_->Bytes[next_index_]);
        line_free_at_ = next_at_;
        next_at_ += byte_time_ + current_->Pause;
        if (++next_index_ == current_->Bytes.size()) {
            current_.reset();
        }
    }
    return due;
}

} // namespace nrv::simulator
