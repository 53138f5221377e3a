#include "launcher/linux/ElevationService.h"

#include "launcher/linux/ProcessEnvironment.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <string_view>
#include <unistd.h>

namespace Launcher {

class IElevationService::Reference {
  public:
    std::unique_ptr<IRightHolder> holder;
    SRightQuestion question;
};

namespace {

// What an operation answers; running out of memory is a failure like any other.
template <typename Operation>
AuthorizationStatus WithinMemory(Operation operation) {
    try {
        return operation();
    } catch (std::bad_alloc const&) {
        return kInternalFailure;
    }
}

std::string IconPath(AuthorizationItems environment) {
    for (SAuthorizationItem const& item : environment) {
        if (item.value && std::string_view(item.name) == kDialogIconItem) {
            return {static_cast<char const*>(item.value), item.valueLength};
        }
    }
    return {};
}

bool IsAdministratorRight(SAuthorizationItem const& right) {
    return std::string_view(right.name) == kAdministratorRight;
}

SLaunchRequest MakeRequest(std::string path, char const* const* arguments) {
    SLaunchRequest request{.path = std::move(path), .arguments = {}, .environment = DisplayVariables()};
    for (; arguments && *arguments; ++arguments) {
        request.arguments.emplace_back(*arguments);
    }
    return request;
}

AuthorizationStatus LaunchAskingAgain(IElevationService::Reference& reference, char const* path,
                                      char const* const* arguments) {
    std::error_code error;
    std::filesystem::path const absolutePath = std::filesystem::absolute(path, error);
    if (error || absolutePath.empty()) {
        return kToolExecuteFailure;
    }
    SLaunchRequest const request = MakeRequest(absolutePath.string(), arguments);
    std::optional<AuthorizationStatus> status = reference.holder->Launch(request);
    if (!status) {
        reference.question.program = request.path;
        AuthorizationStatus const asked = reference.holder->Ask(reference.question);
        if (asked != kAuthorized) {
            return asked;
        }
        status = reference.holder->Launch(request);
    }
    return status.value_or(kInternalFailure);
}

} // namespace

AuthorizationStatus ElevationService::Create(AuthorizationItems, AuthorizationItems, AuthorizationFlags,
                                             Reference** reference) {
    *reference = nullptr;
    if (HasRightsOfItsFile()) {
        return kInternalFailure;
    }
    return WithinMemory([&] {
        if (std::unique_ptr<IRightHolder> holder = ChooseRightHolder(m_paths)) {
            *reference = new Reference{std::move(holder), {}};
        }
        return *reference ? kAuthorized : kInternalFailure;
    });
}

AuthorizationStatus ElevationService::AcquireRights(Reference* reference, AuthorizationItems rights,
                                                    AuthorizationItems environment,
                                                    AuthorizationFlags flags) {
    if (!reference) {
        return kInternalFailure;
    }
    if (!std::all_of(rights.begin(), rights.end(), IsAdministratorRight)) {
        return kDenied;
    }
    if ((flags & kInteractionAllowed) == 0 && ::geteuid() != 0) {
        return kInteractionNotAllowed;
    }
    return WithinMemory([&] {
        reference->question.iconPath = IconPath(environment);
        return reference->holder->Ask(reference->question);
    });
}

AuthorizationStatus ElevationService::Execute(Reference* reference, char const* path, AuthorizationFlags,
                                              char const* const* arguments) {
    if (!reference || !path) {
        return kInternalFailure;
    }
    return WithinMemory([&] { return LaunchAskingAgain(*reference, path, arguments); });
}

AuthorizationStatus ElevationService::Free(Reference* reference, AuthorizationFlags) {
    delete reference;
    return kAuthorized;
}

} // namespace Launcher
