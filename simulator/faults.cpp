#include "simulator/faults.h"

#include <algorithm>
#include <stdexcept>

namespace nrv::simulator {

namespace {

void CheckId(int id) {
    if (id < 0 || id > kHighestId)
        throw std::invalid_argument("device ID " + std::to_string(id) + " is not 0 to 32");
}

Byte IdByte(int id) {
    CheckId(id);
    return static_cast<Byte>(id);
}

std::string Milliseconds(std::chrono::milliseconds time) {
    return std::to_string(time.count()) + " ms";
}

void Spoil(const Fault& fault, Transmission& answer) {
    switch (fault.kind) {
    case FaultKind::Late:
        answer.late = fault.time;
        answer.note = "late by " + Milliseconds(fault.time);
        break;
    case FaultKind::Cut:
        answer.bytes.resize(std::min(answer.bytes.size(), fault.index));
        answer.note = "cut to " + std::to_string(answer.bytes.size()) + " bytes";
        break;
    case FaultKind::Double: {
        const Reply once = answer.bytes;
        answer.bytes.insert(answer.bytes.end(), once.begin(), once.end());
        answer.note = "twice";
        break;
    }
    case FaultKind::Garble:
        if (fault.index < answer.bytes.size())
            answer.bytes[fault.index] = fault.value;
        answer.note = "byte " + std::to_string(fault.index) + " garbled to " + std::to_string(fault.value);
        break;
    case FaultKind::AnswerAs:
        if (answer.bytes.size() == kFrameSize)
            answer.bytes[2] = fault.value;
        answer.note = "signed as ID " + std::to_string(fault.value);
        break;
    case FaultKind::Drip:
        answer.pause = fault.time;
        answer.note = "dripping, " + Milliseconds(fault.time) + " between bytes";
        break;
    case FaultKind::AnswerFrom:
        answer.note = "from ID " + std::to_string(fault.value);
        break;
    case FaultKind::Lose:
    case FaultKind::Die:
        break;
    }
}

} // namespace

Fault Fault::Lose(std::optional<int> device, int count) {
    return {FaultKind::Lose, device, count, {}, 0, 0};
}

Fault Fault::Late(std::optional<int> device, int count, std::chrono::milliseconds by) {
    return {FaultKind::Late, device, count, by, 0, 0};
}

Fault Fault::Cut(std::optional<int> device, int count, std::size_t bytes) {
    return {FaultKind::Cut, device, count, {}, bytes, 0};
}

Fault Fault::Double(std::optional<int> device, int count) {
    return {FaultKind::Double, device, count, {}, 0, 0};
}

Fault Fault::Garble(std::optional<int> device, int count, std::size_t index, Byte value) {
    return {FaultKind::Garble, device, count, {}, index, value};
}

Fault Fault::AnswerAs(std::optional<int> device, int count, int other_id) {
    return {FaultKind::AnswerAs, device, count, {}, 0, IdByte(other_id)};
}

Fault Fault::AnswerFrom(std::optional<int> device, int count, int other_id) {
    return {FaultKind::AnswerFrom, device, count, {}, 0, IdByte(other_id)};
}

Fault Fault::Drip(std::optional<int> device, int count, std::chrono::milliseconds pause) {
    return {FaultKind::Drip, device, count, pause, 0, 0};
}

Fault Fault::Die(std::optional<int> device, int requests) {
    return {FaultKind::Die, device, requests, {}, 0, 0};
}

void FaultPlan::Order(const Fault& fault) {
    if (fault.device)
        CheckId(*fault.device);
    if (fault.count < 0)
        throw std::invalid_argument("a fault's count must not be negative");
    if (fault.time.count() < 0)
        throw std::invalid_argument("a fault's time must not be negative");
    orders_.push_back(fault);
}

void FaultPlan::Revive(int id) {
    std::erase_if(orders_, [id](const Fault& order) {
        return order.kind == FaultKind::Die && (!order.device || *order.device == id);
    });
}

std::deque<Fault>::iterator FaultPlan::Find(int id, bool die) {
    return std::ranges::find_if(orders_, [id, die](const Fault& order) {
        return (order.kind == FaultKind::Die) == die && (!order.device || *order.device == id);
    });
}

void FaultPlan::UseUp(std::deque<Fault>::iterator order) {
    if (order->count > 0 && --order->count == 0)
        orders_.erase(order);
}

std::optional<Transmission> FaultPlan::Answer(Rack& rack, const Frame& request, std::string& note) {
    const int id = request[2];
    note.clear();
    // An order for any device means one that is there: an ID that nobody has does not use it up.
    if (rack.Find(id) == nullptr)
        return std::nullopt;
    if (const auto death = Find(id, true); death != orders_.end()) {
        note = "dead";
        UseUp(death);
        return std::nullopt;
    }
    const auto order = Find(id, false);
    if (order == orders_.end()) {
        auto reply = rack.Handle(request);
        return reply ? std::optional<Transmission>({std::move(*reply), {}, {}, {}}) : std::nullopt;
    }
    std::optional<int> answerer;
    if (order->kind == FaultKind::AnswerFrom)
        answerer = order->value;
    if (answerer && rack.Find(*answerer) == nullptr) {
        note = "from ID " + std::to_string(*answerer) + ", which is not there";
        UseUp(order);
        return std::nullopt;
    }
    auto reply = rack.Handle(request, answerer);
    if (!reply)
        return std::nullopt;
    const Fault fault = *order;
    UseUp(order);
    if (fault.kind == FaultKind::Lose) {
        note = "lost";
        return std::nullopt;
    }
    Transmission answer{std::move(*reply), {}, {}, {}};
    Spoil(fault, answer);
    return answer;
}

} // namespace nrv::simulator
