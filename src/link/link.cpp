#include "link/link.h"

#include <algorithm>
#include <string>

namespace nrv::link {
namespace {

constexpr const char* LineSettings = "19200,N,8,1";
constexpr int ProbeMilliseconds = 200;
constexpr std::size_t ProbeAnswerIndex = 4;
constexpr std::uint8_t ProbeAnswer = 0xC3;

// A wait is over when (now - start) x scale passes the limit, in days: with a clock of whole seconds that is the tenth
// tick, the nineteenth and the fifth. The figures look like fractions of a millisecond and are not.
constexpr double FrameScale = 1000.0;
constexpr double FrameLimit = 0.11;
constexpr double BulkLimit = 0.21;
constexpr double CheckScale = 2000.0;

constexpr int FrameRetries = 4;
constexpr int BulkRetries = 5;
constexpr int CheckRetries = 1;

bool GetsNoReply(const Payload& payload) {
    return payload[0] == ExitNoticeCommand || payload[0] == UnconnectCommand;
}

} // namespace

Link::Link(SerialPort& port, Clock& clock, Process& process, MessageBoxes& boxes, controls::Timer& serial_timer)
    : port_(port), clock_(clock), process_(process), boxes_(boxes), serial_timer_(serial_timer) {
    serial_timer_.Tick = [this] { SerialTimeUp = true; };
}

void Link::OpenPort() {
    try {
        SetUpPort();
        PortOpened = true;
    } catch (const RuntimeError&) {
        PortOpened = false;
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
    port_.SetSettings(LineSettings);
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
    TransactionDone = false;
    try {
        for (int attempt = 0; attempt <= FrameRetries; ++attempt) {
            FillFrame(id, payload);
            port_.Output(TxFrame);
            if (GetsNoReply(payload)) {
                return false;
            }
            // What waits is not thrown away before the next transmission: a late answer counts towards the 13.
            if (WaitForReply(FrameLength, FrameScale, FrameLimit) == Wait::Replied) {
                TakeReply(FrameLength);
                TransactionDone = true;
                return false;
            }
        }
    } catch (const RuntimeError&) {
        // A port that is gone gets no further attempt.
    }
    return ReportFailure();
}

bool Link::ReportFailure() {
    if (!ReportLinkFailure) {
        return false;
    }
    boxes_.Show({" The system will be close the communication with this device", "Communication problem",
                 BoxIcon::Exclamation});
    if (failure_handler_ != nullptr) {
        failure_handler_->GiveUpCurrentDevice();
    }
    return true;
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
    if (!MaySend()) {
        return false;
    }
    try {
        for (int attempt = 0; attempt <= BulkRetries; ++attempt) {
            FillFrame(id, payload);
            port_.Output(TxFrame);
            if (WaitForReply(BulkLength, FrameScale, BulkLimit) == Wait::Replied) {
                TakeReply(BulkLength);
                return true;
            }
        }
    } catch (const RuntimeError&) {
        return false;
    }
    boxes_.Show({"Time out", "", BoxIcon::Exclamation});
    process_.End();
    return false;
}

bool Link::ProbeDevice(int id) {
    if (!MaySend()) {
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
    const std::size_t row = static_cast<std::size_t>(id);
    if (!MaySend() || !DeviceChecked[row] || CheckSuppressed) {
        return false;
    }
    TransactionDone = false;
    for (int attempt = 0; attempt <= CheckRetries; ++attempt) {
        FillFrame(id, {});
        port_.Output(TxFrame);
        if (WaitForReply(FrameLength, CheckScale, FrameLimit) == Wait::Replied) {
            TakeReply(FrameLength);
            TransactionDone = true;
            return RxFrame[ProbeAnswerIndex] == ProbeAnswer;
        }
    }
    // The box names the device of the window last active, not the one that was asked; that is meant.
    const int named = failure_handler_ != nullptr ? failure_handler_->CurrentDevice() : 0;
    boxes_.Show({"Time-Out: Communication problem with device ID:" + std::to_string(named), "", BoxIcon::Exclamation});
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

Link::Wait Link::WaitForReply(int length, double scale, double limit) {
    const double start = clock_.Now();
    while (true) {
        const double elapsed = (clock_.Now() - start) * scale;
        if (elapsed > limit) {
            return Wait::TimedOut;
        }
        if (port_.InBufferCount() >= length) {
            return Wait::Replied;
        }
    }
}

void Link::TakeReply(std::size_t length) {
    const std::vector<std::uint8_t> reply = port_.Input();
    std::copy_n(reply.begin(), std::min(length, reply.size()), RxFrame.begin());
    port_.ClearInBuffer();
}

} // namespace nrv::link
