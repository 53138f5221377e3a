#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Report.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vfinspect {

/// What a chunked file does not say about itself.
struct ChunkForm {
    bool isLittleEndian = false;
    bool isPadded = false;

    std::string Name() const;
};

/// Reads a chunked file, and the archives and arrays in it (docs/formats/chunked-file.md, archive.md).
///
/// The body of a chunk that no format names is looked at: when it is, or after some values ends with, a sequence of
/// chunks up to its last byte, they are shown as such. Everything else is shown as bytes.
class ChunkInspector {
  public:
    /// Headers that are read of one file; what comes after them is not looked at, nor what comes after so many faults
    /// that no more are kept.
    static constexpr std::uint64_t kMaxHeaders = 1'000'000;

    ChunkInspector(ByteSource& source, Report& report, ChunkForm form)
        : m_source(source), m_report(report), m_form(form) {}

    /// Whether the bytes may be a chunked file at all: they begin with the header of a chunk.
    static bool MayBeChunks(ByteSource& source);
    /// Whether the first chunk is an archive.
    static bool IsArchive(ByteSource& source);
    /// The form in which the file has the fewest faults, and of those the most chunks. A checksum at the end of the file
    /// says which byte order it is.
    static ChunkForm GuessForm(ByteSource& source, std::optional<bool> isLittleEndian,
                               std::optional<bool> isPadded);

    /// `asArchive` demands that the first chunk is an archive.
    void Inspect(bool asArchive);

  private:
    struct Chunk {
        std::string id;
        std::uint64_t offset; // of the header
        std::uint64_t body;
        std::uint64_t end; // of the body, never past the end of the parent
    };
    using BodyReader = void (ChunkInspector::*)(Chunk const& chunk);

    std::uint64_t Number(std::uint64_t offset, unsigned bytes) {
        return m_source.Number(offset, bytes, m_form.isLittleEndian);
    }
    std::optional<Chunk> ReadHeader(std::uint64_t& at, std::uint64_t end);
    bool IsChunksUpTo(std::uint64_t at, std::uint64_t end);
    std::uint64_t FindChunks(std::uint64_t at, std::uint64_t end);

    void ReadChunks(std::uint64_t at, std::uint64_t end, BodyReader reader);
    void ReadOuterBody(Chunk const& chunk);
    void ReadBody(Chunk const& chunk);
    void ReadPlainBody(Chunk const& chunk);
    void ReadArchive(Chunk const& chunk);
    void ReadArchivePart(Chunk const& chunk);
    void ReadListOf(Chunk const& chunk, BodyReader element);
    void ReadArray(Chunk const& chunk, BodyReader element);
    void ReadFileInfo(Chunk const& chunk);
    void ReadContents(Chunk const& chunk);
    void ReadKnownElement(Chunk const& chunk);
    bool HasChecksum();
    void CheckSum();
    void AddBytes(std::uint64_t offset, std::uint64_t end);
    void AddParts();

    ByteSource& m_source;
    Report& m_report;
    ChunkForm m_form;
    int m_depth = 0;
    std::uint64_t m_headers = 0;
    BodyReader m_element = nullptr; // of the array that is being read
    std::uint64_t m_elements = 0;
    bool m_hasInfos = false;
    bool m_hasContents = false;
    std::vector<std::string> m_paths;
    std::vector<Report::Part> m_contents;
};

} // namespace vfinspect
