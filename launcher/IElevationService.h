#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Launcher {

/// One item of a set of rights, or of the environment that goes with asking for them.
struct SAuthorizationItem {
    char const* name;
    std::size_t valueLength; ///< bytes; the terminator of a text is not counted
    void const* value;       ///< borrowed for the call; null when there is no value
    std::uint32_t flags;
};

using AuthorizationItems = std::span<SAuthorizationItem const>;
using AuthorizationFlags = std::uint32_t;
using AuthorizationStatus = std::int32_t;

inline constexpr char kAdministratorRight[] = "system.privilege.admin";
inline constexpr char kDialogIconItem[] = "icon"; ///< environment: path of a picture for the password dialog

inline constexpr AuthorizationFlags kDefaultFlags = 0;
inline constexpr AuthorizationFlags kInteractionAllowed = 1;
inline constexpr AuthorizationFlags kExtendRights = 2;
inline constexpr AuthorizationFlags kPreAuthorize = 16;

inline constexpr AuthorizationStatus kAuthorized = 0;
inline constexpr AuthorizationStatus kDenied = -60005;
inline constexpr AuthorizationStatus kCancelled = -60006; ///< by the user
inline constexpr AuthorizationStatus kInteractionNotAllowed = -60007;
inline constexpr AuthorizationStatus kInternalFailure = -60008;
inline constexpr AuthorizationStatus kToolExecuteFailure = -60031; ///< the program could not be executed

/// Administrator rights as the launcher uses them: four operations on a reference.
///
/// The operations take exactly what the launcher asks for, down to lengths and flags, so that a scripted
/// service can record it. A status other than the named ones is possible and is reported as a number.
///
/// Ownership: `Create` hands out a reference that is owned by the caller and ends with `Free`; everything else
/// is borrowed for the call.
/// Threads: one thread at a time.
class IElevationService {
  public:
    class Reference; ///< opaque to callers

    virtual ~IElevationService() = default;

    /// Prepares asking; asks nothing yet. On failure `*reference` is null.
    virtual AuthorizationStatus Create(AuthorizationItems rights, AuthorizationItems environment,
                                       AuthorizationFlags flags, Reference** reference) = 0;

    /// Acquires the named rights, asking the user where that is needed and `flags` allow it. Blocks until the
    /// user has answered.
    virtual AuthorizationStatus AcquireRights(Reference* reference, AuthorizationItems rights,
                                              AuthorizationItems environment, AuthorizationFlags flags) = 0;

    /// Starts the program at `path` as administrator with the null-terminated `arguments` (the program's own
    /// name is not among them) and does not wait for it to end. `kAuthorized` means that it runs.
    virtual AuthorizationStatus Execute(Reference* reference, char const* path, AuthorizationFlags flags,
                                        char const* const* arguments) = 0;

    /// Gives the right back and ends the reference; null is ignored.
    virtual AuthorizationStatus Free(Reference* reference, AuthorizationFlags flags) = 0;
};

} // namespace Launcher
