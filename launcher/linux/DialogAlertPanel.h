#pragma once

#include "launcher/IAlertPanel.h"

namespace Launcher {

/// Shows alerts through the dialog program, so that only a run that has something to show loads a toolkit.
///
/// Threads: one thread at a time.
class DialogAlertPanel final : public IAlertPanel {
  public:
    explicit DialogAlertPanel(std::string dialogPath) : m_dialogPath(std::move(dialogPath)) {}

    bool RunModal(SAlert const& alert) override;

  private:
    std::string m_dialogPath;
};

} // namespace Launcher
