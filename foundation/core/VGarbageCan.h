#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstdint>

namespace VFoundation {

/// A bin for objects whose last reference is about to be dropped where no destructor may run: the can keeps
/// them alive until it is destroyed itself. It cannot be emptied.
///
///     VGarbageCan::Context const context(can);              // opens the can for the scope
///     if (object->RetainCount() == 1) can->AddGarbageToCan(object);
///     object->Release();
///
/// Ownership: retains what is put in.
/// Threads: any thread may open, close and add.
class VFOUNDATION_API VGarbageCan : public Registered<VGarbageCan, VObject> {
  public:
    static constexpr char const* kClassName = "VGarbageCan";
    static VClass* ms_theClass;
    static constexpr int kDefaultCapacity = 4096;

    /// Room for `capacity` objects.
    explicit VGarbageCan(int capacity) : VGarbageCan(nullptr, capacity) {}
    ~VGarbageCan() override;
    /// A can of `kDefaultCapacity`.
    [[nodiscard]] static VGarbageCan* New() { return new VGarbageCan(kDefaultCapacity); }

    /// Openings pair up with closings; the can takes objects in either state.
    bool OpenGarbageCan();
    /// False, and nothing changed, when the can is not open.
    bool CloseGarbageCan();
    /// Parks the object; false when it is null, or the can is full or already releases what it holds: the object is
    /// then left to the caller.
    bool AddGarbageToCan(VObject* object);

    long OpenCount() const noexcept { return m_openCount.load(std::memory_order_relaxed); }
    long ParkedCount() const { return m_objects.UsedCount(); }

    /// Holds a can open for a scope; null holds nothing.
    class Context {
      public:
        explicit Context(VGarbageCan* can);
        ~Context();
        Context(Context const&) = delete;
        Context& operator=(Context const&) = delete;

      private:
        VObjectRef<VGarbageCan> m_can;
    };

  protected:
    VGarbageCan(VClass* cls, int capacity);

  private:
    std::atomic<std::int32_t> m_openCount{0}; // relaxed for `OpenCount`, a number for people
    std::atomic<bool> m_isEnding{false};
    VObjectRingBufferTmpl<VObject> m_objects;
};

} // namespace VFoundation
