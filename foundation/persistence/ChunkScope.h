#pragma once

#include "foundation/core/Export.h"
#include "foundation/persistence/IAIFile.h"

#include <utility>

namespace VFoundation {

/// Keeps a chunk open for a scope and closes it at the end, also when an exception leaves the scope.
///
///     while (file.ChunkRemaining()) {
///         ChunkScope child(file);                     // loading: enters the next chunk
///         if (!child.IsOpen()) { break; }             // none left: always stop here
///         if (child.Id() == ChunkId("NAME")) { file >> name; }
///     }                                               // skips what was not read
///
/// At top level, where a chunk is followed by the next one or the end of the file,
///
///     for (ChunkScope chunk(file); chunk.IsOpen(); chunk.Next()) { ... }
///
/// Ownership: the file is borrowed.
/// Threads: as the file.
class VFOUNDATION_API ChunkScope {
  public:
    /// Enters the next chunk of a file that is loading.
    explicit ChunkScope(IAIFile& file) : m_file(file), m_isOpen(file.ReadChunkHeader(&m_id, nullptr)) {}
    /// Starts a chunk in a file that is storing; the id is four characters, or a number as from `ChunkId`.
    ChunkScope(IAIFile& file, char const* id) : m_file(file), m_isOpen(file.OpenChunk(id)) {}
    ChunkScope(IAIFile& file, unsigned long id) : m_file(file), m_id(id), m_isOpen(file.OpenChunk(id)) {}
    ChunkScope(ChunkScope const&) = delete;
    ChunkScope& operator=(ChunkScope const&) = delete;
    ~ChunkScope() { Close(); }

    /// False when there was no chunk to enter, or none could be started.
    bool IsOpen() const noexcept { return m_isOpen; }
    /// The id that was read, or given as a number; else 0.
    unsigned long Id() const noexcept { return m_id; }
    /// Closes the chunk and enters the next one of a file that is loading. False when there is none.
    bool Next() {
        Close();
        m_isOpen = m_file.ReadChunkHeader(&m_id, nullptr);
        return m_isOpen;
    }
    /// Closes the chunk now. False when it is not open or closing fails.
    bool Close() { return std::exchange(m_isOpen, false) && m_file.CloseChunk(); }

  private:
    IAIFile& m_file;
    unsigned long m_id = 0;
    bool m_isOpen;
};

} // namespace VFoundation
