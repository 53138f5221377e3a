#include "launcher/LauncherRun.h"

#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/host/VFileManager.h"
#include "foundation/host/VHostArchitecture.h"
#include "foundation/strings/VString.h"
#include "launcher/BundleLayout.h"
#include "launcher/IElevationService.h"
#include "launcher/VApplication.h"

#include <cstdio>
#include <cstring>

namespace Launcher {

namespace {

using namespace VFoundation;

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;

void DeletePathComponents(VString& path, int count) {
    for (int i = 0; i < count; ++i) {
        path.DeleteLastPathComponent();
    }
}

// `path` becomes the launcher's own path without its last `depth` components, followed by `relativePath`.
void BuildPath(VString& path, char const* launcherPath, int depth, char const* relativePath) {
    path = launcherPath;
    DeletePathComponents(path, depth);
    path.AppendPathComponent(relativePath);
}

bool FileExists(VString const& path) {
    return VFileManager::DefaultManager()->FileExistsAtPath(path, nullptr);
}

AuthorizationStatus AcquireAdministratorRight(IElevationService& elevation,
                                              IElevationService::Reference* authorisation,
                                              VString const& iconPath) {
    char const* const icon = iconPath.CString();
    SAuthorizationItem const rights[] = {{kAdministratorRight, 0, nullptr, 0}};
    SAuthorizationItem const environment[] = {{kDialogIconItem, std::strlen(icon), icon, 0}};
    return elevation.AcquireRights(authorisation, rights, environment,
                                   kInteractionAllowed | kExtendRights | kPreAuthorize);
}

void ChooseProgram(VString& path, char const* launcherPath) { // `path` becomes the chosen one
    std::fputs("Constructing path 1\n", stderr);
    BuildPath(path, launcherPath, kBundleFolderDepth, kGuideBesideBundle);
    std::fprintf(stderr, "About to check default exe path %s\n", path.CString());
    if (!FileExists(path)) {
        std::fputs("File doesnt exist, looking for install system", stderr);
        BuildPath(path, launcherPath, kContentsDepth, kInstallerInContents);
        std::fprintf(stderr, " on path %s\n", path.CString());
        if (!FileExists(path)) {
            std::fputs("File doesnt exist, looking for uninstall system", stderr);
            BuildPath(path, launcherPath, kContentsDepth, kUninstallerInContents);
            std::fprintf(stderr, " on path %s\n", path.CString());
        }
    }
    std::fprintf(stderr, "Exe path = %s \n", path.CString());
}

int ReportLaunch(AuthorizationStatus status) {
    switch (status) {
    case kAuthorized:
        std::printf("valid %d\n", status);
        return kExitSuccess;
    case kCancelled:
        std::printf("cancelled %d\n", status);
        return kExitSuccess;
    case kToolExecuteFailure:
        VApplication::AlertBox("Error: Unable to find installer application to run. "
                               "Please contact Quillmark technical support");
        break;
    default:
        VApplication::AlertBox("Could not authorise with status %d", status);
        break;
    }
    std::printf("invalid %d\n", status);
    return kExitFailure;
}

} // namespace

int RunLauncher(char const* const* argv, IElevationService& elevation) {
    InitializeLibrary(false);
    if (!argv) {
        return kExitFailure;
    }
    char const* const launcherPath = argv[0];

    VString workingFolder(launcherPath);
    std::fprintf(stderr, "CWD = %s\n", workingFolder.CString());
    DeletePathComponents(workingFolder, kBundleFolderDepth);
    std::fprintf(stderr, "CWD Actual = %s\n", workingFolder.CString());

    char userName[1024];
    VHostArchitecture::UserName(userName, sizeof(userName));
    std::fprintf(stderr, "Uname = %s\n", userName);

    VString iconPath;
    BuildPath(iconPath, launcherPath, kContentsDepth, "Resources/AuthIcon.png");
    std::fprintf(stderr, "img path = %s\n", iconPath.CString());

    IElevationService::Reference* authorisation = nullptr;
    AuthorizationStatus status = elevation.Create({}, {}, kDefaultFlags, &authorisation);
    std::fputs("Created authorisation\n", stderr);
    if (status != kAuthorized) {
        VApplication::AlertBox("Failed to create the authorisation with status %d", status);
        return kExitFailure;
    }

    status = AcquireAdministratorRight(elevation, authorisation, iconPath);
    std::fputs("Copied the authorisation = \n", stderr);
    if (status != kAuthorized) {
        elevation.Free(authorisation, kDefaultFlags);
        return kExitFailure;
    }

    VString program;
    ChooseProgram(program, launcherPath);
    char const* const arguments[] = {kUserNameOption, userName, nullptr};
    status = elevation.Execute(authorisation, program.CString(), kDefaultFlags, arguments);
    std::puts("Called auth exe priv");
    std::printf("Status is ");
    int const exitStatus = ReportLaunch(status);

    elevation.Free(authorisation, kDefaultFlags);
    UninitializeLibrary(false, true, false);
    return exitStatus;
}

} // namespace Launcher
