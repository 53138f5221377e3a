#pragma once

#include "foundation/threads/VJob.h"
#include "foundation/threads/VJobServer.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <semaphore.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>

namespace testing_support {

/// Set by one thread, awaited by another; the setter does not touch it once it is seen.
class Signal {
  public:
    void Set() { m_set.store(true); }
    void Wait() const {
        while (!m_set.load()) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

  private:
    std::atomic<bool> m_set{false};
};

/// A job that does what it is told.
class AJob : public VFoundation::Registered<AJob, VFoundation::VJob> {
  public:
    static constexpr char const* kClassName = "AJob";
    static inline VFoundation::VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
    using Work = std::function<bool()>;

    explicit AJob(Work work, int priority = 0, VFoundation::IVJobDelegate* delegate = nullptr)
        : Registered(nullptr), m_work(std::move(work)) {
        Init(nullptr, delegate, priority);
    }
    bool DoJob() override { return m_work(); }
    double JobProgress() override { return 0; }
    bool AbortJob() override { return m_onAbort ? m_onAbort() : false; }

    Work m_onAbort;

  private:
    Work m_work;
};

/// A server under a name that no other process has, ended and its semaphore removed with the object.
class ServerScope {
  public:
    using Server = VFoundation::VJobServer;
    explicit ServerScope(int queueSize) : ServerScope(new Server(UniqueName(), queueSize)) {}
    explicit ServerScope(Server* server) : m_server(VFoundation::VObjectRef<Server>::Adopt(server)) {}
    ServerScope(ServerScope const&) = delete;
    ServerScope& operator=(ServerScope const&) = delete;
    ~ServerScope() {
        m_server->EndServer(true);
        sem_unlink(m_server->Name().CString());
    }
    Server* operator->() const { return m_server.Get(); }
    Server* Get() const { return m_server.Get(); }

    bool Add(VFoundation::VJob* job) const { // adopts the job
        return m_server->AddJob(VFoundation::VObjectRef<VFoundation::VJob>::Adopt(job).Get());
    }

    static char const* UniqueName() {
        static std::atomic<int> s_number{0};
        static thread_local std::string t_name;
        t_name = "VFoundationTest." + std::to_string(getpid()) + "." + std::to_string(++s_number);
        sem_unlink(t_name.c_str());
        return t_name.c_str();
    }

  private:
    VFoundation::VObjectRef<Server> m_server;
};

} // namespace testing_support
