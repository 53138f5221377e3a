#pragma once

namespace Launcher {
class IAlertPanel;
}

namespace VFoundation {

/// The launcher's application-wide helpers.
///
/// Ownership: the alert panel is borrowed.
/// Threads: main thread.
class VApplication {
  public:
    /// Longest alert text, in bytes with its terminator; longer texts are cut.
    static constexpr unsigned long kAlertTextSize = 2048;

    VApplication() = delete;

    /// The panel that `AlertBox` shows its alerts with. Null, as at start: alerts are only traced.
    static void SetAlertPanel(Launcher::IAlertPanel* panel);

    /// Traces the formatted message as "ALERT: ..." and shows it in a modal alert with one button.
    static void AlertBox(char const* format, ...) __attribute__((format(printf, 1, 2)));

  private:
    static Launcher::IAlertPanel* ms_alertPanel;
};

} // namespace VFoundation
