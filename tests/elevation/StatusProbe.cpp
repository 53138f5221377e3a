// Asks for the right, launches something and prints the two statuses: the launcher itself ends alike whether the
// user cancelled or was refused.

#include "launcher/linux/ElevationService.h"

#include <cstdio>

int main() {
    using namespace Launcher;
    ElevationService service;
    IElevationService::Reference* reference = nullptr;
    SAuthorizationItem const rights[] = {{kAdministratorRight, 0, nullptr, 0}};
    AuthorizationStatus status = service.Create({}, {}, kDefaultFlags, &reference);
    if (status == kAuthorized) {
        status = service.AcquireRights(reference, rights, {}, kInteractionAllowed);
    }
    std::printf("acquired %d\n", status);
    if (status == kAuthorized) {
        char const* const arguments[] = {nullptr};
        std::printf("executed %d\n", service.Execute(reference, "/bin/true", kDefaultFlags, arguments));
    }
    service.Free(reference, kDefaultFlags);
    return 0;
}
