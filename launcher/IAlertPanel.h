#pragma once

#include <string>

namespace Launcher {

enum class EAlertStyle { eWarning = 0 };

/// What a modal alert shows. Texts are shown as they are; markup in them is not interpreted.
struct SAlert {
    EAlertStyle style = EAlertStyle::eWarning;
    std::string messageText;     ///< the short text on top
    std::string informativeText; ///< what happened
    std::string buttonTitle;     ///< of the one button
};

/// Shows modal alerts.
///
/// Ownership: nothing is kept.
/// Threads: one thread at a time.
class IAlertPanel {
  public:
    virtual ~IAlertPanel() = default;

    /// Shows the alert and returns when the user has closed it, in whatever way. False when it could not be
    /// shown, for example without a display.
    virtual bool RunModal(SAlert const& alert) = 0;
};

} // namespace Launcher
