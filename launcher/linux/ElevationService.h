#pragma once

#include "launcher/IElevationService.h"
#include "launcher/linux/RightHolder.h"

namespace Launcher {

/// The elevation service of Linux: direct for a process that is root, else through polkit, else through sudo.
///
/// It grants `kAdministratorRight` and nothing else. A right that was lost between acquiring and launching is
/// asked for once more by `Execute` itself, so a cancel can come from there too.
///
/// Threads: one thread at a time.
class ElevationService final : public IElevationService {
  public:
    explicit ElevationService(SHelperPaths paths = SHelperPaths::Installed()) : m_paths(std::move(paths)) {}

    AuthorizationStatus Create(AuthorizationItems rights, AuthorizationItems environment,
                               AuthorizationFlags flags, Reference** reference) override;
    AuthorizationStatus AcquireRights(Reference* reference, AuthorizationItems rights,
                                      AuthorizationItems environment, AuthorizationFlags flags) override;
    AuthorizationStatus Execute(Reference* reference, char const* path, AuthorizationFlags flags,
                                char const* const* arguments) override;
    AuthorizationStatus Free(Reference* reference, AuthorizationFlags flags) override;

  private:
    SHelperPaths m_paths;
};

} // namespace Launcher
