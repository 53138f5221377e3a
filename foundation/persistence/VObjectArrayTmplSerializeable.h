#pragma once

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/persistence/ChunkId.h"
#include "foundation/persistence/ChunkScope.h"

namespace VFoundation {

/// A `VObjectArrayTmpl` that stores itself in a chunked file: a chunk "ARAY" with a 32-bit count and one chunk "elem"
/// for each element, whose body is the element's own `Serialize`. `T` needs a default constructor.
///
/// Null elements are counted but not written. Reading ignores the count, takes the "elem" chunks that are there and
/// skips all others.
///
/// Ownership, threads: as `VObjectArray`; these arrays are not recycled.
template <class T>
class VFOUNDATION_API VObjectArrayTmplSerializeable : public VObjectArrayTmpl<T> {
  public:
    explicit VObjectArrayTmplSerializeable(long initialCapacity = 0) : VObjectArrayTmpl<T>(initialCapacity) {}

    static VObjectArrayTmplSerializeable* New() { return new VObjectArrayTmplSerializeable(0); }

    /// Loading replaces the elements, by none when the next chunk is not an array, and is true; open it
    /// chunk-safe. Storing is false when something could not be written.
    bool Serialize(IAIFile& file) override { return file.IsLoading() ? Load(file) : Store(file); }

  private:
    static constexpr unsigned long kArrayId = ChunkId("ARAY");
    static constexpr unsigned long kElementId = ChunkId("elem");

    bool Store(IAIFile& file) {
        ChunkScope array(file, kArrayId);
        if (!array.IsOpen()) {
            return false;
        }
        file << this->Count();
        bool stored = true;
        for (long i = 0; i < this->Count() && stored; ++i) {
            if (T* const object = this->ObjectAtIndexTyped(i)) {
                ChunkScope element(file, kElementId);
                stored = element.IsOpen() && object->Serialize(file);
                stored = element.Close() && stored;
            }
        }
        return array.Close() && stored;
    }

    bool Load(IAIFile& file) {
        this->RemoveAllObjects();
        ChunkScope const array(file);
        if (array.IsOpen() && array.Id() == kArrayId) {
            long count = 0;
            file >> count; // not used: the "elem" chunks decide
            long loaded = 0;
            while (file.ChunkRemaining()) {
                ChunkScope const child(file);
                if (!child.IsOpen()) {
                    break;
                }
                if (child.Id() == kElementId) {
                    auto const element = VObjectRef<T>::Adopt(new T);
                    if (!element->Serialize(file)) {
                        file.NoteLoss(LoadReport::kNotRead, element->ClassName());
                    }
                    this->AddObject(element.Get());
                    ++loaded;
                } else {
                    file.NoteChunk(LoadReport::kWrongKind, child.Id());
                }
            }
            file.NoteCount(count, loaded);
        } else {
            file.NoteChunk(LoadReport::kWrongKind, array.Id());
        }
        return true;
    }
};

} // namespace VFoundation
