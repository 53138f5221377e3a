// Two messengers: a knob that says how far it was turned, and a motor that runs at that speed. First they are
// connected for immediate delivery; then through a started message centre, which delivers on a thread of its
// own.

#include "foundation/VFoundation.h"

#include <atomic>
#include <cstdio>
#include <semaphore.h>
#include <string>
#include <unistd.h>

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

    /// The message is lent: what is to be kept is copied.
    void ReceiveMessage(VMessage* message) override {
        VMessage expected;
        expected.FirstArg().SetValueToDouble(0);
        if (message->MessageID() == kSetSpeed && expected.Receivable(message)) {
            std::printf("motor: speed %.2f, told %s\n", message->FirstArg().GetDouble(),
                        pthread_equal(pthread_self(), m_home) ? "at once" : "by the centre's thread");
            ++m_changes;
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

/// False when the motor has not heard so many changes within five seconds.
bool WaitForChanges(Motor const& motor, int count) {
    for (int i = 0; i < 500 && motor.Changes() < count; ++i) {
        VThread::Sleep(10);
    }
    return motor.Changes() >= count;
}

bool Run() {
    auto const knob = VObjectRef<Knob>::Adopt(Knob::New());
    auto const motor = VObjectRef<Motor>::Adopt(Motor::New());
    auto const center = VObjectRef<VMessageCenter>::Adopt(VMessageCenter::New());

    // Without a centre in the connection the motor is told before Turn() returns.
    center->ConnectImmediate(knob.Get(), Knob::kTurned, nullptr, motor.Get(), Motor::kSetSpeed);
    knob->Turn(0.25);
    bool works = motor->Changes() == 1;
    center->DisconnectImmediate(knob.Get(), Knob::kTurned, nullptr, motor.Get(), Motor::kSetSpeed);

    // With the centre in it, the message waits there for the centre's thread. Started, the centre also makes
    // the connection on that thread: so nothing is locked, and the knob is turned when it is there.
    std::string const name = "example-" + std::to_string(getpid());
    center->StartCenter(name.c_str(), 5);
    center->ConnectDelayed(knob.Get(), Knob::kTurned, center.Get(), motor.Get(), Motor::kSetSpeed);
    while (center->CommandCountMin() > 0 || knob->RetainCount() < 2) {
        VThread::Sleep(10);
    }
    knob->Turn(0.75);
    works = WaitForChanges(*motor, 2) && works;

    // Connections keep both messengers alive, so they are undone in the end; and the centre is stopped before
    // its last reference goes.
    center->StopCenter();
    center->DisconnectImmediate(knob.Get(), Knob::kTurned, center.Get(), motor.Get(), Motor::kSetSpeed);
    sem_unlink(name.c_str()); // the library does not remove the server's semaphore
    return works;
}

} // namespace

int main() {
    InitializeLibrary(true);
    bool const works = Run();
    UninitializeLibrary(true, false, true);
    return works ? 0 : 1;
}
