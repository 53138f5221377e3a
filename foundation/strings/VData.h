#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/HeapBlock.h"

#include <cstdint>

namespace VFoundation {

/// A resizable block of raw bytes: the contents of a file, the payload of an archive, the slots of a
/// container. Shared by reference, compared by content.
///
/// `SetLength` may move the bytes: read `Bytes()` again after it. Growing in small steps is cheap, since memory is
/// set aside ahead of the length.
///
/// Lengths are 32 bits. A longer one, or one for which there is no memory, throws a `VException` with id 1 and leaves
/// the buffer as it was.
///
/// Ownership: owns its bytes.
/// Threads: one thread at a time; any number may read.
class VFOUNDATION_API VData : public Registered<VData, VObject> {
  public:
    static constexpr char const* kClassName = "VData";
    static VClass* ms_theClass;

    /// The longest buffer, in bytes.
    static constexpr unsigned long kMaxLength = 0xFFFFFFFFUL;
    /// How many bytes the saved lengths of one file may claim, all together, beyond what chunk and file still hold
    /// (64 MiB).
    static constexpr unsigned long kMaxUnbackedLength = 64UL << 20;

    /// `length` zero bytes.
    explicit VData(unsigned long length = 0) : VData(nullptr, length) {}
    VData(VData const& other);
    /// Takes the bytes; `other` is empty then.
    VData(VData&& other) noexcept;
    ~VData() override;

    /// An empty buffer (owned).
    [[nodiscard]] static VData* New();
    /// The same bytes in a buffer of their own (owned).
    [[nodiscard]] VData* Copy() const override;
    VData& operator=(VData const& other);
    VData& operator=(VData&& other) noexcept;

    /// The buffer, 16-byte aligned (borrowed until the next `SetLength`); null when the length is 0.
    unsigned char* Bytes() noexcept { return reinterpret_cast<unsigned char*>(m_block.Bytes()); }
    unsigned char const* Bytes() const noexcept {
        return reinterpret_cast<unsigned char const*>(m_block.Bytes());
    }
    unsigned long Length() const noexcept { return m_length; }

    /// Changes the length and keeps the contents that fit, or none of them. New bytes are not cleared. Returns true
    /// or throws; the same length changes nothing.
    bool SetLength(unsigned long length, bool keepContents);

    /// Exchanges the bytes of two buffers.
    void Swap(VData& other) noexcept;

    bool operator==(VData const& other) const noexcept;
    bool operator!=(VData const& other) const noexcept { return !(*this == other); }
    /// Same class and same bytes.
    bool IsEqual(VObject const& other) const override;

    /// "[<class name>] Length: <bytes>  Ptr: <address>  Owned: yes" (or "no").
    void GetDescription(VString& out) const override;

    /// A 64-bit length and the bytes; the result is that of moving the bytes. A length that the file cannot back
    /// (`kMaxUnbackedLength`) throws as `SetLength` does and leaves the contents; bytes that the file does not have are
    /// zero.
    /// DELIBERATE: only the low 32 bits of a saved length count; a longer one reads as a shorter buffer.
    bool Serialize(IAIFile& file) override;
    /// The older form, without a length: moves as many bytes as the buffer has. Set the length before loading.
    bool Serialize_YeOldeZephStyle(IAIFile& file);

    /// Clears `count` bytes. False when there is nothing to clear: a null pointer or a count of 0.
    static bool FastZeroMemory(unsigned char* bytes, unsigned long count);

  protected:
    /// For derived classes, with their record or null.
    VData(VClass* cls, unsigned long length);

  private:
    HeapBlock m_block;
    std::uint32_t m_length = 0;
    bool m_owned = false; // what the description shows: set by the first `SetLength`
};

} // namespace VFoundation
