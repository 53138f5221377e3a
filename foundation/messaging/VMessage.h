#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/SValue.h"

#include <cstdint>

namespace VFoundation {

/// What travels along a connection: an id and two values. The id says which of a messenger's messages it is;
/// on the way a connection replaces it with the id that the target knows it by.
///
///     VMessage message;
///     message.SetMessageID(kVolumeChanged);
///     message.FirstArg().SetValueToFloat(0.5F);
///
/// Ownership: by reference count, also usable as a local or a member. The values hold what they are given
/// (`SValue`).
/// Threads: one thread at a time.
class VFOUNDATION_API VMessage : public Registered<VMessage, VObject> {
  public:
    static constexpr char const* kClassName = "VMessage";
    static VClass* ms_theClass;
    static constexpr int kNoID = -1;

    /// Without id and values.
    explicit VMessage(VClass* cls = nullptr);
    VMessage(VMessage const& other);
    ~VMessage() override;
    [[nodiscard]] static VMessage* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// Copies id and values.
    /// DELIBERATE: the user data is not copied; the target keeps its own.
    VMessage& operator=(VMessage const& other);
    [[nodiscard]] VMessage* Copy() const override;
    /// Removes id and values.
    void Clear();

    /// True when both pairs of values have the same type. False for null.
    bool Matches(VMessage const* other) const;
    /// True when the values of `incoming` have the types of this message's, or none. False for null.
    /// DELIBERATE: a value without a type fits any on the incoming side only; this message's own fit nothing
    /// else.
    bool Receivable(VMessage const* incoming) const;

    int MessageID() const noexcept { return m_id; }
    void SetMessageID(int id) noexcept { m_id = id; }
    SValue& FirstArg() noexcept { return m_first; }
    SValue const& FirstArg() const noexcept { return m_first; }
    SValue& SecondArg() noexcept { return m_second; }
    SValue const& SecondArg() const noexcept { return m_second; }

    /// A pointer for the owner's use (borrowed); null at first.
    void* UserData() const noexcept { return m_userData; }
    void SetUserData(void* data) noexcept { m_userData = data; }

  private:
    void* m_userData = nullptr;
    std::int32_t m_id = kNoID;
    SValue m_first;
    SValue m_second;
};

} // namespace VFoundation
