// Objects that save themselves, in both file forms: what loads is saved, and comes back as the same bytes. Input that
// begins with '<' is an XML document with the root r and an object in it. Other input is a class (one of kClasses),
// the mode bits of a chunked file, and such a file with one chunk, in which an object of the class stands.

#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace VFoundation;
using fuzzing::Require;
using Bytes = std::string;
using ObjectRef = VObjectRef<VObject>;

namespace {

constexpr char const* kClasses[] = {
    "VPoint",   "VSize",  "VRect",          "VColour",      "VDate",
    "VURL",     "VRange", "VTimeRange",     "VBitString",   "VValue",
    "VString",  "VData",  "VPDFConnection", "VFloatVector", "VFloatVectorMapXY",
    "VFileInfo"};

constexpr unsigned long kLongestData = 1UL << 16;

// XML

ObjectRef FromXML(Bytes const& text) {
    VXMLFile file;
    bool const isLoaded = file.LoadFile("fuzz", reinterpret_cast<unsigned char const*>(text.data()),
                                        static_cast<unsigned long>(text.size()), "r");
    return ObjectRef::Adopt(isLoaded ? file.ReadAndCreateObject(nullptr, nullptr) : nullptr);
}

/// Empty when the object cannot be saved.
Bytes ToXML(VObject const& object) {
    VXMLFile file;
    VString text;
    Require(file.WriteFileToString(text, "r"), "a document starts");
    file.WriteObject(nullptr, object);
    return file.CloseFile() ? text.CString() : "";
}

void CheckXML(Bytes const& document) {
    ObjectRef const first = FromXML(document);
    Bytes text = first ? ToXML(*first) : "";
    if (text.empty()) {
        return;
    }
    // Loading may bring an object into order once, as numbers are rounded in text; never twice.
    for (int round = 0; round < 2; ++round) {
        ObjectRef const again = FromXML(text);
        Require(static_cast<bool>(again), "a saved object loads");
        Bytes const saved = ToXML(*again);
        Require(round == 0 || saved == text, "a saved object comes back the same");
        if (saved.empty()) {
            return;
        }
        text = saved;
    }
}

// Chunked files

ObjectRef NewObject(std::size_t which) {
    VClass* const cls = VXMLFile::ObjectClassNamed(kClasses[which % std::size(kClasses)]);
    Require(cls != nullptr, "the class is registered");
    return ObjectRef::Adopt(cls->NewInstance());
}

void Load(VObject& object, char const* path, long mode) {
    VAIFile file;
    Require(file.Open(path, VAIFile::kRead + mode), "a file in memory opens");
    if (file.ReadChunkHeader(nullptr, nullptr)) {
        object.Serialize(file);
        file.CloseChunk();
    }
}

Bytes Save(VObject& object, char const* path, long mode) {
    VAIFile file;
    Require(file.Open(path, VAIFile::kWrite + mode), "a file in memory opens for writing");
    Require(file.OpenChunk("FUZZ"), "a chunk opens");
    object.Serialize(file);
    Require(file.CloseChunk() && file.Close(), "the file is written");
    std::ifstream written(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(written), {}};
}

void CheckChunk(std::size_t which, unsigned bits, std::uint8_t const* bytes, std::size_t size) {
    long const order = bits & 1 ? VAIFile::kLittleEndian + VAIFile::kPadChunks : 0;
    long const safety = bits & 2 ? VAIFile::kChunkSafe : 0;
    fuzzing::MemoryFile const input(bytes, size);
    ObjectRef const first = NewObject(which);
    try {
        Load(*first, input.Path(), order + safety);
    } catch (VException const&) {
        return; // a length that nothing backs
    }
    auto const* const data = dynamic_cast<VData const*>(first.Get());
    if (data && data->Length() > kLongestData) {
        return; // a length that is filled with zeros, which would be slow to save
    }
    fuzzing::MemoryFile const output("", 0);
    Bytes const saved = Save(*first, output.Path(), order);
    ObjectRef const again = NewObject(which);
    Load(*again, output.Path(), order + VAIFile::kChunkSafe);
    Require(Save(*again, output.Path(), order) == saved, "a saved object comes back the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    if (size > 0 && bytes[0] == '<') {
        CheckXML(Bytes(bytes, bytes + size));
    } else if (size >= 2) {
        CheckChunk(bytes[0], bytes[1], bytes + 2, size - 2);
    }
    return 0;
}
