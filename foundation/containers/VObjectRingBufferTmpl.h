#pragma once

#include "foundation/containers/TRingBuffer.h"

namespace VFoundation {

/// The ring buffer of `T` as the library makes it; see `TRingBuffer` for everything it does.
///
///     VObjectRef<VObjectRingBufferTmpl<VJob>> const jobs =
///         VObjectRef<VObjectRingBufferTmpl<VJob>>::Adopt(new VObjectRingBufferTmpl<VJob>(64));
///
/// It shares the class record of its base.
///
/// Ownership: retains what it holds.
/// Threads: any.
template <class T>
class VObjectRingBufferTmpl : public TRingBuffer<T, TRefCounted<T>> {
  public:
    explicit VObjectRingBufferTmpl(unsigned long capacity) : TRingBuffer<T, TRefCounted<T>>(capacity) {}
    ~VObjectRingBufferTmpl() override = default;
};

} // namespace VFoundation
