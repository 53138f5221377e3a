// Asks for the right, launches what the arguments say (else /bin/true) and prints the two statuses: the launcher
// itself ends alike whether the user cancelled or was refused, and chooses what it launches.

#include "launcher/linux/ElevationService.h"

#include <cstdio>

int main(int argc, char** argv) {
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
        char const* const nothing[] = {nullptr};
        std::printf("executed %d\n", service.Execute(reference, argc > 1 ? argv[1] : "/bin/true",
                                                     kDefaultFlags, argc > 1 ? argv + 2 : nothing));
    }
    service.Free(reference, kDefaultFlags);
    return 0;
}
