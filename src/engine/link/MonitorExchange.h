// One exchange with the board's monitor over MSComm: the receive buffer is
// emptied, the frame goes out, and the host polls until exactly the expected
// number of bytes has arrived or the time-out has run out. More bytes than
// expected count as no reply. The check then depends on the frame: reads and
// steps end in a checksum, writes, programming, erase and execute in an ACK.
#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <optional>

class MSComm;

enum class ReplyCheck {
    Checksum,   // offsets 1 to the end sum to 0; offset 0 is not examined
    Ack,        // a single byte 6
};

struct ExchangeRules {
    int replySize = 1;
    ReplyCheck check = ReplyCheck::Checksum;
    // Milliseconds of tick count the poll may last; none waits for ever.
    std::optional<std::uint32_t> timeoutMs;
    // Let pending window events run on each round of the poll.
    bool pumpEvents = false;
};

// Abandoned: the caller's abandoned() ended the wait; nothing was read.
enum class ExchangeResult { Valid, NoResponse, InvalidData, Abandoned };

// Runs the exchange; reply holds what was read (also when it is invalid),
// or nothing when the expected size never came. abandoned, if given, is asked
// after each event pass of a pumped poll: true gives the wait up.
ExchangeResult RunExchange(MSComm& comm, const QByteArray& frame, const ExchangeRules& rules, QByteArray& reply,
                           const std::function<bool()>& abandoned = {});

// The standard time-outs of the operations, in milliseconds.
namespace exchange_timeout {
constexpr std::uint32_t Read = 100;       // InByte, InBytes, InCPU, InMemory blocks, InStack
constexpr std::uint32_t Program = 200;    // InProgram's 256 bytes
constexpr std::uint32_t Write = 100;      // OutByte, OutBytes, "P", "X"
constexpr std::uint32_t Erase = 3000;
constexpr std::uint32_t Step = 1000;      // a plain step
// Every wait is multiplied by this. The IDE leaves it at 1; tests that talk to
// the board emulator raise it, because on a busy machine the emulator's
// process may not be scheduled within 100 ms.
inline std::uint32_t Stretch = 1;
} // namespace exchange_timeout
