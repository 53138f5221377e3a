#include "foundation/messaging/ScopedConnection.h"

#include "foundation/core/VException.h"
#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/messaging/VMessage.h"
#include "foundation/messaging/VMessageCenter.h"
#include "foundation/messaging/VMessenger.h"
#include "foundation/messaging/VNotification.h"
#include "foundation/messaging/VNotificationCenter.h"
#include "foundation/messaging/internal/Connected.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <new>
#include <optional>
#include <utility>

namespace VFoundation {

ScopedConnection::ScopedConnection() noexcept = default;
ScopedConnection::ScopedConnection(ScopedConnection&& other) noexcept = default;

ScopedConnection::ScopedConnection(VObjectRef<detail::Connected> connected) noexcept
    : m_connected(std::move(connected)) {
}

ScopedConnection::~ScopedConnection() {
    DisconnectAndWait();
}

ScopedConnection& ScopedConnection::operator=(ScopedConnection&& other) noexcept {
    if (this != &other) {
        DisconnectAndWait();
        m_connected = std::move(other.m_connected);
    }
    return *this;
}

void ScopedConnection::Disconnect() noexcept {
    if (auto const connected = std::move(m_connected)) {
        WithoutThrowing([&] { connected->Disconnect(); });
    }
}

void ScopedConnection::DisconnectAndWait() noexcept {
    if (auto const connected = std::move(m_connected)) {
        WithoutThrowing([&] { connected->Disconnect(); });
        connected->Wait();
    }
}

namespace {

/// A function as an observer. Its registration holds it too.
class FunctionObserver final : public detail::Connected {
  public:
    FunctionObserver(VNotificationCenter* center, VNotificationCenter::Function function)
        : m_center(center), m_function(std::move(function)) {}

    static void Hear(VObject* observer, VNotification* notification) {
        auto* const self = static_cast<FunctionObserver*>(observer);
        CallGate::Call const call(self->m_gate);
        if (call.IsLetThrough()) {
            self->m_function(*notification);
        }
    }

    void Disconnect() override {
        m_gate.Close();
        auto const center = std::move(m_center);
        center->RemoveObserver(this);
    }
    void Wait() noexcept override { m_gate.CloseAndWait(); }

  private:
    CallGate m_gate;
    VObjectRef<VNotificationCenter> m_center;
    VNotificationCenter::Function const m_function;
};

/// A function as a messenger: each message that comes in is a call.
class FunctionMessenger final : public VMessenger {
  public:
    FunctionMessenger(VMessageCenter::Function function, bool isOnCenter)
        : VMessenger(nullptr), m_function(std::move(function)), m_isOnCenter(isOnCenter) {}

    void ReceiveMessage(VMessage* message) override {
        CallGate::Call const call(m_gate);
        if (call.IsLetThrough()) {
            std::optional<UsualRounding> rounding;
            if (m_isOnCenter) {
                rounding.emplace();
            }
            m_function(*message);
        }
    }
    bool TouchInMessage(int /*id*/) override { return true; }
    bool TouchOutMessage(int /*id*/) override { return true; }
    int GetOutMessageCount() override { return 0; }
    int GetInMessageCount() override { return 1; }
    char const* GetMessengerName() override { return "function"; }

    CallGate& Gate() noexcept { return m_gate; }

  private:
    CallGate m_gate;
    VMessageCenter::Function const m_function;
    bool const m_isOnCenter; // called by a centre, whose job rounds downward
};

/// A connection between two messengers.
class MessengerConnection final : public detail::Connected {
  public:
    MessengerConnection(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                        int targetId, VObjectRef<FunctionMessenger> function)
        : m_source(source), m_sourceId(sourceId), m_center(center), m_target(target), m_targetId(targetId),
          m_function(std::move(function)) {}

    void Disconnect() override {
        if (m_function) {
            m_function->Gate().Close();
        }
        auto const source = std::move(m_source);
        source->RemoveConnection(m_sourceId, m_target.Get(), m_targetId, m_center.Get());
    }
    void Wait() noexcept override {
        if (m_function) {
            m_function->Gate().CloseAndWait();
        }
    }

  private:
    VObjectRef<VMessenger> m_source;
    int m_sourceId;
    VObjectRef<VMessageCenter> m_center;
    VObjectRef<VMessenger> m_target;
    int m_targetId;
    VObjectRef<FunctionMessenger> m_function;
};

/// Empty when memory runs out.
template <class Make>
ScopedConnection OrEmpty(Make make) {
    try {
        return make();
    } catch (std::bad_alloc const&) {
    } catch (VException const&) {
    }
    return {};
}

} // namespace

ScopedConnection VNotificationCenter::Observe(char const* name, VObject* about, Function function) {
    if (!function) {
        return {};
    }
    return OrEmpty([&] {
        auto const observer = MakeObject<FunctionObserver>(this, std::move(function));
        std::optional<VString> const text = name ? std::optional<VString>(name) : std::nullopt;
        bool const isAdded =
            Register(observer.Get(), &FunctionObserver::Hear, text ? &*text : nullptr, about, observer.Get());
        return isAdded ? ScopedConnection(observer) : ScopedConnection();
    });
}

ScopedConnection VMessageCenter::Connect(VMessageCenter* center, VMessenger* source, int sourceId,
                                         VMessenger* target, int targetId) {
    return OrEmpty([&] { return ConnectScoped(center, source, sourceId, target, targetId, nullptr); });
}

ScopedConnection VMessageCenter::Connect(VMessageCenter* center, VMessenger* source, int sourceId,
                                         Function function) {
    if (!function) {
        return {};
    }
    return OrEmpty([&] {
        auto const target = MakeObject<FunctionMessenger>(std::move(function), center != nullptr);
        return ConnectScoped(center, source, sourceId, target.Get(), 0, target.Get());
    });
}

VObjectRef<VMessenger> VMessageCenter::MakeReceiver(Function function) {
    return function ? MakeObject<FunctionMessenger>(std::move(function), true)
                    : VObjectRef<FunctionMessenger>();
}

ScopedConnection VMessageCenter::ConnectScoped(VMessageCenter* center, VMessenger* source, int sourceId,
                                               VMessenger* target, int targetId, VMessenger* function) {
    if (!Touch(source, sourceId, target, targetId)) {
        return {};
    }
    auto connection = MakeObject<MessengerConnection>(
        source, sourceId, center, target, targetId,
        VObjectRef<FunctionMessenger>(static_cast<FunctionMessenger*>(function)));
    return source->AddConnection(sourceId, target, targetId, center) ? ScopedConnection(std::move(connection))
                                                                     : ScopedConnection();
}

} // namespace VFoundation
