#pragma once

#include "launcher/linux/HelperProcess.h"
#include "launcher/linux/RightHolder.h"

namespace Launcher {

/// Holds the right as a broker process that runs as root. The two ways of getting there differ only in who
/// starts it and in what the exit status of that program means.
class BrokerRightHolder : public IRightHolder {
  public:
    std::optional<AuthorizationStatus> Launch(SLaunchRequest const& request) final;

  protected:
    explicit BrokerRightHolder(SHelperPaths paths) : m_paths(std::move(paths)) {}

    SHelperPaths const& Paths() const { return m_paths; }

    /// Starts the program that becomes, or starts, the broker, and waits until that is ready. `refusal` turns
    /// the exit status of a program that never got so far into a status. `listener` as in `HelperProcess::Start`.
    AuthorizationStatus StartBroker(SProgramStart start, AuthorizationStatus (*refusal)(int exitStatus),
                                    UniqueFd* listener = nullptr);

    /// Starts the broker through sudo, with `options` before its name.
    AuthorizationStatus StartThroughSudo(std::vector<std::string> options, SProgramStart start);

    /// Whether the user can be asked on this process's terminal instead of on a display, because the last dialog
    /// found none that works.
    bool CanAskOnTerminal() const;

    /// Asks there, through sudo; neither standard output nor standard error is written to.
    AuthorizationStatus AskOnTerminal();

    void SetDisplayWorks(bool works) { m_displayWorks = works; }

  private:
    SHelperPaths m_paths;
    std::unique_ptr<HelperProcess> m_broker;
    bool m_displayWorks = true;
};

/// Asks through polkit, with the dialog program as agent for this process only: an agent of our own is what
/// brings the bundle's icon into the password dialog. Where it cannot show anything, the session's own agent is
/// asked instead, if there is one, and the terminal if that does not give the right.
class PolkitRightHolder final : public BrokerRightHolder {
  public:
    explicit PolkitRightHolder(SHelperPaths paths) : BrokerRightHolder(std::move(paths)) {}
    AuthorizationStatus Ask(SRightQuestion const& question) override;
};

/// Asks through sudo, with the dialog program as its password prompt, or on the terminal where that cannot show
/// anything.
class SudoRightHolder final : public BrokerRightHolder {
  public:
    explicit SudoRightHolder(SHelperPaths paths) : BrokerRightHolder(std::move(paths)) {}
    AuthorizationStatus Ask(SRightQuestion const& question) override;
};

} // namespace Launcher
