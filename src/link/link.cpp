#include "link/link.h"

#include <algorithm>
#include <string>

namespace nrv::link {
namespace {

constexpr LineSettings Settings{.Baud = 19200};
constexpr int ProbeMilliseconds = 200;
constexpr std::size_t ProbeAnswerIndex = 4;
constexpr std::uint8_t ProbeAnswer = 0xC3;

bool GetsNoReply(const Payload& payload) {
    return payload[0] == ExitNoticeCommand || payload[0] == UnconnectCommand;
}

/// How many frames are left out with this one: a mute is followed by the byte in which the device keeps it.
int FramesWith(const Payload& payload) {
    return payload[0] == MuteCommand ? 2 : 1;
}

std::string DoesNotAnswer(int id) {
    return IdText(id) + " does not answer";
}

/// A sentence without its full stop.
std::string Clause(std::string sentence) {
    if (sentence.ends_with('.')) {
        sentence.pop_back();
    }
    return sentence;
}

} // namespace

/// How long an exchange is waited for. A wait is over when (now - start) x scale passes the limit, in days: with a
/// clock of whole seconds that is the tenth tick for a frame, the nineteenth for a long reply, the fifth for a check.
/// The figures look like fractions of a millisecond and are not.
struct Link::Patience {
    int ReplyLength;
    int Transmissions;
    double Scale;
    double Limit;

    static const Patience OfFrame;
    static const Patience OfBulk;
    static const Patience OfCheck;
};

constexpr Link::Patience Link::Patience::OfFrame{
    .ReplyLength = FrameLength, .Transmissions = 5, .Scale = 1000.0, .Limit = 0.11};
constexpr Link::Patience Link::Patience::OfBulk{
    .ReplyLength = BulkLength, .Transmissions = 6, .Scale = 1000.0, .Limit = 0.21};
constexpr Link::Patience Link::Patience::OfCheck{
    .ReplyLength = FrameLength, .Transmissions = 2, .Scale = 2000.0, .Limit = 0.11};

Link::Link(SerialPort& port, Clock& clock, Process& process, MessageBoxes& boxes, controls::Timer& serial_timer,
           Operation& operation)
    : Current(operation), port_(port), clock_(clock), process_(process), boxes_(boxes), serial_timer_(serial_timer) {
    serial_timer_.Tick = [this] { SerialTimeUp = true; };
}

void Link::OpenPort() {
    port_refusal_.clear();
    try {
        SetUpPort();
        PortOpened = true;
    } catch (const RuntimeError& error) {
        PortOpened = false;
        port_refusal_ = error.what();
    }
    LinkReady = PortOpened;
}

void Link::ConnectPort() {
    SetUpPort();
    ReopenPort(FrameLength);
}

void Link::SetUpPort() {
    if (port_.PortOpen()) {
        port_.SetPortOpen(false);
    }
    port_.SetCommPort(ComIndex);
    port_.SetSettings(Settings);
    port_.SetPortOpen(true);
}

void Link::ReopenPort(int receive_length) {
    if (port_.PortOpen()) {
        port_.SetPortOpen(false);
    }
    port_.SetInBufferSize(receive_length);
    port_.SetInputLen(receive_length);
    port_.SetPortOpen(true);
}

bool Link::SendFrame(int id, const Payload& payload) {
    if (!MaySend()) {
        return false;
    }
    if (Current.Reported()) {
        Current.CountUnsent(FramesWith(payload));
        return true;
    }
    TransactionDone = false;
    std::string reason = DoesNotAnswer(id);
    try {
        if (GetsNoReply(payload)) {
            FillFrame(id, payload);
            port_.Output(TxFrame);
            return false;
        }
        if (Exchange(id, payload, Patience::OfFrame)) {
            TransactionDone = true;
            Current.CountAnswered();
            return false;
        }
    } catch (const RuntimeError& error) {
        // A port that is gone gets no further attempt.
        reason = Clause(error.what());
    }
    return ReportFailure(payload, reason);
}

bool Link::ReportFailure(const Payload& payload, const std::string& reason) {
    if (!ReportLinkFailure) {
        return false;
    }
    Current.CountUnsent(FramesWith(payload));
    Current.Fail(reason);
    if (failure_handler_ != nullptr) {
        failure_handler_->TellFailure();
    }
    boxes_.Show({" The system will be close the communication with this device", "Communication problem",
                 BoxIcon::Exclamation});
    Current.Report();
    if (failure_handler_ != nullptr) {
        failure_handler_->GiveUpDevice();
    }
    return true;
}

void Link::ReportLost(const RuntimeError& error) {
    TransactionDone = false;
    ReportFailure({}, Clause(error.what()));
}

bool Link::MemoryRead(int id, int address) {
    return SendFrame(id,
                     {MemoryReadCommand, static_cast<std::uint8_t>(address >> 8), static_cast<std::uint8_t>(address)});
}

bool Link::MemoryWrite(int id, int address, std::uint8_t value) {
    return SendFrame(id, {MemoryWriteCommand, static_cast<std::uint8_t>(address >> 8),
                          static_cast<std::uint8_t>(address), 0, 0, value});
}

bool Link::BulkExchange(int id, const Payload& payload) {
    if (!MaySend() || Current.Reported()) {
        return false;
    }
    try {
        if (Exchange(id, payload, Patience::OfBulk)) {
            return true;
        }
    } catch (const RuntimeError&) {
        return false;
    }
    // Nothing more is sent while the last box stands.
    LinkReady = false;
    boxes_.Show({"Time out", "", BoxIcon::Exclamation});
    process_.End();
    return false;
}

bool Link::FetchPreset(int id, std::uint8_t position, std::span<std::uint8_t, BulkLength> preset) {
    ReopenPort(BulkLength);
    const bool came = BulkExchange(id, {PresetReadCommand, position});
    std::copy_n(RxFrame.begin(), BulkLength, preset.begin());
    ReopenPort(FrameLength);
    return came;
}

bool Link::ProbeDevice(int id) {
    if (!MaySend() || Current.Reported()) {
        return false;
    }
    try {
        FillFrame(id, {});
        port_.Output(TxFrame);
        SerialTimeUp = false;
        serial_timer_.Start(ProbeMilliseconds);
        do {
            process_.RunPendingEvents();
            if (SerialTimeUp) {
                serial_timer_.Stop();
                return false;
            }
        } while (port_.InBufferCount() < FrameLength);
        serial_timer_.Stop();
        // TakeReply empties the input; a probe that timed out leaves it, so that a late answer meets the next probe.
        TakeReply(FrameLength);
        return RxFrame[ProbeAnswerIndex] == ProbeAnswer;
    } catch (const RuntimeError&) {
        serial_timer_.Stop();
        return false;
    }
}

bool Link::CheckDevice(int id) {
    const auto row = static_cast<std::size_t>(id);
    if (!MaySend() || !DeviceChecked[row] || CheckSuppressed || Current.Reported()) {
        return false;
    }
    TransactionDone = false;
    if (Exchange(id, {}, Patience::OfCheck)) {
        TransactionDone = true;
        return RxFrame[ProbeAnswerIndex] == ProbeAnswer;
    }
    // The box names the device of the window last active, not the one that was asked; that is meant.
    const int named = failure_handler_ != nullptr ? failure_handler_->CurrentDevice() : 0;
    boxes_.Show({"Time-Out: Communication problem with device " + IdText(named), "", BoxIcon::Exclamation});
    DeviceChecked[row] = false;
    if (failure_handler_ != nullptr) {
        failure_handler_->MarkUnchecked(id);
    }
    TransactionDone = true;
    return false;
}

void Link::FillFrame(int id, std::span<const std::uint8_t> payload) {
    TxFrame.fill(0);
    TxFrame[0] = 0xF0;
    TxFrame[1] = 0xC3;
    TxFrame[2] = static_cast<std::uint8_t>(id);
    std::ranges::copy(payload, TxFrame.begin() + 3);
    TxFrame[12] = 0xF7;
}

bool Link::Exchange(int id, std::span<const std::uint8_t> payload, const Patience& patience) {
    for (int left = patience.Transmissions; left > 0; --left) {
        FillFrame(id, payload);
        port_.Output(TxFrame);
        // What waits is not thrown away before the next transmission: a late answer counts towards the reply.
        if (WaitForReply(patience)) {
            TakeReply(static_cast<std::size_t>(patience.ReplyLength));
            if (Answered) {
                Answered();
            }
            return true;
        }
        if (left > 1 && Waiting) {
            Waiting(id);
        }
    }
    return false;
}

bool Link::WaitForReply(const Patience& patience) {
    const double start = clock_.Now();
    while (true) {
        if ((clock_.Now() - start) * patience.Scale > patience.Limit) {
            return false;
        }
        if (port_.InBufferCount() >= patience.ReplyLength) {
            return true;
        }
    }
}

void Link::TakeReply(std::size_t length) {
    const std::vector<std::uint8_t> reply = port_.Input();
    std::copy_n(reply.begin(), std::min(length, reply.size()), RxFrame.begin());
    port_.ClearInBuffer();
}

} // namespace nrv::link
