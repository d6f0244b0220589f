#pragma once

#include "controls/containers.h"
#include "link/failure_handler.h"
#include "link/serial_port.h"
#include "ports/clock.h"
#include "ports/message_boxes.h"
#include "ports/numbering.h"
#include "ports/operation.h"
#include "ports/process.h"
#include "ports/runtime_error.h"

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace nrv::link {

inline constexpr int FrameLength = 13;
inline constexpr int BulkLength = 432;

/// The command codes that a frame carries as its first payload byte.
enum Command : std::uint8_t {
    GainCommand = 0x01,
    DelayCommand = 0x02,
    PhaseCommand = 0x03,
    CrossoverCommand = 0x04,
    PeqCommand = 0x05,
    ToneCommand = 0x06,
    LimiterCommand = 0x07,
    SourceCommand = 0x08,
    MuteCommand = 0x09,
    BulkUpdateCommand = 0x0A,
    PresetReadCommand = 0x0B,
    MasterGainCommand = 0x0C,
    InputTypeCommand = 0x0D,
    ChannelNameSetCommand = 0x0E,
    UnconnectCommand = 0x0F,
    MemoryReadCommand = 0x10,
    MemoryWriteCommand = 0x11,
    LevelPollCommand = 0x12,
    ExitNoticeCommand = 0x8F,
};

/// Asked for in place of a memory position: the settings that are live in the device.
inline constexpr std::uint8_t LivePreset = 0xFF;

/// The payload of a frame: P1, the command, to P9; what is not given is 0.
using Payload = std::array<std::uint8_t, 9>;

/// The frame that sets a parameter: what it is of at P2 and P3, its codes at P6 to P9.
constexpr Payload ParameterFrame(Command command, int channel, int section, const std::array<int, 4>& codes) {
    Payload payload{static_cast<std::uint8_t>(command), static_cast<std::uint8_t>(channel),
                    static_cast<std::uint8_t>(section)};
    for (std::size_t n = 0; n < codes.size(); ++n) {
        payload[5 + n] = static_cast<std::uint8_t>(codes[n]);
    }
    return payload;
}

/// The serial line: frames, waiting, retrying, and the flags that say what may be sent.
///
/// One request is in flight at a time. Nothing throws across an exchange but the error of `CheckDevice` that is meant.
class Link {
  public:
    Link(SerialPort& port, Clock& clock, Process& process, MessageBoxes& boxes, controls::Timer& serial_timer,
         Operation& operation);

    void SetFailureHandler(FailureHandler& handler) { failure_handler_ = &handler; }

    /// The operation that runs, if any: after its one report nothing more is sent in it.
    Operation& Current;
    /// Told when a device has let a wait go by and another follows, and when an answer came after all.
    std::function<void(int id)> Waiting;
    std::function<void()> Answered;

    // The state of the link; every module reads it, the operations that are told to do so write it.
    bool DemoMode = false;          ///< no device is talked to at all
    bool LinkReady = false;         ///< the port may be used
    bool PortOpened = false;        ///< the last OpenPort succeeded
    bool TxSuppressed = false;      ///< frames are silently not sent
    bool TransactionDone = false;   ///< the last exchange ended with a reply
    bool ReportLinkFailure = false; ///< a final failure is told to the user and closes the window
    bool SerialTimeUp = false;      ///< the probe's time is over
    bool CheckSuppressed = false;   ///< CheckDevice does nothing
    std::array<bool, DeviceCount> DeviceChecked{};
    int ComIndex = 0; ///< the port choice: 0 "NONE", 1 to 32

    std::array<std::uint8_t, FrameLength> TxFrame{};
    std::array<std::uint8_t, BulkLength + 1> RxFrame{};

    /// Sets PortOpened and LinkReady; a port that cannot be opened clears both and says nothing.
    void OpenPort();
    /// Why the last OpenPort failed, one sentence; empty when it did not.
    const std::string& PortRefusal() const { return port_refusal_; }
    /// The port is open now; it closes by itself when it goes away.
    bool PortIsOpen() { return port_.PortOpen(); }
    /// Closes the port, sets both receive lengths and opens it again. Throws RuntimeError.
    void ReopenPort(int receive_length);
    /// Opens the chosen port anew for frames. Throws RuntimeError and leaves the flags as they are.
    void ConnectPort();

    /// Sends a frame and waits for 13 bytes: five transmissions, each until the tenth tick of the clock.
    /// True only when a final failure was reported to the user and the control window is gone; so it is for the rest of
    /// the operation in which that happened, with nothing sent.
    bool SendFrame(int id, const Payload& payload);

    /// The value of the byte stands in MemoryValue() after it. Result as SendFrame.
    bool MemoryRead(int id, int address);
    std::uint8_t MemoryValue() const { return RxFrame[8]; }
    bool MemoryWrite(int id, int address, std::uint8_t value);

    /// Reports a port that went away outside a frame of its own, as a frame that failed for good is.
    void ReportLost(const RuntimeError& error);

    /// Waits for 432 bytes: six transmissions, each until the nineteenth tick; then the process ends. The receive
    /// lengths are the caller's matter. True when the reply came.
    bool BulkExchange(int id, const Payload& payload);

    /// Fetches a memory position, or the settings that are live, with the port set up for the long reply and back.
    /// `preset` takes what the buffer holds whatever came of the exchange, which is meant. Throws RuntimeError when the
    /// port cannot be closed and reopened.
    bool FetchPreset(int id, std::uint8_t position, std::span<std::uint8_t, BulkLength> preset);

    /// One transmission and 200 ms, in which events run. True when a device answered.
    bool ProbeDevice(int id);

    /// Two transmissions, each until the fifth tick. True when the device answered. Throws RuntimeError when the
    /// check's failure cannot be marked in the list.
    bool CheckDevice(int id);

  private:
    struct Patience;

    void SetUpPort();
    bool MaySend() const { return !DemoMode && LinkReady && !TxSuppressed; }
    void FillFrame(int id, std::span<const std::uint8_t> payload);
    /// Transmits until a reply stands in `RxFrame`; false when the last wait is over too. Throws RuntimeError.
    bool Exchange(int id, std::span<const std::uint8_t> payload, const Patience& patience);
    bool WaitForReply(const Patience& patience);
    void TakeReply(std::size_t length);
    bool ReportFailure(const Payload& payload, const std::string& reason);

    SerialPort& port_;
    Clock& clock_;
    Process& process_;
    MessageBoxes& boxes_;
    controls::Timer& serial_timer_;
    FailureHandler* failure_handler_ = nullptr;
    std::string port_refusal_;
};

} // namespace nrv::link
