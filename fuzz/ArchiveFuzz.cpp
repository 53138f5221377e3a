// Archives: what loads is saved, and loads again with the same contents. The first byte gives the mode bits.

#include "foundation/core/VException.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VArchive.h"
#include "fuzz/FuzzInput.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace VFoundation;
using fuzzing::Require;

namespace {

std::string Saved(VArchive& archive, long order) {
    fuzzing::MemoryFile const target("", 0);
    VAIFile file;
    Require(file.Open(target.Path(), VAIFile::kWrite + order), "a file opens for writing");
    Require(archive.Serialize(file) && file.Close(), "an archive is saved");
    std::ifstream written(target.Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(written), {}};
}

/// False when a length in it cannot be true.
bool Load(VArchive& archive, std::string const& bytes, long mode) {
    fuzzing::MemoryFile const source(bytes.data(), bytes.size());
    VAIFile file;
    Require(file.Open(source.Path(), VAIFile::kRead + mode), "a file in memory opens");
    bool loaded = true;
    try {
        Require(archive.Serialize(file), "reading an archive is true");
    } catch (VException const& exception) {
        Require(exception.Id() == VException::eOutOfMemory, "only a length throws");
        loaded = false;
    }
    Require(file.ChunkRemaining() == 0, "every chunk is closed");
    for (long i = 0; i < archive.Infos().Count(); ++i) {
        Require(std::strlen(archive.Infos().ObjectAtIndexTyped(i)->Path()) < 260, "a path is cut");
    }
    return loaded;
}

/// The bytes of all contents; those that a damaged length adds are zero and take long to save.
unsigned long Length(VArchive const& archive) {
    unsigned long length = 0;
    for (long i = 0; i < archive.Data().Count(); ++i) {
        length += archive.Data().ObjectAtIndexTyped(i)->Length();
    }
    return length;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    if (size == 0) {
        return 0;
    }
    long const order = (bytes[0] & 1 ? VAIFile::kLittleEndian : 0) + (bytes[0] & 2 ? VAIFile::kPadChunks : 0);
    VArchive archive;
    bool const loaded = Load(archive, std::string(bytes + 1, bytes + size), order + VAIFile::kChunkSafe);
    if (loaded && Length(archive) < 1UL << 20) {
        std::string const saved = Saved(archive, order);
        VArchive again;
        Require(Load(again, saved, order + VAIFile::kChunkSafe), "a saved archive loads");
        Require(Saved(again, order) == saved, "it comes back the same");
        Load(again, saved, order); // without chunk safety: some other archive, but an end
    }
    return 0;
}
