#include "history/changes.h"

#include <algorithm>

namespace nrv::history {
namespace {

/// In two bytes: a title may be longer than one can tell.
void Append(std::string& packed, std::size_t number) {
    packed += static_cast<char>(static_cast<unsigned char>(number >> 8));
    packed += static_cast<char>(static_cast<unsigned char>(number & 0xFF));
}

class Reader {
  public:
    explicit Reader(const std::string& packed) : packed_(packed) {}
    bool AtEnd() const { return place_ >= packed_.size(); }
    std::size_t Number() {
        const auto byte = [this] { return static_cast<std::size_t>(static_cast<unsigned char>(packed_[place_++])); };
        const std::size_t high = byte();
        return 256 * high + byte();
    }
    std::string Text(std::size_t length) {
        place_ += length;
        return packed_.substr(place_ - length, length);
    }

  private:
    const std::string& packed_;
    std::size_t place_ = 0;
};

} // namespace

Changes::Changes(const Snapshot& before, const Snapshot& after) {
    const auto add = [this](std::size_t place, const std::string& was, const std::string& is) {
        Append(packed_, place);
        Append(packed_, was.size());
        Append(packed_, is.size());
        packed_ += was;
        packed_ += is;
    };
    const auto was = BytesOf(before.Image);
    const auto is = BytesOf(after.Image);
    for (std::size_t first = 0; first < model::ImageSize;) {
        std::size_t end = first;
        while (end < model::ImageSize && was[end] != is[end]) {
            ++end;
        }
        if (end > first) {
            const auto run = [&](const auto& bytes) {
                return std::string(&bytes[first], &bytes[first] + (end - first));
            };
            add(first, run(was), run(is));
        }
        first = std::max(end, first + 1);
    }
    for (std::size_t n = 0; n < before.Extras.size(); ++n) {
        if (before.Extras[n] != after.Extras[n]) {
            add(model::ImageSize + n, before.Extras[n], after.Extras[n]);
        }
    }
}

Snapshot Changes::With(Snapshot snapshot, bool after) const {
    Reader reader(packed_);
    while (!reader.AtEnd()) {
        const std::size_t place = reader.Number();
        const std::size_t was_length = reader.Number();
        const std::size_t is_length = reader.Number();
        const std::string was = reader.Text(was_length);
        const std::string is = reader.Text(is_length);
        const std::string& taken = after ? is : was;
        if (place < model::ImageSize) {
            std::ranges::copy(taken, BytesOf(snapshot.Image).begin() + static_cast<std::ptrdiff_t>(place));
        } else {
            snapshot.Extras[place - model::ImageSize] = taken;
        }
    }
    return snapshot;
}

} // namespace nrv::history
