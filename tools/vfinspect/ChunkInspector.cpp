#include "tools/vfinspect/ChunkInspector.h"

#include "foundation/persistence/VAIFile.h"
#include "tools/vfinspect/Text.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <tuple>
#include <utility>

namespace vfinspect {

namespace {

using VFoundation::VAIFile;

constexpr std::uint64_t kHeaderSize = 8;
/// How far into a body its first chunk is looked for.
constexpr std::uint64_t kMostValuesBefore = 256;
constexpr std::size_t kShownBytes = 17; // one more than are printed
constexpr std::uint64_t kMaxPath = 259;
constexpr char kChecksumId[] = "CSUM";
constexpr std::uint64_t kChecksumSize = kHeaderSize + 4;

bool IsPrintableAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

bool IsText(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return (c >= ' ' && c <= '~') || (c >= '\t' && c <= '\r'); });
}

std::string AsWord(std::uint64_t number) {
    char text[20];
    std::snprintf(text, sizeof text, "0x%08" PRIX64, number);
    return text;
}

} // namespace

std::string ChunkForm::Name() const {
    return std::string(isLittleEndian ? "little-endian" : "big-endian") + (isPadded ? ", padded" : "");
}

bool ChunkInspector::MayBeChunks(ByteSource& source) {
    std::string const header = source.Text(0, kHeaderSize);
    if (header.size() < kHeaderSize) {
        return false;
    }
    std::uint64_t const rest = source.Size() - kHeaderSize;
    bool const fits = source.Number(4, 4, false) <= rest || source.Number(4, 4, true) <= rest;
    return IsPrintableAscii(header.substr(0, 4)) && (fits || !IsText(header.substr(4)));
}

bool ChunkInspector::IsArchive(ByteSource& source) {
    return source.Text(0, 4) == "VArc";
}

ChunkForm ChunkInspector::GuessForm(ByteSource& source, std::optional<bool> isLittleEndian,
                                    std::optional<bool> isPadded) {
    ChunkForm best{isLittleEndian.value_or(false), isPadded.value_or(false)};
    bool isFirst = true;
    std::tuple<bool, std::uint64_t, std::uint64_t> bestRank;
    for (bool const little : {false, true}) {
        for (bool const padded : {false, true}) {
            if (isLittleEndian.value_or(little) != little || isPadded.value_or(padded) != padded) {
                continue;
            }
            Report report;
            ChunkInspector inspector(source, report, {little, padded});
            inspector.ReadChunks(0, source.Size(), &ChunkInspector::ReadOuterBody);
            std::tuple const rank(inspector.HasChecksum(), ~report.ProblemCount(), report.EntryCount());
            if (std::exchange(isFirst, false) || rank > bestRank) {
                bestRank = rank;
                best = {little, padded};
            }
        }
    }
    return best;
}

void ChunkInspector::Inspect(bool asArchive) {
    if (asArchive && !IsArchive(m_source)) {
        m_report.AddProblem(0, "the first chunk is " + Quoted(m_source.Text(0, 4)) + ", not \"VArc\"");
    }
    if (m_source.Size() > VAIFile::kMaxFileLength) {
        m_report.AddProblem(VAIFile::kMaxFileLength, "a chunked file ends before 4 GiB");
    }
    ReadChunks(0, m_source.Size(), &ChunkInspector::ReadOuterBody);
    CheckSum();
    AddParts();
}

/// Whether the file ends with a chunk that has its checksum.
bool ChunkInspector::HasChecksum() {
    std::uint64_t const size = m_source.Size();
    return size >= kChecksumSize && m_source.Text(size - kChecksumSize, 4) == kChecksumId &&
           Number(size - kHeaderSize, 4) == 4;
}

void ChunkInspector::CheckSum() {
    if (!HasChecksum()) {
        return;
    }
    std::uint64_t const place = m_source.Size() - 4;
    std::uint32_t const sum = m_source.Checksum(0, m_source.Size() - kChecksumSize);
    if (std::uint64_t const written = Number(place, 4); written != sum) {
        m_report.AddProblem(place, "the checksum is " + AsWord(written) +
                                       ", that of the bytes before it is " + AsWord(sum));
    }
}

/// The next chunk of those that end at `end`; `at` moves past it. Nothing when there is none, which is a fault
/// unless `at` is `end`.
std::optional<ChunkInspector::Chunk> ChunkInspector::ReadHeader(std::uint64_t& at, std::uint64_t end) {
    if (at >= end || m_report.ProblemCount() >= Report::kMaxProblems) {
        at = end;
        return std::nullopt;
    }
    if (end - at < kHeaderSize) {
        m_report.AddProblem(at, Counted(end - at, "byte") + " left, the header of a chunk takes 8");
        at = end;
        return std::nullopt;
    }
    if (m_depth >= static_cast<int>(VAIFile::kMaxDepth) || m_headers >= kMaxHeaders) {
        m_report.AddProblem(at, m_headers >= kMaxHeaders ? "too many chunks to look at"
                                                         : "chunks nest 16 deep at most");
        at = end;
        return std::nullopt;
    }
    ++m_headers;
    Chunk chunk{m_source.Text(at, 4), at, at + kHeaderSize, 0};
    std::uint64_t const length = Number(at + 4, 4);
    std::uint64_t const available = end - chunk.body;
    if (!IsPrintableAscii(chunk.id)) {
        m_report.AddProblem(at, "the id " + Quoted(chunk.id) + " is not four characters");
    }
    if (length > available) {
        m_report.AddProblem(at + 4, "chunk " + Quoted(chunk.id) + " claims " + Counted(length, "byte") +
                                        ", " + std::to_string(available) + " are left");
    }
    chunk.end = chunk.body + std::min(length, available);
    at = chunk.end;
    if (m_form.isPadded && length <= available && length % 2 != 0) {
        if (at == end) {
            m_report.AddProblem(at, "the pad byte of chunk " + Quoted(chunk.id) + " is missing");
        } else if (std::uint8_t const pad = m_source.Byte(at++); pad != 0) {
            m_report.AddProblem(at - 1, "the pad byte is " + std::to_string(pad) + ", not 0");
        }
    }
    return chunk;
}

/// Whether the bytes are whole chunks and nothing else, at least one.
bool ChunkInspector::IsChunksUpTo(std::uint64_t at, std::uint64_t end) {
    while (end - at >= kHeaderSize && m_headers < kMaxHeaders) {
        std::uint64_t const length = Number(at + 4, 4);
        std::uint64_t const available = end - at - kHeaderSize;
        if (length > available || !IsPrintableAscii(m_source.Text(at, 4))) {
            return false;
        }
        ++m_headers;
        std::uint64_t const pad = m_form.isPadded ? length % 2 : 0;
        at += kHeaderSize + length;
        if (pad > end - at) {
            return false;
        }
        at += pad;
        if (at == end) {
            return true;
        }
    }
    return false;
}

/// Where in a body its chunks begin; `end` when it has none.
std::uint64_t ChunkInspector::FindChunks(std::uint64_t at, std::uint64_t end) {
    std::uint64_t const last = std::min(end, at + kMostValuesBefore);
    while (at < last && end - at >= kHeaderSize) {
        if (IsChunksUpTo(at, end)) {
            return at;
        }
        ++at;
    }
    return end;
}

void ChunkInspector::ReadChunks(std::uint64_t at, std::uint64_t end, BodyReader reader) {
    while (std::optional<Chunk> const chunk = ReadHeader(at, end)) {
        m_report.Open(chunk->offset, "chunk " + Quoted(chunk->id));
        ++m_depth;
        (this->*reader)(*chunk);
        --m_depth;
        m_report.Close(chunk->end);
    }
}

void ChunkInspector::ReadOuterBody(Chunk const& chunk) {
    if (chunk.id == kChecksumId && chunk.end == m_source.Size() && HasChecksum()) {
        m_report.Add(chunk.body, 4, "checksum", AsWord(Number(chunk.body, 4)));
        return;
    }
    if (chunk.id != "VArc") {
        m_report.AddPart(chunk.id + ".bin", chunk.body, chunk.end - chunk.body);
    }
    ReadBody(chunk);
}

void ChunkInspector::ReadBody(Chunk const& chunk) {
    if (chunk.id == "VArc") {
        ReadArchive(chunk);
    } else if (chunk.id == "ARAY" && chunk.end - chunk.body >= 4) {
        ReadArray(chunk, &ChunkInspector::ReadPlainBody);
    } else {
        ReadPlainBody(chunk);
    }
}

void ChunkInspector::ReadPlainBody(Chunk const& chunk) {
    std::uint64_t const chunks = FindChunks(chunk.body, chunk.end);
    AddBytes(chunk.body, chunks);
    ReadChunks(chunks, chunk.end, &ChunkInspector::ReadBody);
}

void ChunkInspector::AddBytes(std::uint64_t offset, std::uint64_t end) {
    if (offset < end) {
        std::string const bytes = m_source.Text(offset, std::min<std::uint64_t>(end - offset, kShownBytes));
        m_report.Add(offset, end - offset, "bytes",
                     Hexadecimal(bytes) + "  " + Quoted(std::string_view(bytes).substr(0, kShownBytes - 1)));
    }
}

// Archives

void ChunkInspector::ReadArchive(Chunk const& chunk) {
    m_hasInfos = false;
    m_hasContents = false;
    ReadChunks(chunk.body, chunk.end, &ChunkInspector::ReadArchivePart);
    if (!m_hasInfos || !m_hasContents) {
        m_report.AddProblem(chunk.offset,
                            std::string("the archive has no ") + (m_hasInfos ? "\"Data\"" : "\"Info\""));
    }
}

void ChunkInspector::ReadArchivePart(Chunk const& chunk) {
    if (chunk.id == "Info") {
        m_hasInfos = true;
        m_paths.clear(); // the last of each counts
        ReadListOf(chunk, &ChunkInspector::ReadFileInfo);
    } else if (chunk.id == "Data") {
        m_hasContents = true;
        m_contents.clear();
        ReadListOf(chunk, &ChunkInspector::ReadContents);
    } else {
        ReadPlainBody(chunk);
    }
}

/// "Info" or "Data": its first chunk is the array.
void ChunkInspector::ReadListOf(Chunk const& chunk, BodyReader element) {
    std::uint64_t at = chunk.body;
    std::optional<Chunk> const array = ReadHeader(at, chunk.end);
    if (!array || array->id != "ARAY") {
        m_report.AddProblem(chunk.body, "chunk " + Quoted(chunk.id) + " does not begin with \"ARAY\"");
    }
    if (array) {
        m_report.Open(array->offset, "chunk " + Quoted(array->id));
        ++m_depth;
        array->id == "ARAY" ? ReadArray(*array, element) : ReadPlainBody(*array);
        --m_depth;
        m_report.Close(array->end);
    }
    if (at < chunk.end) {
        m_report.AddProblem(at, Counted(chunk.end - at, "byte") + " after the array are not read");
    }
}

void ChunkInspector::ReadArray(Chunk const& chunk, BodyReader element) {
    if (chunk.end - chunk.body < 4) {
        m_report.AddProblem(chunk.body, "an array begins with its count, 4 bytes");
        return;
    }
    auto const count = static_cast<std::int32_t>(Number(chunk.body, 4));
    m_report.Add(chunk.body, 4, "count", std::to_string(count));
    BodyReader const outerElement = std::exchange(m_element, element);
    std::uint64_t const outerElements = std::exchange(m_elements, 0);
    ReadChunks(chunk.body + 4, chunk.end, &ChunkInspector::ReadKnownElement);
    // Null elements are counted without a chunk, so only a count that is too low is wrong.
    if (count < 0 || static_cast<std::uint64_t>(count) < m_elements) {
        m_report.AddProblem(chunk.body, "the count is " + std::to_string(count) + ", the array has " +
                                            Counted(m_elements, "element"));
    }
    m_element = outerElement;
    m_elements = outerElements;
}

void ChunkInspector::ReadKnownElement(Chunk const& chunk) {
    if (chunk.id == "elem") {
        ++m_elements;
        (this->*m_element)(chunk);
    } else {
        ReadPlainBody(chunk);
    }
}

void ChunkInspector::ReadFileInfo(Chunk const& chunk) {
    std::uint64_t const size = chunk.end - chunk.body;
    std::uint64_t const length = size < 2 ? 0 : Number(chunk.body, 2);
    if (size < 4 || length == 0 || length > size - 3) {
        m_report.AddProblem(chunk.body, "a path of " + Counted(length, "byte") + " and a flag do not fit " +
                                            Counted(size, "byte"));
        AddBytes(chunk.body, chunk.end);
        return;
    }
    std::string const path = m_source.Text(chunk.body + 2, length - 1);
    std::uint64_t const flagAt = chunk.body + 2 + length;
    m_report.Add(chunk.body, 2 + length, "path", Quoted(path));
    m_report.Add(flagAt, 1, "flag", std::to_string(m_source.Byte(flagAt)));
    if (std::size_t const nul = path.find('\0'); nul != std::string::npos) {
        m_report.AddProblem(chunk.body + 2 + nul, "the path contains a zero byte");
    } else if (m_source.Byte(flagAt - 1) != 0) {
        m_report.AddProblem(flagAt - 1, "the path does not end with a zero byte");
    } else if (path.size() > kMaxPath) {
        m_report.AddProblem(chunk.body + 2 + kMaxPath, "a path is cut to 259 bytes");
    }
    if (m_source.Byte(flagAt) > 1) {
        m_report.AddProblem(flagAt, "the flag is " + std::to_string(m_source.Byte(flagAt)) + ", not 0 or 1");
    }
    if (flagAt + 1 < chunk.end) {
        m_report.AddProblem(flagAt + 1, Counted(chunk.end - flagAt - 1, "byte") + " after the flag");
    }
    if (m_paths.size() < Report::kMaxParts) {
        m_paths.push_back(path.substr(0, std::min<std::size_t>(path.find('\0'), kMaxPath)));
    }
}

void ChunkInspector::ReadContents(Chunk const& chunk) {
    std::uint64_t const size = chunk.end - chunk.body;
    if (size < 8) {
        m_report.AddProblem(chunk.body, "contents begin with their length, 8 bytes");
        AddBytes(chunk.body, chunk.end);
        return;
    }
    std::uint64_t const length = Number(chunk.body, 8);
    std::uint64_t const bytes = chunk.body + 8;
    m_report.Add(chunk.body, 8, "length", std::to_string(length));
    AddBytes(bytes, chunk.end);
    if (length != size - 8) {
        m_report.AddProblem(chunk.body, "contents of " + Counted(length, "byte") + ", the chunk has " +
                                            std::to_string(size - 8));
    }
    if (m_contents.size() < Report::kMaxParts) {
        m_contents.push_back({"", bytes, std::min(length, size - 8)});
    }
}

/// The contents of the last archive are parts by the names of the descriptions at the same places.
void ChunkInspector::AddParts() {
    for (std::size_t i = 0; i < m_contents.size(); ++i) {
        m_report.AddPart(i < m_paths.size() ? m_paths[i] : "", m_contents[i].offset, m_contents[i].length);
    }
}

} // namespace vfinspect
