#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace testing_support {

/// Switches the log on for a test, with a default log that keeps its lines.
class LineLogScope {
  public:
    LineLogScope() : m_log(VFoundation::VObjectRef<Log>::Adopt(Log::New())) {
        VFoundation::VLog::SetSafeStartup();
        VFoundation::VLog::SetLog(m_log.Get());
    }
    ~LineLogScope() { VFoundation::VLog::DestroyDefaultLog(); }
    LineLogScope const* operator->() const { return this; }
    /// Called with each line, after it was kept. Set it while no other thread traces.
    void OnLine(std::function<void(std::string const&)> action) const { m_log->m_onLine = std::move(action); }
    std::vector<std::string> Lines() const {
        std::lock_guard const lock(m_log->m_lock);
        return m_log->m_lines;
    }
    bool Has(std::string const& line) const {
        auto const lines = Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

  private:
    struct Log : VFoundation::Registered<Log, VFoundation::VLog> {
        static constexpr char const* kClassName = "ALineLog";
        static inline VFoundation::VClass* ms_theClass = nullptr;
        Log() : Registered(nullptr) {}
        static Log* New() { return new Log; }
        void AddString(char const* line) override {
            {
                std::lock_guard const lock(m_lock);
                m_lines.emplace_back(line);
            }
            if (m_onLine) {
                m_onLine(line);
            }
        }
        std::function<void(std::string const&)> m_onLine;
        std::mutex m_lock;
        std::vector<std::string> m_lines;
    };

    VFoundation::VObjectRef<Log> m_log;
};

} // namespace testing_support
