// A chunked file that a script reads or writes. The input is: the mode bits, the length of the script, the script, the
// file. A script that reads goes over the file; one that writes makes a file, which is then read back value by value.

#include "foundation/persistence/ChunkId.h"
#include "foundation/persistence/VAIFile.h"
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

void ReadBytes(VAIFile& file, std::size_t size) {
    std::vector<std::uint8_t> bytes(size, 0xAA);
    file.Read(bytes.data(), bytes.size());
}

void ReadByScript(VAIFile& file, Script script) {
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
            ReadValue<short>(file);
            break;
        case 6:
            ReadValue<unsigned short>(file);
            break;
        case 7:
            ReadValue<long>(file);
            break;
        case 8:
            ReadValue<long long>(file);
            break;
        case 9:
            ReadValue<double>(file);
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
}

/// Ends for every file: each round consumes a header or stops.
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
        case 2:
            value(static_cast<unsigned short>(step * 257U));
            break;
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
    for (bool const isScript : {true, false}) {
        Require(file.Open(input.Path(), VAIFile::kRead + order + safety), "a file in memory opens");
        isScript ? ReadByScript(file, script) : Wander(file, 0);
        file.Close();
    }
    CheckWriting(script, order & ~VAIFile::kPadChunks);
    return 0;
}
