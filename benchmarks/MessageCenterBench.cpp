#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/messaging/VMessage.h"
#include "foundation/messaging/VMessageCenter.h"
#include "foundation/messaging/VMessenger.h"

#include <benchmark/benchmark.h>
#include <boost/signals2.hpp>
#include <boost/signals2/signal_type.hpp>

#include <QCoreApplication>
#include <QObject>

// One integer from a sender to a receiver: at once, beside boost::signals2 and Qt's direct connections; and
// through a queue, beside Qt's queued connections: posted and delivered in batches, by one thread.

namespace {

using namespace VFoundation;

constexpr int kBatch = 128;

class BenchMessenger : public Registered<BenchMessenger, VMessenger> {
  public:
    static constexpr char const* kClassName = "BenchMessenger";
    static inline VClass* ms_theClass = nullptr;
    explicit BenchMessenger(VClass* cls = nullptr) : Registered(cls) {}
    static BenchMessenger* New() { return new BenchMessenger; }

    bool TouchInMessage(int /*id*/) override { return true; }
    bool TouchOutMessage(int /*id*/) override { return true; }
    void ReceiveMessage(VMessage* message) override { m_sum += message->FirstArg().GetInt(); }
    int GetOutMessageCount() override { return 1; }
    int GetInMessageCount() override { return 1; }
    char const* GetMessengerName() override { return "bench"; }

    using VMessenger::SendToConnections;
    long m_sum = 0;
};

/// Two messengers and what connects them; null for `delayer` delivers at once.
class Pair {
  public:
    explicit Pair(VCommandDelayer* delayer)
        : m_tuple(m_source->AddConnection(0, m_target.Get(), 0, delayer)) {}
    Pair(Pair const&) = delete;
    Pair& operator=(Pair const&) = delete;
    ~Pair() { m_source->RemoveConnection(0, m_target.Get(), 0, nullptr); }

    // Each makes its message, as the peers pass their argument.
    void SendThroughTuple() {
        VMessage message;
        Pack(message);
        benchmark::DoNotOptimize(m_tuple->MessageSend(&message));
    }
    void Send() {
        VMessage message;
        Pack(message);
        benchmark::DoNotOptimize(m_source->SendToConnections(&message));
    }
    long Sum() const { return m_target->m_sum; }

  private:
    static void Pack(VMessage& message) {
        message.SetMessageID(0);
        message.FirstArg().SetValueToInt(1);
    }

    VObjectRef<BenchMessenger> m_source = VObjectRef<BenchMessenger>::Adopt(BenchMessenger::New());
    VObjectRef<BenchMessenger> m_target = VObjectRef<BenchMessenger>::Adopt(BenchMessenger::New());
    VObjectRef<VConnectionTuple> m_tuple;
};

void CheckSum(benchmark::State& state, long sum, long perIteration) {
    if (sum != state.iterations() * perIteration) {
        state.SkipWithError("not every message arrived");
    }
    state.SetItemsProcessed(sum);
}

void Direct_Connection(benchmark::State& state) {
    Pair pair(nullptr);
    for (auto _ : state) {
        pair.SendThroughTuple();
    }
    CheckSum(state, pair.Sum(), 1);
}
BENCHMARK(Direct_Connection);

void Direct_Messenger(benchmark::State& state) {
    Pair pair(nullptr);
    for (auto _ : state) {
        pair.Send();
    }
    CheckSum(state, pair.Sum(), 1);
}
BENCHMARK(Direct_Messenger);

void Direct_BoostSignal(benchmark::State& state) {
    long sum = 0;
    boost::signals2::signal<void(int)> signal;
    signal.connect([&](int value) { sum += value; });
    for (auto _ : state) {
        signal(1);
    }
    CheckSum(state, sum, 1);
}
BENCHMARK(Direct_BoostSignal);

/// As our connections, which have no lock either.
void Direct_BoostSignalWithoutMutex(benchmark::State& state) {
    long sum = 0;
    using boost::signals2::keywords::mutex_type;
    boost::signals2::signal_type<void(int), mutex_type<boost::signals2::dummy_mutex>>::type signal;
    signal.connect([&](int value) { sum += value; });
    for (auto _ : state) {
        signal(1);
    }
    CheckSum(state, sum, 1);
}
BENCHMARK(Direct_BoostSignalWithoutMutex);

void Queued_MessageCenter(benchmark::State& state) {
    auto const center = VObjectRef<VMessageCenter>::Adopt(new VMessageCenter(kBatch));
    Pair pair(center.Get());
    for (auto _ : state) {
        for (int i = 0; i < kBatch; ++i) {
            pair.Send();
        }
        center->SendDelayedCommands();
    }
    CheckSum(state, pair.Sum(), kBatch);
}
BENCHMARK(Queued_MessageCenter);

class QtSender : public QObject {
    Q_OBJECT
  signals:
    void Sent(int value);
};

class QtReceiver : public QObject {
    Q_OBJECT
  public:
    long m_sum = 0;
  public slots:
    void Receive(int value) { m_sum += value; }
};

void Direct_QtSignal(benchmark::State& state) {
    QtSender sender;
    QtReceiver receiver;
    QObject::connect(&sender, &QtSender::Sent, &receiver, &QtReceiver::Receive, Qt::DirectConnection);
    for (auto _ : state) {
        emit sender.Sent(1);
    }
    CheckSum(state, receiver.m_sum, 1);
}
BENCHMARK(Direct_QtSignal);

void Queued_QtSignal(benchmark::State& state) {
    int argc = 0;
    QCoreApplication const application(argc, nullptr);
    QtSender sender;
    QtReceiver receiver;
    QObject::connect(&sender, &QtSender::Sent, &receiver, &QtReceiver::Receive, Qt::QueuedConnection);
    for (auto _ : state) {
        for (int i = 0; i < kBatch; ++i) {
            emit sender.Sent(1);
        }
        QCoreApplication::sendPostedEvents();
    }
    CheckSum(state, receiver.m_sum, kBatch);
}
BENCHMARK(Queued_QtSignal);

} // namespace

#include "MessageCenterBench.moc"
