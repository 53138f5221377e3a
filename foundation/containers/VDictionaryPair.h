#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

namespace VFoundation {

/// One entry of a `VDictionary` on its way to or from XML: two child objects, the key and then the value.
///
/// Ownership: retains both.
/// Threads: one thread at a time.
class VFOUNDATION_API VDictionaryPair : public Registered<VDictionaryPair, VObject> {
  public:
    static constexpr char const* kClassName = "VDictionaryPair";
    static VClass* ms_theClass;

    explicit VDictionaryPair(VClass* cls = nullptr);
    VDictionaryPair(VDictionaryPair const&) = delete;
    VDictionaryPair& operator=(VDictionaryPair const&) = delete;
    ~VDictionaryPair() override;

    [[nodiscard]] static VDictionaryPair* New() { return new VDictionaryPair(nullptr); }

    /// Saving is true when both halves were written. Loading is true; what cannot be read is traced and stays null.
    bool SerializeAsXML(VXMLFile& file) override;

    /// Either may be null.
    VObject* Key() const noexcept { return m_key.Get(); }
    VObject* Value() const noexcept { return m_value.Get(); }
    void SetKey(VObject* key) { m_key.Exchange(key); }
    void SetValue(VObject* value) { m_value.Exchange(value); }

  private:
    VObjectRef<VObject> m_key;
    VObjectRef<VObject> m_value;
};

} // namespace VFoundation
