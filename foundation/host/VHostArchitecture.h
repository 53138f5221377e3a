#pragma once

#include "foundation/core/Export.h"

#include <atomic>
#include <bit>

namespace VFoundation {

/// Facts about the machine and its user.
///
/// Ownership: no instances.
/// Threads: any thread.
class VFOUNDATION_API VHostArchitecture {
  public:
    VHostArchitecture() = delete;

    static constexpr bool ms_bIsHostBigEndian = std::endian::native == std::endian::big;
    static bool IsHostBigEndian() noexcept { return ms_bIsHostBigEndian; }

    /// Reverses four bytes, or two, in place; null is ignored.
    static void Swap4Bytes(unsigned char* bytes) noexcept;
    static void Swap2Bytes(unsigned char* bytes) noexcept;

    /// Writes the short name of the user who started the process: that of the real user id, or for root that of the
    /// login session if there is one. Fills the rest of `buffer` with NULs, at least one: a long name is cut. Empty
    /// when there is no name, or no memory to find it. Nothing for null or a size of 0.
    static void UserName(char* buffer, unsigned long size);

    /// What the processor has. False until `InitializeClass`.
    class VCPUInfo {
      public:
        VCPUInfo() = delete;

        /// Asks the system and returns its status, 0 for success.
        /// DELIBERATE: the answer is ignored; the library takes everything up to SSE3 for granted and
        /// hyper-threading for absent.
        static long InitializeClass() noexcept;

        static std::atomic<bool> ms_bHasFPU;
        static std::atomic<bool> ms_bHasMMX;
        static std::atomic<bool> ms_bHasSSE;
        static std::atomic<bool> ms_bHasSSE2;
        static std::atomic<bool> ms_bHasSSE3;
        static std::atomic<bool> ms_bHasHyperThreading;
    };
};

} // namespace VFoundation
