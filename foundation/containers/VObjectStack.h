#pragma once

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/Export.h"

namespace VFoundation {

/// A stack of counted objects. Walked from the bottom to the top.
///
/// Ownership: retains what is pushed; the array dies with the stack.
/// Threads: one at a time.
class VFOUNDATION_API VObjectStack : public Registered<VObjectStack, VObject> {
  public:
    static constexpr char const* kClassName = "VObjectStack";
    static VClass* ms_theClass;

    explicit VObjectStack(VClass* cls = nullptr);
    VObjectStack& operator=(VObjectStack const&) = delete;
    [[nodiscard]] static VObjectStack* New() { return new VObjectStack; }

    /// Appends to the array (retained). False when it could not grow.
    bool Push(VObject const* object) { return m_array.AddObject(object); }
    /// Takes the last element out; the caller owns it. Null when the stack is empty.
    /// DELIBERATE: a null on top is not taken out; the result is null and the stack keeps its length.
    [[nodiscard]] VObject* Pop();
    /// The last element (borrowed); null when the stack is empty.
    VObject* ObjectAtTopOfStack() const;

    VObjectArray& Array() noexcept { return m_array; }
    VObjectArray const& Array() const noexcept { return m_array; }

    /// For a range-for over the array.
    VObjectArray::Iterator begin() const noexcept { return m_array.begin(); }
    static std::default_sentinel_t end() noexcept { return {}; }

  private:
    VObjectArray m_array{nullptr, 0};
};

} // namespace VFoundation
