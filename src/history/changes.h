#pragma once

#include "history/snapshot.h"

#include <string>

namespace nrv::history {

/// What differs between two snapshots, packed: some bytes for a fader, two or three thousand for a whole preset.
class Changes {
  public:
    Changes() = default;
    Changes(const Snapshot& before, const Snapshot& after);

    bool Empty() const { return packed_.empty(); }
    std::size_t Size() const { return packed_.size(); }
    /// `snapshot` with all that changed as it was before, or as it was after.
    Snapshot Before(const Snapshot& snapshot) const { return With(snapshot, false); }
    Snapshot After(const Snapshot& snapshot) const { return With(snapshot, true); }

  private:
    Snapshot With(Snapshot snapshot, bool after) const;

    /// Of each change: its place, two lengths, and so many bytes of before and of after. Places up to the
    /// image's size are a run of its bytes, those past it an extra.
    std::string packed_;
};

} // namespace nrv::history
