#include "launcher/linux/BrokerProtocol.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/uio.h>

namespace Launcher {

namespace {

constexpr std::uint32_t kRequestMagic = 0x514d5231; // "QMR1"
constexpr std::uint32_t kWordMagic = 0x514d5731;    // "QMW1"
constexpr std::size_t kStreamCount = 2;
constexpr std::size_t kMaxVariableBytes = 4096;

struct SWordPacket {
    std::uint32_t magic;
    std::uint32_t word;
};

void AppendNumber(std::string& bytes, std::size_t number) {
    auto const value = static_cast<std::uint32_t>(number); // callers have checked the limit
    bytes.append(reinterpret_cast<char const*>(&value), sizeof(value));
}

// Takes numbers and texts off the front of a request; every taking checks what is left.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    bool Take(std::uint32_t& number) {
        if (m_rest.size() < sizeof(number)) {
            return false;
        }
        std::memcpy(&number, m_rest.data(), sizeof(number));
        m_rest.remove_prefix(sizeof(number));
        return true;
    }

    bool Take(std::string& text) {
        std::uint32_t length = 0;
        if (!Take(length) || length > m_rest.size()) {
            return false;
        }
        text = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return text.find('\0') == std::string::npos;
    }

    bool Take(std::vector<std::string>& texts, std::uint32_t count) {
        texts.resize(count);
        return std::all_of(texts.begin(), texts.end(), [this](std::string& text) { return Take(text); });
    }

    bool AtEnd() const { return m_rest.empty(); }

  private:
    std::string_view m_rest;
};

// Room for the two descriptors of a request, aligned as control messages want it.
union UControl {
    cmsghdr header;
    char bytes[CMSG_SPACE(kStreamCount * sizeof(int))];
};

// The descriptors that arrived with a message, wrapped at once so that none is lost, whatever their number.
std::vector<UniqueFd> ArrivedDescriptors(msghdr& message) {
    std::vector<UniqueFd> descriptors;
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); header; header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS) {
            continue;
        }
        std::size_t const count = (header->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        for (std::size_t i = 0; i < count; ++i) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(header) + i * sizeof(int), sizeof(int));
            descriptors.emplace_back(descriptor);
        }
    }
    return descriptors;
}

} // namespace

bool MakePacketPair(UniqueFd& launcherEnd, UniqueFd& helperEnd) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        return false;
    }
    launcherEnd = UniqueFd(ends[0]);
    helperEnd = UniqueFd(ends[1]);
    return true;
}

bool IsPacketSocket(int descriptor) {
    auto const option = [descriptor](int name) {
        int value = -1;
        socklen_t length = sizeof(value);
        return ::getsockopt(descriptor, SOL_SOCKET, name, &value, &length) == 0 ? value : -1;
    };
    return option(SO_DOMAIN) == AF_UNIX && option(SO_TYPE) == SOCK_SEQPACKET;
}

bool SendWord(int socket, EWord word) {
    SWordPacket const packet{kWordMagic, static_cast<std::uint32_t>(word)};
    return ::send(socket, &packet, sizeof(packet), MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof(packet));
}

std::optional<EWord> ReceiveWord(int socket, bool* unread) {
    SWordPacket packet{};
    ssize_t received = 0;
    do {
        received = ::recv(socket, &packet, sizeof(packet), MSG_TRUNC);
    } while (received < 0 && errno == EINTR);
    if (unread) {
        *unread = received < 0 && errno == ECONNRESET;
    }
    bool const isWord = received == static_cast<ssize_t>(sizeof(packet)) && packet.magic == kWordMagic &&
                        packet.word >= static_cast<std::uint32_t>(EWord::eReady) &&
                        packet.word <= static_cast<std::uint32_t>(EWord::eFailed);
    return isWord ? std::optional(static_cast<EWord>(packet.word)) : std::nullopt;
}

std::optional<std::string> EncodeRequest(SLaunchRequest const& request) {
    if (request.arguments.size() > kMaxRequestArguments ||
        request.environment.size() > kMaxRequestVariables) {
        return std::nullopt;
    }
    std::string bytes;
    AppendNumber(bytes, kRequestMagic);
    AppendNumber(bytes, request.arguments.size());
    AppendNumber(bytes, request.environment.size());
    auto const append = [&bytes](std::string const& text) {
        if (text.size() > kMaxRequestBytes) {
            return false;
        }
        AppendNumber(bytes, text.size());
        bytes += text;
        return true;
    };
    bool const complete = append(request.path) &&
                          std::all_of(request.arguments.begin(), request.arguments.end(), append) &&
                          std::all_of(request.environment.begin(), request.environment.end(), append);
    return complete && bytes.size() <= kMaxRequestBytes ? std::optional(std::move(bytes)) : std::nullopt;
}

bool DecodeRequest(std::string_view bytes, SLaunchRequest& request) {
    Reader reader(bytes);
    std::uint32_t magic = 0;
    std::uint32_t arguments = 0;
    std::uint32_t variables = 0;
    return bytes.size() <= kMaxRequestBytes && reader.Take(magic) && magic == kRequestMagic &&
           reader.Take(arguments) && arguments <= kMaxRequestArguments && reader.Take(variables) &&
           variables <= kMaxRequestVariables && reader.Take(request.path) && request.path.starts_with('/') &&
           reader.Take(request.arguments, arguments) && reader.Take(request.environment, variables) &&
           reader.AtEnd() &&
           std::all_of(request.environment.begin(), request.environment.end(), IsDisplayVariable);
}

bool SendRequest(int socket, std::string const& bytes, int standardOutput, int standardError) {
    std::array<int, kStreamCount> const streams = {standardOutput, standardError};
    UControl control{};
    iovec part{const_cast<char*>(bytes.data()), bytes.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = &control;
    message.msg_controllen = sizeof(control.bytes);
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(streams));
    std::memcpy(CMSG_DATA(header), streams.data(), sizeof(streams));
    ssize_t sent = 0;
    do {
        sent = ::sendmsg(socket, &message, MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent == static_cast<ssize_t>(bytes.size());
}

EReceived ReceiveRequest(int socket, SReceivedRequest& received) {
    std::string bytes(kMaxRequestBytes, '\0');
    UControl control{};
    iovec part{bytes.data(), bytes.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = &control;
    message.msg_controllen = sizeof(control.bytes);
    ssize_t length = 0;
    do {
        length = ::recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (length < 0 && errno == EINTR);
    if (length <= 0) {
        return EReceived::eClosed;
    }
    std::vector<UniqueFd> descriptors = ArrivedDescriptors(message);
    if ((message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0 || descriptors.size() != kStreamCount) {
        return EReceived::eMalformed;
    }
    received.standardOutput = std::move(descriptors[0]);
    received.standardError = std::move(descriptors[1]);
    bytes.resize(static_cast<std::size_t>(length));
    return DecodeRequest(bytes, received.request) ? EReceived::eRequest : EReceived::eMalformed;
}

bool IsDisplayVariable(std::string_view variable) {
    std::size_t const equals = variable.find('=');
    if (equals == std::string_view::npos || variable.size() > kMaxVariableBytes) {
        return false;
    }
    std::string_view const name = variable.substr(0, equals);
    std::string_view const value = variable.substr(equals + 1);
    auto const isPrintable = [](char c) { return static_cast<unsigned char>(c) > 0x1f && c != 0x7f; };
    auto const isLocaleCharacter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               c == '.' || c == '-' || c == '@';
    };
    if (value.empty() || !std::all_of(value.begin(), value.end(), isPrintable)) {
        return false;
    }
    if (name == "LANG") {
        return std::all_of(value.begin(), value.end(), isLocaleCharacter);
    }
    return name == "DISPLAY" || ((name == "XAUTHORITY" || name == "WAYLAND_DISPLAY") && value.front() == '/');
}

} // namespace Launcher
