#include "launcher/VApplication.h"

#include "foundation/log/VLog.h"
#include "launcher/IAlertPanel.h"

#include <cstdarg>
#include <cstdio>

namespace VFoundation {

Launcher::IAlertPanel* VApplication::ms_alertPanel = nullptr;

void VApplication::SetAlertPanel(Launcher::IAlertPanel* panel) {
    ms_alertPanel = panel;
}

void VApplication::AlertBox(char const* format, ...) {
    char text[kAlertTextSize] = "";
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);

    VLog::Trace("ALERT: %s", text);
    if (ms_alertPanel) {
        ms_alertPanel->RunModal({Launcher::EAlertStyle::eWarning, "ALERT!", text, "OK"});
    }
}

} // namespace VFoundation
