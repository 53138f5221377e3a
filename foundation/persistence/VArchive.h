#pragma once

#include "foundation/core/Export.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/persistence/VObjectArrayTmplSerializeable.h"
#include "foundation/strings/VData.h"

#include <string>

namespace VFoundation {

/// A container of files in one chunked file: a list of descriptions and a list of contents. The archive does not
/// connect the lists; that the i-th description belongs to the i-th contents is the application's convention.
///
///     archive.AddFile("a.png", data.Get());
///     if (!archive.SaveFile("files.archive")) { ... archive.ErrorDescription() ... }
///
/// In a file with other chunks an archive is one object more, `archive.Serialize(file)`. Read archives chunk-safe. A
/// file without an archive reads as an empty one, unknown chunks are skipped, and bytes that the file lacks are zero. A
/// length far beyond the file is an out-of-memory `VException` from `VData`: the chunks are closed then, and the lists
/// hold the elements before it.
///
/// DELIBERATE: the result says nothing of what was damaged when an archive is read; a file that holds none gives an empty
/// archive. `ErrorDescription()` and the file's report tell.
///
/// Ownership: owns its lists, which own a reference to each element.
/// Threads: one thread at a time.
class VFOUNDATION_API VArchive : public Registered<VArchive, VObject> {
  public:
    static constexpr char const* kClassName = "VArchive";
    static VClass* ms_theClass;

    explicit VArchive(VClass* cls = nullptr) : Registered(cls) {}
    VArchive(VArchive const&) = delete;
    VArchive& operator=(VArchive const&) = delete;
    [[nodiscard]] static VArchive* New() { return new VArchive; }

    VObjectArrayTmplSerializeable<VFileInfo>& Infos() noexcept { return m_infos; }
    VObjectArrayTmplSerializeable<VFileInfo> const& Infos() const noexcept { return m_infos; }
    VObjectArrayTmplSerializeable<VData>& Data() noexcept { return m_data; }
    VObjectArrayTmplSerializeable<VData> const& Data() const noexcept { return m_data; }

    /// Appends a description with this path, its flag off, and its contents (retained); a null `data` adds nothing.
    void AddFile(char const* path, VData* data);

    /// Writes both lists, in a chunk "VArc"; false when something could not be written. Reading replaces both
    /// and is true.
    bool Serialize(IAIFile& file) override;
    /// Writes the archive as a file of its own, which ends with a checksum and takes the place of an old one when it is
    /// whole. False, with the old file as it was, when that fails.
    [[nodiscard]] bool SaveFile(char const* path);
    /// Reads both lists from such a file. True when all of it is as it was saved. Else false, and the lists hold what could
    /// be read: also of a file whose checksum is wrong, or that has none. A length far beyond the file is false, too;
    /// without memory `std::bad_alloc`.
    [[nodiscard]] bool LoadFile(char const* path);
    /// What the last of these passed over first, or why it could not store, with the offset; empty when everything was
    /// read or stored. `IAIFile::Report()` has all of it. Without memory `std::bad_alloc`.
    VString ErrorDescription() const;

  private:
    bool Store(IAIFile& file);
    bool Load(IAIFile& file);

    VObjectArrayTmplSerializeable<VFileInfo> m_infos;
    VObjectArrayTmplSerializeable<VData> m_data;
    std::string m_error;
};

} // namespace VFoundation
