#pragma once

#include "simulator/protocol.h"
#include "simulator/rack.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>

/// Misbehaviour on order: what a device does wrong with its next answers.
namespace nrv::simulator {

enum class FaultKind {
    Lose,       ///< the device obeys, its answer is lost
    Late,       ///< the answer starts `Time` later
    Cut,        ///< the answer ends after `Index` bytes
    Double,     ///< the answer comes twice
    Garble,     ///< byte `Index` of the answer, from 0, becomes `Value`
    AnswerAs,   ///< the device obeys, but signs its answer of 13 bytes with the ID `Value`
    AnswerFrom, ///< the device of the ID `Value` obeys and answers in its place
    Drip,       ///< `Time` passes between two bytes of the answer
    Die,        ///< nothing is obeyed and nothing answered
};

/// An order. `Device` is the ID it is for, any device without one; `Count` is how many answers it spoils, 0 for
/// every one from now on.
struct Fault {
    FaultKind Kind = FaultKind::Lose;
    std::optional<int> Device;
    int Count = 1;
    std::chrono::milliseconds Time{0};
    std::size_t Index = 0;
    Byte Value = 0;

    static Fault Lose(std::optional<int> device, int count = 1);
    static Fault Late(std::optional<int> device, int count, std::chrono::milliseconds by);
    static Fault Cut(std::optional<int> device, int count, std::size_t bytes);
    static Fault Double(std::optional<int> device, int count = 1);
    static Fault Garble(std::optional<int> device, int count, std::size_t index, Byte value);
    static Fault AnswerAs(std::optional<int> device, int count, int other_id);
    static Fault AnswerFrom(std::optional<int> device, int count, int other_id);
    static Fault Drip(std::optional<int> device, int count, std::chrono::milliseconds pause);
    /// Dead until revived, or until it has passed over `requests` requests when that is not 0.
    static Fault Die(std::optional<int> device, int requests = 0);
};

/// An answer as it goes on the line.
struct Transmission {
    Reply Bytes;
    std::chrono::milliseconds Late{0};
    std::chrono::milliseconds Pause{0};
    std::string Note; ///< what was done to it, in words; empty for a sound answer
};

/// The orders that stand. For each request the oldest order that fits its device acts and the others wait their turn,
/// so that orders are worked off in the sequence they were given; Die comes before all others.
class FaultPlan {
  public:
    /// Throws std::invalid_argument for an ID outside 0 to 32 or a negative count or time.
    void Order(const Fault& fault);
    /// Ends every Die of this ID and those for any device; without an ID, all of them.
    void Revive(std::optional<int> id);
    void Clear() { orders_.clear(); }
    bool Empty() const { return orders_.empty(); }

    /// Lets the rack handle a request and spoils the answer as ordered. Without a value nothing goes on the line;
    /// `note` then says why when an order was the cause. Requests that get no answer anyway use up Die alone.
    std::optional<Transmission> Answer(Rack& rack, const Frame& request, std::string& note);

  private:
    std::deque<Fault>::iterator Find(int id, bool die);
    void UseUp(const std::deque<Fault>::iterator& order);

    std::deque<Fault> orders_;
};

} // namespace nrv::simulator
