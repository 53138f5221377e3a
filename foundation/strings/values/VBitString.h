#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/VData.h"

#include <cstdint>

namespace VFoundation {

/// A row of bits.
///
///     VBitString bits(10);
///     bits.SetBit(3, true);
///     bits.AsString();                        // "0001000000"
///
/// XML holds the attribute "bits", that text. A chunked file holds the count as a 32-bit number and the bits,
/// eight a byte, the first in the lowest bit.
///
/// When memory runs out, a `VException` with id 1 is thrown, and the bits stay as they were.
///
/// Ownership: owns its bits.
/// Threads: one thread at a time.
class VFOUNDATION_API VBitString : public Registered<VBitString, VObject> {
  public:
    static constexpr char const* kClassName = "VBitString";
    static VClass* ms_theClass;

    /// `count` cleared bits; none when it is negative.
    explicit VBitString(std::int32_t count = 0) : VBitString(nullptr, count) {}
    VBitString(VBitString const& other);
    /// `other` has no bits then.
    VBitString(VBitString&& other) noexcept;
    VBitString& operator=(VBitString const& other);
    VBitString& operator=(VBitString&& other) noexcept;
    [[nodiscard]] static VBitString* New() { return new VBitString; }

    std::int32_t Count() const noexcept { return m_count; }
    /// Cuts bits off at the end or adds cleared ones. A negative count is 0.
    void SetCount(std::int32_t count);

    /// False when there is no such bit.
    bool GetBit(std::int32_t index) const noexcept;
    /// False when there is no such bit.
    bool SetBit(std::int32_t index, bool value) noexcept;
    bool FlipBit(std::int32_t index) noexcept;
    std::int32_t CountOnes() const noexcept;

    // Combine bit by bit with another string, which counts as extended with cleared bits. The count stays.
    void And(VBitString const& other) noexcept;
    void Or(VBitString const& other) noexcept;
    void Xor(VBitString const& other) noexcept;

    /// One '0' or '1' for each bit, from the first on.
    VString AsString() const;
    /// Takes such a text. False, with the bits unchanged, for any other and for null.
    bool SetFromString(char const* text);

    bool operator==(VBitString const& other) const noexcept;
    /// Same class and same bits.
    bool IsEqual(VObject const& other) const override;
    /// A new object (owned) of the object's own class with the same bits; null when that class cannot be made.
    [[nodiscard]] VObject* Copy() const override;
    /// "[<class name>] " and the text, which may be cut.
    void GetDescription(VString& out) const override;

    /// Loading is false, and leaves no bits, when the file does not hold as many as it says.
    bool Serialize(IAIFile& file) override;
    /// False, with the bits unchanged, when the attribute is absent or no such text; false when it could not be
    /// written.
    bool SerializeAsXML(VXMLFile& file) override;

  protected:
    /// For derived classes, with their record or null.
    VBitString(VClass* cls, std::int32_t count);

  private:
    template <class Operation>
    void Combine(VBitString const& other, Operation operation) noexcept;
    bool Has(std::int32_t index) const noexcept { return index >= 0 && index < m_count; }
    void ClearUnusedBits() noexcept;

    std::int32_t m_count = 0;
    VData m_bytes; // the bits after the last are 0
};

} // namespace VFoundation
