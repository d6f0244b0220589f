#include "simulator/faults.h"

#include <algorithm>
#include <stdexcept>

namespace nrv::simulator {
namespace {

void CheckId(int id) {
    if (id < 0 || id > HighestId) {
        throw std::invalid_argument("device ID " + std::to_string(id) + " is not 0 to 32");
    }
}

Byte IdByte(int id) {
    CheckId(id);
    return static_cast<Byte>(id);
}

std::string Milliseconds(std::chrono::milliseconds time) {
    return std::to_string(time.count()) + " ms";
}

void Spoil(const Fault& fault, Transmission& answer) {
    switch (fault.Kind) {
    case FaultKind::Late:
        answer.Late = fault.Time;
        answer.Note = "late by " + Milliseconds(fault.Time);
        break;
    case FaultKind::Cut:
        answer.Bytes.resize(std::min(answer.Bytes.size(), fault.Index));
        answer.Note = "cut to " + std::to_string(answer.Bytes.size()) + " bytes";
        break;
    case FaultKind::Double: {
        const Reply once = answer.Bytes;
        answer.Bytes.insert(answer.Bytes.end(), once.begin(), once.end());
        answer.Note = "twice";
        break;
    }
    case FaultKind::Garble:
        if (fault.Index < answer.Bytes.size()) {
            answer.Bytes[fault.Index] = fault.Value;
        }
        answer.Note = "byte " + std::to_string(fault.Index) + " garbled to " + std::to_string(fault.Value);
        break;
    case FaultKind::AnswerAs:
        if (answer.Bytes.size() == FrameSize) {
            answer.Bytes[2] = fault.Value;
        }
        answer.Note = "signed as ID " + std::to_string(fault.Value);
        break;
    case FaultKind::Drip:
        answer.Pause = fault.Time;
        answer.Note = "dripping, " + Milliseconds(fault.Time) + " between bytes";
        break;
    case FaultKind::AnswerFrom:
        answer.Note = "from ID " + std::to_string(fault.Value);
        break;
    case FaultKind::Lose:
    case FaultKind::Die:
        break;
    }
}

std::string Meeting(Rack& rack, int id) {
    return rack.FindTwin(id) != nullptr ? "two devices answer at once" : "";
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
    if (fault.Device) {
        CheckId(*fault.Device);
    }
    if (fault.Count < 0) {
        throw std::invalid_argument("a fault's count must not be negative");
    }
    if (fault.Time.count() < 0) {
        throw std::invalid_argument("a fault's time must not be negative");
    }
    orders_.push_back(fault);
}

void FaultPlan::Revive(std::optional<int> id) {
    std::erase_if(orders_, [id](const Fault& order) {
        return order.Kind == FaultKind::Die && (!id || !order.Device || order.Device == id);
    });
}

std::deque<Fault>::iterator FaultPlan::Find(int id, bool die) {
    return std::ranges::find_if(orders_, [id, die](const Fault& order) {
        return (order.Kind == FaultKind::Die) == die && (!order.Device || *order.Device == id);
    });
}

void FaultPlan::UseUp(const std::deque<Fault>::iterator& order) {
    if (order->Count > 0 && --order->Count == 0) {
        orders_.erase(order);
    }
}

std::optional<Transmission> FaultPlan::Answer(Rack& rack, const Frame& request, std::string& note) {
    const int id = request[2];
    note.clear();
    // An order for any device means one that is there: an ID that nobody has does not use it up.
    if (rack.Find(id) == nullptr) {
        return std::nullopt;
    }
    if (rack.Rebooting(id)) {
        note = "rebooting";
        return std::nullopt;
    }
    if (const auto death = Find(id, true); death != orders_.end()) {
        note = "dead";
        UseUp(death);
        return std::nullopt;
    }
    const auto order = Find(id, false);
    if (order == orders_.end()) {
        auto reply = rack.Handle(request);
        return reply ? std::optional<Transmission>({std::move(*reply), {}, {}, Meeting(rack, id)}) : std::nullopt;
    }
    std::optional<int> answerer;
    if (order->Kind == FaultKind::AnswerFrom) {
        answerer = order->Value;
    }
    if (answerer && rack.Find(*answerer) == nullptr) {
        note = "from ID " + std::to_string(*answerer) + ", which is not there";
        UseUp(order);
        return std::nullopt;
    }
    auto reply = rack.Handle(request, answerer);
    if (!reply) {
        return std::nullopt;
    }
    const Fault fault = *order;
    UseUp(order);
    if (fault.Kind == FaultKind::Lose) {
        note = "lost";
        return std::nullopt;
    }
    Transmission answer{std::move(*reply), {}, {}, {}};
    Spoil(fault, answer);
    return answer;
}

} // namespace nrv::simulator
