#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/TSavedObject.h"

#include <cstdint>
#include <utility>

namespace VFoundation {

/// A named link to a page of a document. Files hold "connection_name", a string, and "connection_page", a 32-bit
/// number.
///
/// Ownership: owns its name.
/// Threads: one thread at a time.
class VFOUNDATION_API VPDFConnection : public Registered<VPDFConnection, TSavedObject<VPDFConnection>> {
  public:
    static constexpr char const* kClassName = "VPDFConnection";
    static VClass* ms_theClass;

    /// "Unconnected", page 0.
    explicit VPDFConnection(VClass* cls = nullptr) : Registered(cls) {}
    VPDFConnection(VPDFConnection const& other)
        : Registered(nullptr), m_name(other.m_name), m_page(other.m_page) {}
    /// `other` has an empty name then.
    VPDFConnection(VPDFConnection&& other) noexcept
        : Registered(LoadClassSlot(ms_theClass)), m_name(std::move(other.m_name)), m_page(other.m_page) {}
    VPDFConnection& operator=(VPDFConnection const&) = default;
    VPDFConnection& operator=(VPDFConnection&&) noexcept = default;
    [[nodiscard]] static VPDFConnection* New() { return new VPDFConnection; }
    static void InitializeClass() {}
    static void UninitializeClass() {}

    VString const& Name() const noexcept { return m_name; }
    void SetName(char const* name) { m_name = name; }
    std::int32_t Page() const noexcept { return m_page; }
    void SetPage(std::int32_t page) noexcept { m_page = page; }

  private:
    friend class TSavedObject<VPDFConnection>;
    struct Fields;

    VString m_name{"Unconnected"};
    std::int32_t m_page = 0;
};

extern template class TSavedObject<VPDFConnection>;

} // namespace VFoundation
