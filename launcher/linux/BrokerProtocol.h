#pragma once

#include "launcher/linux/PacketSocket.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace Launcher {

/// What the launcher, its broker and its dialogs say to each other.
///
/// The launcher keeps one end of a SOCK_SEQPACKET pair, the other is the helper's standard input. Helpers send
/// words; the launcher sends one launch request. Both ends are of the same build on the same machine, so numbers
/// have the machine's own byte order. A request:
///
///     magic (4) | arguments (4) | environment (4) | text | text ...       text: length (4) | bytes, no NUL
///
/// The texts are the path, then the counted arguments, then the counted environment. The launcher's standard
/// output and error travel with it as two descriptors.
///
/// Each side compares the sender of what it receives with whom it expects to hear.

enum class EWord : std::uint32_t {
    eReady = 1,         ///< broker: I am root; agent: I am registered
    eCancelled = 2,     ///< dialog: the user cancelled
    eStarted = 3,       ///< broker: the program runs
    eNotExecutable = 4, ///< broker: execve refused the program
    eFailed = 5,        ///< broker: the request was not understood, or there was no process to be had
    eNoDisplay = 6,     ///< dialog: there is no display, or it does not answer
};

struct SReceivedWord {
    EWord word;
    SPeer sender;
};

struct SLaunchRequest {
    std::string path; ///< absolute
    std::vector<std::string> arguments;
    std::vector<std::string> environment; ///< "NAME=value"; see `IsDisplayVariable`
};

inline constexpr std::size_t kMaxRequestBytes = 65536;
inline constexpr std::uint32_t kMaxRequestArguments = 16;
inline constexpr std::uint32_t kMaxRequestVariables = 8;

/// False when the other end is gone. Safe in a signal handler.
bool SendWord(int socket, EWord word);

/// Blocks. Empty when the other end is gone or sends anything but a word. `*unread` (may be null) then tells
/// whether the other end left without reading what it had been sent.
std::optional<SReceivedWord> ReceiveWord(int socket, bool* unread = nullptr);

/// The request as bytes, or empty when it exceeds a limit.
std::optional<std::string> EncodeRequest(SLaunchRequest const& request);

/// False, with `request` unspecified, unless the bytes are exactly one request within the limits whose path is
/// absolute and whose variables all pass `IsDisplayVariable`.
bool DecodeRequest(std::string_view bytes, SLaunchRequest& request);

/// Sends encoded bytes with the two descriptors. False when the other end is gone.
bool SendRequest(int socket, std::string const& bytes, int standardOutput, int standardError);

/// A request as it arrived.
struct SReceivedRequest {
    SLaunchRequest request;
    SPeer sender;
    UniqueFd standardOutput;
    UniqueFd standardError;
};

enum class EReceived { eRequest, eMalformed, eClosed };

/// Blocks for one request.
EReceived ReceiveRequest(int socket, SReceivedRequest& received);

} // namespace Launcher
