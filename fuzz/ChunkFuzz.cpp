// A chunked file that a script reads or writes. The input is: the mode bits, the length of the script, the script, the
// file. A script that reads goes over the file, value by value and by whole blocks, with the same results; one that
// writes makes a file, which is then read back, and refused once a byte of it was changed under its checksum.

#include "foundation/host/VFile.h"
#include "foundation/persistence/ChunkId.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <cstring>
#include <functional>
#include <string>
#include <vector>

using namespace VFoundation;
using fuzzing::Require;

namespace {

using Script = std::basic_string_view<std::uint8_t>;

/// What holds of every file at every moment.
void CheckState(VAIFile& file) {
    Require(file.GetPos() >= 0, "an open file has a position");
    Require(file.ChunkRemaining() <= 0xFFFFFFFFUL, "what is left of a chunk is a length");
    Require(file.GetPosition() == file.GetPos(), "both positions are the same");
}

void ReadString(VAIFile& file) {
    char* text = nullptr;
    file >> &text;
    Require(text != nullptr && std::strlen(text) <= 0xFFFF, "a string is read, or an empty one");
    delete[] text;
}

template <class T>
void ReadValue(VAIFile& file) {
    T value{};
    unsigned long const before = file.ChunkRemaining();
    file >> value;
    Require(!file.IsChunkSafe() || file.ChunkRemaining() <= before, "reading never gives bytes back");
}

/// Reads `count` values and notes what it read and where it stands then.
template <class T>
void ReadValues(VAIFile& file, unsigned long count, bool byBlocks, std::string& notes) {
    std::vector<T> values(count);
    unsigned long const before = file.ChunkRemaining();
    if (byBlocks) {
        file.ReadValues(values.data(), count);
    } else {
        for (T& value : values) {
            file >> value;
        }
    }
    Require(!file.IsChunkSafe() || file.ChunkRemaining() <= before, "reading never gives bytes back");
    notes.append(reinterpret_cast<char const*>(values.data()), count * sizeof(T));
    notes += std::to_string(file.GetPos()) + ' ' + std::to_string(file.ChunkRemaining()) + '\n';
}

void ReadBytes(VAIFile& file, std::size_t size) {
    std::vector<std::uint8_t> bytes(size, 0xAA);
    file.Read(bytes.data(), bytes.size());
}

/// Returns what was read by whole blocks, or value by value.
std::string ReadByScript(VAIFile& file, Script script, bool byBlocks) {
    std::string notes;
    unsigned long id = 0;
    unsigned long length = 0;
    for (std::uint8_t const step : script) {
        switch (step % 16) {
        case 0:
            file.ReadChunkHeader(&id, &length);
            break;
        case 1:
            file.CloseChunk();
            break;
        case 2:
            file.UnreadHeader();
            break;
        case 3:
            ReadString(file);
            break;
        case 4:
            ReadValue<char>(file);
            break;
        case 5:
            ReadValues<short>(file, step, byBlocks, notes);
            break;
        case 6:
            ReadValues<unsigned short>(file, step, byBlocks, notes);
            break;
        case 7:
            ReadValues<long>(file, step, byBlocks, notes);
            break;
        case 8:
            ReadValues<long long>(file, step, byBlocks, notes);
            break;
        case 9:
            ReadValues<double>(file, step, byBlocks, notes);
            break;
        case 10:
            ReadValue<bool>(file);
            break;
        case 11:
            ReadBytes(file, step);
            break;
        case 12:
            file.SetLE(step > 127);
            break;
        case 13:
            file.Seek(static_cast<std::int8_t>(step), step % 3);
            break;
        case 14:
            ReadBytes(file, step * 1024UL);
            break;
        default:
            file.AcceptLength(1UL << (step / 8));
            break;
        }
        CheckState(file);
    }
    return notes;
}

/// Visits every chunk by its header. It ends for every file: each round consumes a header or stops.
void Wander(VAIFile& file, int depth) {
    Require(depth <= static_cast<int>(VAIFile::kMaxDepth), "chunks nest as deep as allowed");
    while (file.ChunkRemaining() || depth == 0) {
        long const before = file.GetPos();
        if (!file.ReadChunkHeader(nullptr, nullptr)) {
            return;
        }
        Require(file.GetPos() > before, "a header is consumed");
        Wander(file, depth + 1);
        ReadString(file);
        file.CloseChunk();
        CheckState(file);
    }
}

/// Writes or checks what the script says. Strings and bytes are made of the step.
void Move(VAIFile& file, Script& script, int depth) {
    bool const writes = file.IsStoring();
    auto const value = [&](auto written) {
        auto moved = writes ? written : decltype(written){};
        writes ? file << moved : file >> moved;
        Require(moved == written, "a value comes back");
    };
    while (!script.empty()) {
        std::uint8_t const step = script.front();
        script.remove_prefix(1);
        switch (step % 8) {
        case 0:
            if (depth < static_cast<int>(VAIFile::kMaxDepth)) {
                unsigned long id = 0;
                Require(writes ? file.OpenChunk("FUZZ") : file.ReadChunkHeader(&id, nullptr),
                        "a chunk opens");
                Require(writes || id == ChunkId("FUZZ"), "its id comes back");
                Move(file, script, depth + 1);
                Require(writes || file.ChunkRemaining() == 0, "the chunk is as long as what was written");
                Require(file.CloseChunk(), "the chunk closes");
            }
            break;
        case 1:
            if (depth > 0) {
                return;
            }
            break;
        case 2: {
            std::vector<unsigned short> const written(step % 7U, static_cast<unsigned short>(step * 257U));
            std::vector<unsigned short> moved(written.size());
            writes ? file.WriteValues(written.data(), written.size())
                   : file.ReadValues(moved.data(), moved.size());
            Require(writes || moved == written, "values come back");
            break;
        }
        case 3:
            value(static_cast<long>(step) - 128);
            break;
        case 4:
            value(static_cast<long long>(step) << 40);
            break;
        case 5:
            value(step / 7.0);
            break;
        case 6: {
            std::string bytes(step * 300UL, static_cast<char>(step));
            std::string const written = bytes;
            Require(writes ? file.Write(bytes.data(), bytes.size()) : file.Read(bytes.data(), bytes.size()),
                    "bytes move");
            Require(bytes == written, "bytes come back");
            break;
        }
        default:
            value(step > 127);
            break;
        }
    }
}

/// Whether the file opens for reading once a byte was changed, which the script chooses.
bool OpensChanged(fuzzing::MemoryFile const& original, Script script, long mode) {
    VFile file;
    Require(file.OpenForReading(VString(original.Path())), "a written file opens");
    std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
    Require(file.ReadBytes(bytes.data(), bytes.size()) == bytes.size(), "it is read whole");
    std::size_t at = 0;
    for (std::uint8_t const step : script) {
        at = (at * 251 + step) % bytes.size();
    }
    bytes[at] = static_cast<char>(bytes[at] ^ 1);
    fuzzing::MemoryFile const changed(bytes.data(), bytes.size());
    return VAIFile().Open(changed.Path(), mode);
}

void CheckWriting(Script script, long order) {
    fuzzing::MemoryFile const target("", 0);
    VAIFile file;
    Require(file.Open(target.Path(), VAIFile::kWrite + order) && file.OpenChunk("ALL."), "a file opens");
    Script steps = script;
    Move(file, steps, 1);
    Require(file.CloseChunk() && file.Close(), "everything is written");
    for (long const safety : {0L, VAIFile::kChunkSafe}) {
        Require(file.Open(target.Path(), VAIFile::kRead + order + safety), "it opens for reading");
        Require(file.ReadChunkHeader(nullptr, nullptr), "it has a chunk");
        steps = script;
        if (safety) {
            Move(file, steps, 1);
            Require(file.ChunkRemaining() == 0, "nothing is left");
        }
        Require(file.CloseChunk() && file.Close(), "it closes");
    }
    Require(!(order & VAIFile::kChecksum) || !OpensChanged(target, script, VAIFile::kRead + order),
            "a changed file is refused");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    if (size < 2) {
        return 0;
    }
    long const order = (bytes[0] & 1 ? VAIFile::kLittleEndian : 0) + (bytes[0] & 2 ? VAIFile::kPadChunks : 0);
    long const safety = bytes[0] & 4 ? VAIFile::kChunkSafe : 0;
    std::size_t const length = std::min<std::size_t>(bytes[1], size - 2);
    Script const script(bytes + 2, length);
    fuzzing::MemoryFile const input(bytes + 2 + length, size - 2 - length);
    VAIFile file;
    auto const open = [&] {
        Require(file.Open(input.Path(), VAIFile::kRead + order + safety), "a file in memory opens");
    };
    open();
    std::string const notes = ReadByScript(file, script, false);
    open();
    Require(ReadByScript(file, script, true) == notes, "blocks have the values that are read one by one");
    open();
    Wander(file, 0);
    file.Open(input.Path(), VAIFile::kRead + order + VAIFile::kChecksum); // it may have one
    CheckWriting(script, order & ~VAIFile::kPadChunks);
    CheckWriting(script, (order & ~VAIFile::kPadChunks) + VAIFile::kChecksum);
    return 0;
}
