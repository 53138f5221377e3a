#include "foundation/persistence/VAIFile.h"

#include "foundation/host/VHostArchitecture.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/internal/ByteOrder.h"
#include "foundation/persistence/internal/Crc32.h"
#include "foundation/strings/VData.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace VFoundation {

namespace {

constexpr std::uint32_t kOrderFlag = VAIFile::kLittleEndian;
constexpr unsigned long kIdSize = 4;
constexpr unsigned long kLengthSize = 4;
constexpr unsigned long kHeaderSize = kIdSize + kLengthSize;
constexpr char kChecksumId[] = "CSUM";
constexpr unsigned long kChecksumSize = kHeaderSize + sizeof(std::uint32_t);
constexpr unsigned long kTextLengthSize = 2;
constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

constexpr bool IsOdd(unsigned long number) {
    return (number & 1) != 0;
}

} // namespace

/// Bytes taken from the window are counted for the chunk only when the count is needed. This counts them before one
/// operation, which does its own counting, and opens the window again after it.
class VAIFile::WindowPause {
  public:
    explicit WindowPause(VAIFile& file) : m_file(file) { m_file.CountRead(m_file.m_file.TakenFromWindow()); }
    WindowPause(WindowPause const&) = delete;
    WindowPause& operator=(WindowPause const&) = delete;
    ~WindowPause() { m_file.m_file.OpenWindow(m_file.ReadLimit()); }

  private:
    VAIFile& m_file;
};

VClass* VAIFile::ms_theClass = nullptr;

VAIFile::VAIFile(VClass* cls) : Registered(cls) {
}

VAIFile::~VAIFile() = default;

// Opening and closing.

bool VAIFile::Open(char const* path, long mode) {
    if (IsOpen()) {
        Close();
    }
    m_chunkLengths = m_chunkBytesRead = m_chunkStarts = {};
    m_depth = 0;
    m_unbacked = 0;
    m_report.Clear();
    RememberPath(path);
    if (!path) {
        m_lastError = eNoPath;
        return false;
    }
    if (!*path || !OpenFile(path, mode)) {
        m_lastError = eCannotOpen;
        return false;
    }
    m_mode = narrow_cast<std::uint32_t>(mode);
    UpdateByteOrder();
    if ((mode & kRead) && (mode & kChecksum) && !HasRightChecksum()) {
        Close();
        m_lastError = eDamaged;
        return false;
    }
    m_file.OpenWindow(ReadLimit());
    m_lastError = eNone;
    return true;
}

bool VAIFile::OpenFile(char const* path, long mode) {
    if (mode & kRead) {
        return m_file.OpenForReading(path);
    }
    if (!(mode & kWrite)) {
        return m_file.Refuse(EINVAL);
    }
    return (mode & kReplaceOnClose) ? m_file.OpenForReplacing(path)
           : (mode & kChecksum)     ? m_file.OpenForChecksum(path)
                                    : m_file.OpenForWriting(path);
}

bool VAIFile::Close() {
    std::uint32_t const mode = std::exchange(m_mode, 0);
    std::uint32_t const depth = std::exchange(m_depth, 0);
    if (!m_file.IsOpen()) {
        m_lastError = eNotOpen;
        return false;
    }
    bool const isChecked = !(mode & kRead) && (mode & (kChecksum | kReplaceOnClose));
    if (isChecked && depth > 0) {
        m_file.CloseUnreplaced();
        m_lastError = eChunkOpen;
        return false;
    }
    if (isChecked && (mode & kChecksum)) {
        AddChecksum();
    }
    m_file.Close();
    return WriteResult();
}

/// Of all before it, as the body of the last chunk.
bool VAIFile::AddChecksum() {
    std::uint32_t checksum = 0;
    if (!m_file.Checksum(checksum)) {
        return false;
    }
    std::uint32_t const length = sizeof checksum;
    unsigned char chunk[kChecksumSize];
    std::memcpy(chunk, kChecksumId, kIdSize);
    CopyNumber<std::uint32_t>(chunk + kIdSize, &length, m_swap);
    CopyNumber<std::uint32_t>(chunk + kHeaderSize, &checksum, m_swap);
    return m_file.Write(chunk, sizeof chunk);
}

/// Reads the file from its start and goes back there.
bool VAIFile::HasRightChecksum() {
    long left = m_file.Length() - static_cast<long>(kChecksumSize);
    Crc32 sum;
    unsigned char bytes[4096];
    while (left > 0) {
        std::size_t const size = std::min(sizeof bytes, static_cast<std::size_t>(left));
        if (m_file.Read(bytes, size) < size) {
            return false;
        }
        sum.Add(bytes, size);
        left -= static_cast<long>(size);
    }
    std::uint32_t length = 0;
    std::uint32_t checksum = 0;
    if (left < 0 || m_file.Read(bytes, kChecksumSize) < kChecksumSize) {
        return false;
    }
    CopyNumber<std::uint32_t>(&length, bytes + kIdSize, m_swap);
    CopyNumber<std::uint32_t>(&checksum, bytes + kHeaderSize, m_swap);
    return std::memcmp(bytes, kChecksumId, kIdSize) == 0 && length == sizeof checksum &&
           checksum == sum.Value() && m_file.Seek(0, SEEK_SET);
}

void VAIFile::SetLE(bool littleEndian) {
    m_mode = littleEndian ? m_mode | kOrderFlag : m_mode & ~kOrderFlag;
    UpdateByteOrder();
}

void VAIFile::UpdateByteOrder() noexcept {
    m_swap = VHostArchitecture::IsHostBigEndian() == ((m_mode & kLittleEndian) != 0);
}

/// Sets the error of an operation that writes, and returns its result.
bool VAIFile::WriteResult() noexcept {
    m_lastError = m_file.HasFailed() ? eWriteFailed : eNone;
    return m_lastError == eNone;
}

// Chunks.

bool VAIFile::OpenChunk(char const* id) {
    unsigned char bytes[kIdSize] = {};
    for (unsigned long i = 0; id && i < kIdSize && id[i] != '\0'; ++i) {
        bytes[i] = static_cast<unsigned char>(id[i]);
    }
    return OpenChunkWithId(bytes);
}

bool VAIFile::OpenChunk(unsigned long id) {
    auto const number = narrow_cast<std::uint32_t>(id);
    unsigned char bytes[kIdSize];
    CopyNumber<std::uint32_t>(bytes, &number, !VHostArchitecture::IsHostBigEndian());
    return OpenChunkWithId(bytes);
}

bool VAIFile::OpenChunkWithId(unsigned char const* id) {
    if (m_depth == kMaxDepth) {
        m_lastError = eTooDeep;
        return false;
    }
    std::uint32_t const lengthComesLater = 0;
    if (m_file.Write(id, kIdSize) && m_file.Write(&lengthComesLater, kLengthSize) && m_file.Flush()) {
        m_chunkStarts[m_depth++] = narrow_cast<std::uint32_t>(m_file.Position());
    }
    return WriteResult();
}

bool VAIFile::CloseChunk() {
    return IsLoading() ? CloseReadChunk() : CloseWrittenChunk();
}

bool VAIFile::CloseWrittenChunk() {
    if (m_depth == 0) {
        m_lastError = eNoChunk;
        return false;
    }
    long const start = m_chunkStarts[--m_depth];
    long const bodyEnd = m_file.Position();
    if ((m_mode & kPadChunks) && bodyEnd % 2 != 0) {
        unsigned char const pad = 0;
        m_file.Write(&pad, 1);
    }
    auto length = narrow_cast<std::uint32_t>(std::max(bodyEnd - start, 0L));
    CopyNumber<std::uint32_t>(&length, &length, m_swap);
    m_file.Overwrite(start - static_cast<long>(kLengthSize), &length, kLengthSize);
    return WriteResult();
}

bool VAIFile::ReadChunkHeader(unsigned long* id, unsigned long* length) {
    WindowPause const pause(*this);
    if (m_depth == kMaxDepth) {
        m_lastError = eTooDeep;
        return false;
    }
    if (m_depth && (m_mode & kChunkSafe) && Remaining() < kHeaderSize) {
        return false;
    }
    unsigned char header[kHeaderSize];
    if (m_file.Read(header, kHeaderSize) < kHeaderSize) {
        EndChunkWithFile();
        return false;
    }
    std::uint32_t number = 0;
    CopyNumber<std::uint32_t>(&number, header, !VHostArchitecture::IsHostBigEndian());
    CopyNumber<std::uint32_t>(&m_chunkLengths[m_depth], header + kIdSize, m_swap);
    if (id) {
        *id = number;
    }
    if (length) {
        *length = m_chunkLengths[m_depth];
    }
    m_chunkBytesRead[m_depth++] = 0;
    return true;
}

void VAIFile::UnreadHeader() {
    if (m_depth) {
        WindowPause const pause(*this);
        --m_depth;
        m_file.Seek(-static_cast<long>(kHeaderSize), SEEK_CUR);
    }
}

bool VAIFile::CloseReadChunk() {
    if (m_depth) {
        WindowPause const pause(*this);
        unsigned long remaining = Remaining();
        unsigned long length = m_chunkLengths[--m_depth];
        if ((m_mode & kPadChunks) && IsOdd(length)) {
            ++length;
            ++remaining;
        }
        m_file.Seek(static_cast<long>(remaining), SEEK_CUR);
        AddToBytesRead(length + kHeaderSize);
    }
    return m_lastError == eNone;
}

unsigned long VAIFile::ChunkRemaining() {
    WindowPause const pause(*this);
    return Remaining();
}

unsigned long VAIFile::GetChunkLength() {
    return m_depth < kMaxDepth ? m_chunkLengths[m_depth] : 0;
}

/// Bytes of the innermost chunk that were not counted as read.
unsigned long VAIFile::Remaining() const noexcept {
    return m_depth ? m_chunkLengths[m_depth - 1] - m_chunkBytesRead[m_depth - 1] : 0;
}

/// Bytes that a bounded read may take.
std::size_t VAIFile::ReadLimit() const noexcept {
    return (m_mode & kChunkSafe) ? Remaining() : kUnlimited;
}

void VAIFile::AddToBytesRead(unsigned long length) noexcept {
    if (m_depth) {
        m_chunkBytesRead[m_depth - 1] += narrow_cast<std::uint32_t>(std::min(length, Remaining()));
    }
}

/// Bytes read count only in chunk-safe files.
void VAIFile::CountRead(unsigned long length) noexcept {
    if (m_mode & kChunkSafe) {
        AddToBytesRead(length);
    }
}

/// At the end of the file nothing is left of the chunk, whatever its length says; otherwise a loop over
/// `ChunkRemaining` would run as often as a damaged length says.
void VAIFile::EndChunkWithFile() noexcept {
    if ((m_mode & kChunkSafe) && m_depth > 0 && Remaining() > 0) {
        NoteLoss(LoadReport::kNotRead, "the file ends in a chunk");
    }
    CountRead(Remaining());
}

// Values.

template <class Bits>
unsigned long VAIFile::WriteItem(void const* value, bool swap) {
    if (!value) {
        return 0;
    }
    if (unsigned char* const room = m_file.Put(sizeof(Bits))) {
        CopyNumber<Bits>(room, value, swap);
        return 1;
    }
    Bits bits;
    CopyNumber<Bits>(&bits, value, swap);
    return Write(&bits, sizeof bits) ? 1 : 0;
}

template <class Bits>
unsigned long VAIFile::ReadItem(void* value, bool swap) {
    if (!value) {
        return 0;
    }
    if (!(m_mode & kChunkSafe)) {
        if (unsigned char const* const bytes = m_file.Take(sizeof(Bits))) {
            CopyNumber<Bits>(value, bytes, swap);
            return 1;
        }
    }
    WindowPause const pause(*this);
    Bits bits;
    if (m_file.Read(&bits, sizeof bits) < sizeof bits) {
        return 0;
    }
    CopyNumber<Bits>(value, &bits, swap);
    return 1;
}

unsigned long VAIFile::Write8Bit(void const* value) {
    return WriteItem<std::uint8_t>(value, false);
}
unsigned long VAIFile::Write16Bit(void const* value) {
    return WriteItem<std::uint16_t>(value, m_swap);
}
unsigned long VAIFile::Write32Bit(void const* value) {
    return WriteItem<std::uint32_t>(value, m_swap);
}
unsigned long VAIFile::Write64Bit(void const* value) {
    return WriteItem<std::uint64_t>(value, m_swap);
}
unsigned long VAIFile::Write32BitBE(void const* value) {
    return WriteItem<std::uint32_t>(value, !VHostArchitecture::IsHostBigEndian());
}
unsigned long VAIFile::Read8Bit(void* value) {
    return ReadItem<std::uint8_t>(value, false);
}
unsigned long VAIFile::Read16Bit(void* value) {
    return ReadItem<std::uint16_t>(value, m_swap);
}
unsigned long VAIFile::Read32Bit(void* value) {
    return ReadItem<std::uint32_t>(value, m_swap);
}
unsigned long VAIFile::Read64Bit(void* value) {
    return ReadItem<std::uint64_t>(value, m_swap);
}
unsigned long VAIFile::Read32BitBE(void* value) {
    return ReadItem<std::uint32_t>(value, !VHostArchitecture::IsHostBigEndian());
}

void VAIFile::CopyValue(void* to, void const* from, unsigned long size) const noexcept {
    switch (size) {
    case 1:
        return CopyNumber<std::uint8_t>(to, from, false);
    case 2:
        return CopyNumber<std::uint16_t>(to, from, m_swap);
    case 4:
        return CopyNumber<std::uint32_t>(to, from, m_swap);
    default:
        return CopyNumber<std::uint64_t>(to, from, m_swap);
    }
}

void VAIFile::CopyValues(void* to, void const* from, unsigned long count, unsigned long size) const noexcept {
    if (!m_swap || size == 1) {
        std::memcpy(to, from, count * size);
    } else if (size == 2) {
        CopyNumbersSwapped<std::uint16_t>(to, from, count);
    } else if (size == 4) {
        CopyNumbersSwapped<std::uint32_t>(to, from, count);
    } else {
        CopyNumbersSwapped<std::uint64_t>(to, from, count);
    }
}

unsigned long VAIFile::WriteBlock(void const* values, unsigned long count, unsigned long size) {
    count = std::min(count, m_file.RoomLeft() / size);
    if (count > 0) {
        CopyValues(m_file.Put(count * size), values, count, size);
    }
    return count;
}

unsigned long VAIFile::ReadBlock(void* values, unsigned long count, unsigned long size, eReadRule rule) {
    count = rule != eReadRule::eOnlyInChunk || m_depth ? std::min(count, m_file.WindowLeft() / size) : 0;
    if (count > 0) {
        CopyValues(values, m_file.Take(count * size), count, size);
    }
    return count;
}

bool VAIFile::ReadValue(void* bits, unsigned long size, eReadRule rule) {
    // Every rule but one allows reading what is in the window.
    if (rule != eReadRule::eOnlyInChunk || m_depth) {
        if (unsigned char const* const bytes = m_file.Take(size)) {
            CopyValue(bits, bytes, size);
            return true;
        }
    }
    return ReadValueSlowly(bits, size, rule);
}

bool VAIFile::ReadValueSlowly(void* bits, unsigned long size, eReadRule rule) {
    WindowPause const pause(*this);
    bool const outside = rule == eReadRule::eOnlyInChunk && m_depth == 0;
    if (outside || (rule != eReadRule::eAlways && ReadLimit() < size)) {
        std::memset(bits, 0, size);
        return true;
    }
    unsigned char bytes[sizeof(std::uint64_t)];
    if (m_file.Read(bytes, size) < size) {
        EndChunkWithFile();
        return false;
    }
    CountRead(size);
    CopyValue(bits, bytes, size);
    return true;
}

// Bytes and strings.

bool VAIFile::Write(void const* bytes, unsigned long length) {
    if (!bytes && length) {
        return false;
    }
    return m_file.Write(bytes, length) || WriteResult();
}

bool VAIFile::Read(void* bytes, unsigned long length) {
    if (!bytes || length == 0) {
        return length == 0;
    }
    WindowPause const pause(*this);
    std::size_t const given = std::min(ReadLimit(), length);
    std::size_t const got = m_file.Read(bytes, given);
    if (m_mode & kChunkSafe) {
        CountRead(given);
        if (got < given) {
            EndChunkWithFile();
        }
        std::memset(static_cast<unsigned char*>(bytes) + got, 0, length - got);
    }
    return given > 0 && got == given;
}

IAIFile& VAIFile::operator<<(char const* text) {
    unsigned long const length = text ? std::min(std::strlen(text), kMaxTextLength) : 0;
    unsigned char const terminator = 0;
    *this << narrow_cast<unsigned short>(length + 1);
    if (!Write(text, length) || !Write(&terminator, 1)) {
        VLog::Trace("VAIFile::<< ARGH!");
    }
    return *this;
}

IAIFile& VAIFile::operator>>(char** text) {
    if (!text) {
        return *this;
    }
    delete[] std::exchange(*text, nullptr);
    WindowPause const pause(*this);
    std::size_t const limit = ReadLimit();
    std::size_t length = 0;
    if (limit > kTextLengthSize) {
        std::uint16_t stored = 0;
        if (m_file.Read(&stored, kTextLengthSize) == kTextLengthSize) {
            CopyNumber<std::uint16_t>(&stored, &stored, m_swap);
            length = std::min<std::size_t>(stored, limit - kTextLengthSize);
            if (length < stored && (m_mode & kChunkSafe)) {
                NoteLoss(LoadReport::kNotRead, "a text beyond its chunk");
            }
            CountRead(kTextLengthSize + length);
        } else {
            EndChunkWithFile();
        }
    }
    *text = new (std::nothrow) char[length + 1]();
    if (!*text) {
        m_file.Seek(static_cast<long>(length), SEEK_CUR);
    } else if (m_file.Read(*text, length) < length) {
        EndChunkWithFile();
    }
    return *this;
}

// Position and length.

bool VAIFile::FileSeek(long offset, long origin) {
    constexpr int kOrigins[] = {SEEK_CUR, SEEK_SET, SEEK_END};
    if (origin >= kFromCurrent && origin <= kFromEnd) {
        WindowPause const pause(*this);
        m_file.Seek(offset, kOrigins[origin]);
    }
    return true;
}

bool VAIFile::Seek(long offset, long origin) {
    FileSeek(offset, origin);
    return !m_file.HasFailed() || WriteResult();
}

long VAIFile::GetPos() {
    return IsOpen() ? m_file.Position() : -1;
}

bool VAIFile::Eof() {
    return IsEndOfFile();
}

unsigned long VAIFile::GetFileLength() {
    return static_cast<unsigned long>(GetLength());
}

unsigned long VAIFile::GetFileRemaining() {
    return static_cast<unsigned long>(std::max(GetLengthRemaining(), 0L));
}

bool VAIFile::AcceptLength(unsigned long length) {
    WindowPause const pause(*this);
    std::size_t left = ReadLimit();
    if (length <= left && length <= m_file.Buffered()) {
        return true;
    }
    left = std::min(left, GetFileRemaining());
    unsigned long const excess = length - std::min(length, left);
    if (excess > 0) {
        NoteLoss(LoadReport::kNotRead, "a length beyond the end");
    }
    if (excess > VData::kMaxUnbackedLength - m_unbacked) {
        return false;
    }
    m_unbacked += excess;
    return true;
}

long VAIFile::GetLength() {
    return m_file.Length();
}

long VAIFile::GetPosition() {
    return m_file.Position();
}

long VAIFile::GetLengthRemaining() {
    return GetLength() - GetPosition();
}

bool VAIFile::IsEndOfFile() {
    return m_file.IsAtEnd();
}

} // namespace VFoundation
