#pragma once

#include "launcher/linux/UniqueFd.h"

#include <cstddef>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Launcher {

/// The sockets between the launcher and its helpers: SOCK_SEQPACKET, so that each send is one receive, closed on
/// exec. The kernel adds the sender's process and user to each packet, so a descriptor that got into other hands
/// does not speak for its owner.

/// Descriptors that a packet may carry.
inline constexpr std::size_t kMaxPacketDescriptors = 2;

/// A process and its user, as the kernel tells them.
struct SPeer {
    pid_t process = 0; ///< 0 when it is unknown or cannot be seen from here
    uid_t user = static_cast<uid_t>(-1);

    bool operator==(SPeer const&) const = default;
};

/// What came with a packet. The sender is known on sockets with `ShowSenders`.
struct SAttached {
    SPeer sender;
    std::vector<UniqueFd> descriptors;
};

struct SPacket {
    ssize_t length = -1; ///< bytes; 0 when the other end is gone, -1 on failure, with errno
    int flags = 0;       ///< those of recvmsg
    SAttached attached;
};

/// Blocks for one packet into the `size` bytes at `bytes`.
SPacket ReceivePacket(int socket, void* bytes, std::size_t size);

/// A connected pair of packet sockets, closed on exec; both ends see the sender of what they receive. False when
/// there is none to be had.
bool MakePacketPair(UniqueFd& launcherEnd, UniqueFd& helperEnd);

/// Whether the descriptor is a socket of the kind that `MakePacketPair` makes.
bool IsPacketSocket(int descriptor);

/// Makes the sender of each packet visible; see `SPacket`. False for what is not a socket.
bool ShowSenders(int socket);

/// Who made the pair, or listened for the connection; `SPeer{}` when that is unknown.
SPeer PeerOf(int socket);

/// A socket for helpers whose standard input does not reach them. The kernel chooses the name, which no file
/// belongs to; any process may connect, so the caller looks at `PeerOf` what it accepts.
bool ListenForHelper(UniqueFd& listener, std::string& name);

/// Accepts connections until one comes from `user`; the others are closed. False when none is waiting.
bool AcceptHelper(int listener, uid_t user, UniqueFd& socket);

/// The helper's side of `ListenForHelper`. False when nothing listens under that name.
bool ConnectToLauncher(std::string const& name, UniqueFd& socket);

} // namespace Launcher
