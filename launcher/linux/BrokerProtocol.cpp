#include "launcher/linux/BrokerProtocol.h"

#include "launcher/linux/DisplayVariable.h"

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

} // namespace

bool SendWord(int socket, EWord word) {
    SWordPacket const packet{kWordMagic, static_cast<std::uint32_t>(word)};
    return ::send(socket, &packet, sizeof(packet), MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof(packet));
}

std::optional<SReceivedWord> ReceiveWord(int socket, bool* unread) {
    SWordPacket word{};
    SPacket const packet = ReceivePacket(socket, &word, sizeof(word));
    if (unread) {
        *unread = packet.length < 0 && errno == ECONNRESET;
    }
    bool const isWord = packet.length == static_cast<ssize_t>(sizeof(word)) &&
                        (packet.flags & MSG_TRUNC) == 0 && word.magic == kWordMagic &&
                        word.word >= static_cast<std::uint32_t>(EWord::eReady) &&
                        word.word <= static_cast<std::uint32_t>(EWord::eNoDisplay);
    return isWord ? std::optional(SReceivedWord{static_cast<EWord>(word.word), packet.attached.sender})
                  : std::nullopt;
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
    std::array<int, kMaxPacketDescriptors> const streams = {standardOutput, standardError};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(streams))> control{};
    iovec part{const_cast<char*>(bytes.data()), bytes.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
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
    SPacket packet = ReceivePacket(socket, bytes.data(), bytes.size());
    if (packet.length <= 0) {
        return EReceived::eClosed;
    }
    std::vector<UniqueFd>& descriptors = packet.attached.descriptors;
    if ((packet.flags & (MSG_TRUNC | MSG_CTRUNC)) != 0 || descriptors.size() != kMaxPacketDescriptors) {
        return EReceived::eMalformed;
    }
    received.sender = packet.attached.sender;
    received.standardOutput = std::move(descriptors[0]);
    received.standardError = std::move(descriptors[1]);
    bytes.resize(static_cast<std::size_t>(packet.length));
    return DecodeRequest(bytes, received.request) ? EReceived::eRequest : EReceived::eMalformed;
}

} // namespace Launcher
