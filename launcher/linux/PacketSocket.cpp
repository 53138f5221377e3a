#include "launcher/linux/PacketSocket.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>

namespace Launcher {

namespace {

// Room for the control messages of a packet: the sender, and with a request two descriptors.
union UControl {
    cmsghdr header;
    char bytes[CMSG_SPACE(sizeof(ucred)) + CMSG_SPACE(kMaxPacketDescriptors * sizeof(int))];
};

// Descriptors are wrapped at once so that none is lost, whatever their number.
SAttached TakeAttached(msghdr& message) {
    SAttached attached;
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); header; header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level != SOL_SOCKET) {
            continue;
        }
        std::size_t const length = header->cmsg_len - CMSG_LEN(0);
        if (header->cmsg_type == SCM_CREDENTIALS && length == sizeof(ucred)) {
            ucred sender{};
            std::memcpy(&sender, CMSG_DATA(header), sizeof(sender));
            attached.sender = {sender.pid, sender.uid};
        }
        for (std::size_t i = 0; header->cmsg_type == SCM_RIGHTS && i < length / sizeof(int); ++i) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(header) + i * sizeof(int), sizeof(int));
            attached.descriptors.emplace_back(descriptor);
        }
    }
    return attached;
}

// The address of a name that the kernel made: in the abstract name space, which the leading NUL says.
socklen_t MakeAddress(std::string const& name, sockaddr_un& address) {
    address = {};
    address.sun_family = AF_UNIX;
    std::size_t const length = std::min(name.size(), sizeof(address.sun_path) - 1);
    std::memcpy(address.sun_path + 1, name.data(), length);
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
}

} // namespace

bool MakePacketPair(UniqueFd& launcherEnd, UniqueFd& helperEnd) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        return false;
    }
    launcherEnd = UniqueFd(ends[0]);
    helperEnd = UniqueFd(ends[1]);
    return ShowSenders(ends[0]) && ShowSenders(ends[1]);
}

bool IsPacketSocket(int descriptor) {
    auto const option = [descriptor](int name) {
        int value = -1;
        socklen_t length = sizeof(value);
        return ::getsockopt(descriptor, SOL_SOCKET, name, &value, &length) == 0 ? value : -1;
    };
    return option(SO_DOMAIN) == AF_UNIX && option(SO_TYPE) == SOCK_SEQPACKET;
}

bool ShowSenders(int socket) {
    int const on = 1;
    return ::setsockopt(socket, SOL_SOCKET, SO_PASSCRED, &on, sizeof(on)) == 0;
}

SPeer PeerOf(int socket) {
    ucred peer{};
    socklen_t length = sizeof(peer);
    bool const isKnown =
        ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && length == sizeof(peer);
    return isKnown ? SPeer{peer.pid, peer.uid} : SPeer{};
}

bool ListenForHelper(UniqueFd& listener, std::string& name) {
    listener = UniqueFd(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof(address);
    if (!listener.IsOpen() || !ShowSenders(listener.Get()) ||
        ::bind(listener.Get(), plain, sizeof(address.sun_family)) != 0 || // no name: the kernel makes one
        ::listen(listener.Get(), SOMAXCONN) != 0 || ::getsockname(listener.Get(), plain, &length) != 0 ||
        length <= offsetof(sockaddr_un, sun_path) + 1) {
        return false;
    }
    name.assign(address.sun_path + 1, length - offsetof(sockaddr_un, sun_path) - 1);
    return true;
}

bool AcceptHelper(int listener, uid_t user, UniqueFd& socket) {
    do {
        socket = UniqueFd(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    } while (socket.IsOpen() ? PeerOf(socket.Get()).user != user : errno == ECONNABORTED || errno == EINTR);
    return socket.IsOpen();
}

bool ConnectToLauncher(std::string const& name, UniqueFd& socket) {
    sockaddr_un address{};
    socklen_t const length = MakeAddress(name, address);
    socket = UniqueFd(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    return socket.IsOpen() && ShowSenders(socket.Get()) &&
           ::connect(socket.Get(), reinterpret_cast<sockaddr const*>(&address), length) == 0;
}

SPacket ReceivePacket(int socket, void* bytes, std::size_t size) {
    UControl control{};
    iovec part{bytes, size};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = &control;
    message.msg_controllen = sizeof(control.bytes);
    SPacket packet;
    do {
        packet.length = ::recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (packet.length < 0 && errno == EINTR);
    if (packet.length >= 0) {
        packet.flags = message.msg_flags;
        packet.attached = TakeAttached(message);
    }
    return packet;
}

} // namespace Launcher
