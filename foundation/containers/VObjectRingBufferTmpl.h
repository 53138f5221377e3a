#pragma once

#include "foundation/containers/TRingBuffer.h"
#include "foundation/core/Export.h"

namespace VFoundation {

/// The ring buffer of `T` that the library makes. `TRingBuffer` says what it does.
///
///     using Jobs = VObjectRingBufferTmpl<VJob>;
///     auto const jobs = MakeObject<Jobs>(64);
///
/// It shares the class record of its base.
///
/// Ownership: retains what it holds.
/// Threads: any.
template <class T>
class VFOUNDATION_API VObjectRingBufferTmpl : public TRingBuffer<T, TRefCounted<T>> {
  public:
    explicit VObjectRingBufferTmpl(unsigned long capacity) : TRingBuffer<T, TRefCounted<T>>(capacity) {}
    ~VObjectRingBufferTmpl() override = default;
};

} // namespace VFoundation
