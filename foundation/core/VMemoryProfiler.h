#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

namespace VFoundation {

/// The place for memory-use records: one object, made with its class, that outlives everything it could
/// measure (the registry's tear-down leaves its class alone). This library makes and frees it and records
/// nothing in it.
///
/// Ownership: the class owns the one profiler; `DefaultProfiler()` lends it.
/// Threads: made and destroyed on the thread that starts and stops the library.
class VFOUNDATION_API VMemoryProfiler : public Registered<VMemoryProfiler, VObject> {
  public:
    static constexpr char const* kClassName = "VMemoryProfiler";
    static VClass* ms_theClass;

    explicit VMemoryProfiler(VClass* cls = nullptr);
    ~VMemoryProfiler() override;
    [[nodiscard]] static VMemoryProfiler* New() { return new VMemoryProfiler; }
    static void InitializeClass();
    static void UninitializeClass();

    /// Null outside the class's life.
    static VMemoryProfiler* DefaultProfiler() noexcept {
        return ms_theProfiler.load(std::memory_order_acquire);
    }

    /// Releases the memory-use map; it is not made again.
    void DestroyMemoryUseMap();
    bool HasMemoryUseMap() const noexcept { return m_memoryUseMap.Get() != nullptr; }

    static std::atomic<VMemoryProfiler*> ms_theProfiler; // acquire: the profiler as it was made
    static std::atomic<bool> ms_bIsShuttingDown;

  private:
    using Slot = std::array<std::uint32_t, 8>;
    static constexpr std::size_t kSlots = 2048;

    std::unique_ptr<Slot[]> m_table;
    VObjectRef<VObject> m_memoryUseMap;
    [[maybe_unused]] std::uint32_t m_firstWord = 1;
    [[maybe_unused]] std::uint32_t m_secondWord = 0;
    VObjectRef<VObject> m_secondObject;
};

} // namespace VFoundation
