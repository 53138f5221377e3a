// Two messengers: a knob that says how far it was turned, and a motor that runs at that speed. First they are
// connected for immediate delivery; then through a started message centre, which delivers on a thread of its
// own.

#include "foundation/VFoundation.h"

#include <atomic>
#include <cstdio>

using namespace VFoundation;

namespace {

class Knob : public Registered<Knob, VMessenger> {
  public:
    static constexpr char const* kClassName = "ExampleKnob";
    static inline VClass* ms_theClass = nullptr;
    enum Out : int { kTurned, kOutCount };

    explicit Knob(VClass* cls = nullptr) : Registered(cls) {}
    static Knob* New() { return new Knob; }

    void Turn(double share) {
        VMessage message;
        message.SetMessageID(kTurned);
        message.FirstArg().SetValueToDouble(share);
        long const sent = SendToConnections(&message);
        std::printf("knob: turned to %.2f, told %li\n", share, sent);
    }

    int GetOutMessageCount() override { return kOutCount; }
    int GetInMessageCount() override { return 0; }
    void ReceiveMessage(VMessage* /*message*/) override {}
    // Here a messenger prepares an output or input that it makes on demand.
    bool TouchOutMessage(int /*id*/) override { return true; }
    bool TouchInMessage(int /*id*/) override { return true; }
    char const* GetMessengerName() override { return "knob"; }
};

class Motor : public Registered<Motor, VMessenger> {
  public:
    static constexpr char const* kClassName = "ExampleMotor";
    static inline VClass* ms_theClass = nullptr;
    enum In : int { kSetSpeed, kInCount };

    explicit Motor(VClass* cls = nullptr) : Registered(cls) {}
    static Motor* New() { return new Motor; }

    int Changes() const noexcept { return m_changes; }
    /// Waits until the speed has changed more often than that.
    void WaitForMoreThan(int changes) const { m_changes.wait(changes); }

    /// The message is lent: what is to be kept is copied.
    void ReceiveMessage(VMessage* message) override {
        VMessage expected;
        expected.FirstArg().SetValueToDouble(0);
        if (message->MessageID() == kSetSpeed && expected.Receivable(message)) {
            std::printf("motor: speed %.2f, told %s\n", message->FirstArg().GetDouble(),
                        pthread_equal(pthread_self(), m_home) ? "at once" : "by the centre's thread");
            ++m_changes;
            m_changes.notify_all();
        }
    }

    int GetOutMessageCount() override { return 0; }
    int GetInMessageCount() override { return kInCount; }
    bool TouchOutMessage(int /*id*/) override { return true; }
    bool TouchInMessage(int /*id*/) override { return true; }
    char const* GetMessengerName() override { return "motor"; }

  private:
    VThread::ThreadID m_home = VThread::GetCurrentThreadID();
    std::atomic<int> m_changes{0};
};

bool Run() {
    auto const knob = MakeObject<Knob>();
    auto const motor = MakeObject<Motor>();
    {
        // Without a centre the motor is told before Turn() returns.
        auto const connection =
            VMessageCenter::Connect(nullptr, knob.Get(), Knob::kTurned, motor.Get(), Motor::kSetSpeed);
        knob->Turn(0.25);
    }
    bool const isToldAtOnce = motor->Changes() == 1;

    // With one, the message waits there for the centre's thread. The connection ends before the centre does.
    StartedCenter const center;
    auto const connection =
        VMessageCenter::Connect(center.Get(), knob.Get(), Knob::kTurned, motor.Get(), Motor::kSetSpeed);
    knob->Turn(0.75);
    motor->WaitForMoreThan(1);
    return isToldAtOnce && motor->Changes() == 2;
}

} // namespace

int main() {
    LibraryScope const library;
    RegisterClasses<Knob, Motor>();
    return Run() ? 0 : 1;
}
