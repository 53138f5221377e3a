#pragma once

#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/messaging/VMessage.h"
#include "foundation/messaging/VMessageCenter.h"
#include "foundation/messaging/VMessenger.h"
#include "tests/support/Jobs.h"

#include <functional>
#include <string>

namespace testing_support {

/// Three messages each way. Writes down what is done to it: "o1 " and "i1 " touched, "m1 " received.
class ATestMessenger : public VFoundation::Registered<ATestMessenger, VFoundation::VMessenger> {
  public:
    static constexpr char const* kClassName = "ATestMessenger";
    static inline VFoundation::VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
    using Handler = std::function<void(VFoundation::VMessage*)>;

    explicit ATestMessenger(Handler handler = {}) : Registered(nullptr), m_handler(std::move(handler)) {
        ++ms_alive;
    }
    ~ATestMessenger() override { --ms_alive; }

    bool TouchInMessage(int id) override { return Note('i', id); }
    bool TouchOutMessage(int id) override { return Note('o', id); }
    int GetOutMessageCount() override { return 3; }
    int GetInMessageCount() override { return 3; }
    char const* GetMessengerName() override { return "tester"; }
    void ReceiveMessage(VFoundation::VMessage* message) override {
        if (m_handler) {
            m_handler(message);
        } else {
            Note('m', message->MessageID());
        }
    }

    long Send(int id) {
        VFoundation::VMessage message;
        message.SetMessageID(id);
        return SendToConnections(&message);
    }
    std::string TakeNotes() { return std::exchange(m_notes, {}); }
    using VMessenger::ConnectionsOf;

    static inline std::atomic<int> ms_alive{0};

  private:
    bool Note(char what, int id) {
        m_notes += what + std::to_string(id) + ' ';
        return false; // the result means nothing
    }
    Handler m_handler;
    std::string m_notes;
};

using Messenger = VFoundation::VObjectRef<ATestMessenger>;
inline Messenger NewMessenger(ATestMessenger::Handler handler = {}) {
    return Messenger::Adopt(new ATestMessenger(std::move(handler)));
}

using Center = VFoundation::VObjectRef<VFoundation::VMessageCenter>;
inline Center NewCenter(int capacity) {
    return Center::Adopt(new VFoundation::VMessageCenter(capacity));
}

} // namespace testing_support
