#pragma once

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/Export.h"

#include <cstdint>

namespace VFoundation {

/// An object that carries an array meant as an undo history, and room for the position in it. It has no
/// operations: work on the array.
///
/// Ownership: the array retains its elements and dies with the stack.
/// Threads: one at a time.
class VFOUNDATION_API VObjectUndoStack : public Registered<VObjectUndoStack, VObject> {
  public:
    static constexpr char const* kClassName = "VObjectUndoStack";
    static VClass* ms_theClass;

    explicit VObjectUndoStack(VClass* cls = nullptr);
    VObjectUndoStack& operator=(VObjectUndoStack const&) = delete;
    [[nodiscard]] static VObjectUndoStack* New() { return new VObjectUndoStack; }

    VObjectArray& Array() noexcept { return m_array; }
    VObjectArray const& Array() const noexcept { return m_array; }

    /// For a range-for over the array.
    VObjectArray::Iterator begin() const noexcept { return m_array.begin(); }
    static std::default_sentinel_t end() noexcept { return {}; }

  protected:
    std::int32_t m_nUndoPosition = 0; // kept by subclasses

  private:
    VObjectArray m_array{nullptr, 0};
};

} // namespace VFoundation
