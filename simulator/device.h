#pragma once

#include "simulator/factory.h"
#include "simulator/protocol.h"

#include <optional>
#include <string>
#include <string_view>

namespace nrv::simulator {

/// One virtual device: its memory, its live settings, and what it does with a request.
class Device {
  public:
    /// A device in its factory state. An empty label stands for FactoryLabel; a label is cut or padded to 16
    /// characters. Throws std::invalid_argument when the ID is not 0 to 32.
    explicit Device(int id, std::string_view label = {});

    int Id() const { return id_; }

    /// Carries out a request that is addressed to this device. `moving` are the levels that the meters show unless
    /// SetLevels fixed them. No answer: the two notices, a command that does not exist, a position that does not exist.
    /// An index out of range is acknowledged and changes nothing.
    std::optional<Reply> Handle(const Frame& request, const Levels& moving);

    std::string Label() const;
    void SetLabel(std::string_view label);
    std::string Password() const;
    void SetPassword(std::string_view password); ///< cut or padded with blanks to six characters
    bool Locked() const;
    void SetLocked(bool locked);

    /// The byte at an address; 0 beyond the end of memory.
    Byte Memory(std::size_t address) const;
    /// Writes beyond the end of memory are lost.
    void SetMemory(std::size_t address, Byte value);

    const PresetBody& LiveImage() const { return live_; }
    void SetLiveImage(const PresetBody& live) { live_ = live; }

    /// Fills memory position 0 to 8 and marks it as used; the name is cut or padded to 16 characters. Position 8 has a
    /// mark and a body but no name. Throws std::invalid_argument for another position.
    void PutPreset(int position, std::string_view name, const PresetBody& body);
    PresetBody Preset(int position) const;
    bool PresetUsed(int position) const;
    std::string PresetName(int position) const; ///< of position 0 to 7

    /// True between a bulk update command with P2 = 0 and the next one with P2 = 1.
    bool BulkUpdating() const { return bulk_updating_; }
    void SetBulkUpdating(bool on) { bulk_updating_ = on; }

    /// Switches the device off and on: its memory stays, its meters move. It comes back with the settings of the memory
    /// position that bears the active preset's name, else of the first one in use, else with the factory's; or at once
    /// with the factory's, with the option bits (but for the lock), the mute bits and the active name that go with
    /// them.
    void Reboot(bool to_factory);

    /// Fixes the levels that the device reports; without a value they move again.
    void SetLevels(std::optional<Levels> levels) { fixed_levels_ = levels; }

  private:
    std::optional<int> StoredPosition() const;
    std::string Text(std::size_t address, std::size_t size) const;
    void SetText(std::size_t address, std::size_t size, std::string_view text);
    void Set(std::size_t position, Byte value) { live_[position] = value; }
    void SetParameter(const Frame& request);
    void SetChannelParameter(Command command, const Frame& request);
    void SetOutputParameter(Command command, const Frame& request);

    int id_;
    DeviceMemory memory_;
    PresetBody live_;
    bool bulk_updating_ = false;
    std::optional<Levels> fixed_levels_;
};

} // namespace nrv::simulator
