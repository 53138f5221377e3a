#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace testing_support {

/// The default log of a test: keeps its lines.
class ALineLog : public VFoundation::Registered<ALineLog, VFoundation::VLog> {
  public:
    static constexpr char const* kClassName = "ALineLog";
    static inline VFoundation::VClass* ms_theClass = nullptr;
    static ALineLog* New() { return new ALineLog; }

    ALineLog() : Registered(nullptr) {}
    void AddString(char const* line) override {
        std::lock_guard const lock(m_lock);
        m_lines.emplace_back(line);
    }
    std::vector<std::string> Lines() const {
        std::lock_guard const lock(m_lock);
        return m_lines;
    }
    bool Has(std::string const& line) const {
        auto const lines = Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

  private:
    mutable std::mutex m_lock;
    std::vector<std::string> m_lines;
};

/// Switches the log on for a test, with a log that keeps its lines.
class LineLogScope {
  public:
    LineLogScope() : m_log(VFoundation::VObjectRef<ALineLog>::Adopt(ALineLog::New())) {
        VFoundation::VLog::SetSafeStartup();
        VFoundation::VLog::SetLog(m_log.Get());
    }
    LineLogScope(LineLogScope const&) = delete;
    LineLogScope& operator=(LineLogScope const&) = delete;
    ~LineLogScope() { VFoundation::VLog::DestroyDefaultLog(); }
    ALineLog const* operator->() const { return m_log.Get(); }

  private:
    VFoundation::VObjectRef<ALineLog> m_log;
};

} // namespace testing_support
