#include "launcher/linux/dialog/PolkitAgent.h"

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/Messages.h"
#include "launcher/linux/dialog/PasswordDialog.h"

#define POLKIT_AGENT_I_KNOW_API_IS_SUBJECT_TO_CHANGE
#include <gtk/gtk.h>
#include <memory>
#include <polkit/polkit.h>
#include <polkitagent/polkitagent.h>
#include <string_view>
#include <unistd.h>

namespace Launcher {

namespace {

constexpr int kMaxAttempts = 3;

// What polkit asks about when pkexec starts the broker: of pkexec itself, or of an installed broker's policy.
constexpr char kDefaultAction[] = "org.freedesktop.policykit.exec";
constexpr char kInstalledAction[] = "com.quillmark.Launcher.start";

/// One question of polkit's, from its arrival to its answer.
class Authentication {
  public:
    /// `task` is adopted; it gets the answer.
    Authentication(std::string const& iconPath, SPasswordReason const& reason, char const* cookie,
                   GList* identities, GTask* task);
    ~Authentication();
    Authentication(Authentication const&) = delete;
    Authentication& operator=(Authentication const&) = delete;

    void Begin();
    bool IsFinished() const { return m_task == nullptr; }

  private:
    void StartSession();
    void EndSession();
    void OnRequest(char const* prompt, bool isEchoed);
    void OnCompleted(bool isGained);
    void Finish(bool isCancelled);

    std::string m_cookie;
    std::vector<PolkitIdentity*> m_identities; // each holds a reference
    std::vector<std::string> m_names;
    std::size_t m_user = 0;
    GTask* m_task;
    PolkitAgentSession* m_session = nullptr;
    gulong m_cancelHandler = 0;
    int m_attempts = 0;
    bool m_isTold = false; // the session has said something about this attempt
    PasswordDialog m_dialog;
};

Authentication::Authentication(std::string const& iconPath, SPasswordReason const& reason, char const* cookie,
                               GList* identities, GTask* task)
    : m_cookie(cookie), m_task(task),
      m_dialog(iconPath, reason,
               {.answered =
                    [this](SecretText const& password) {
                        if (m_session) {
                            polkit_agent_session_response(m_session, password.CString());
                        }
                    },
                .cancelled = [this] { Finish(true); },
                .userChosen =
                    [this](std::size_t user) {
                        m_user = user;
                        m_dialog.SetNote("");
                        StartSession();
                    }}) {
    for (GList const* item = identities; item; item = item->next) {
        if (!POLKIT_IS_UNIX_USER(item->data)) {
            continue;
        }
        char const* const name = polkit_unix_user_get_name(POLKIT_UNIX_USER(item->data));
        if (polkit_unix_user_get_uid(POLKIT_UNIX_USER(item->data)) == static_cast<gint>(::getuid())) {
            m_user = m_identities.size(); // people know their own password best
        }
        m_identities.push_back(POLKIT_IDENTITY(g_object_ref(item->data)));
        m_names.emplace_back(name ? name : "?");
    }
}

Authentication::~Authentication() {
    EndSession();
    for (PolkitIdentity* const identity : m_identities) {
        g_object_unref(identity);
    }
}

void Authentication::Begin() {
    if (m_identities.empty()) {
        Finish(false);
        return;
    }
    if (GCancellable* const cancellable = g_task_get_cancellable(m_task)) {
        m_cancelHandler =
            g_signal_connect(cancellable, "cancelled", G_CALLBACK(+[](GCancellable*, gpointer self) {
                                 static_cast<Authentication*>(self)->Finish(true);
                             }),
                             this);
    }
    m_dialog.SetUsers(m_names, m_user);
    StartSession();
}

void Authentication::StartSession() {
    EndSession();
    m_session = polkit_agent_session_new(m_identities[m_user], m_cookie.c_str());
    g_signal_connect(m_session, "request",
                     G_CALLBACK(+[](PolkitAgentSession*, char* prompt, gboolean isEchoed, gpointer self) {
                         static_cast<Authentication*>(self)->OnRequest(prompt, isEchoed);
                     }),
                     this);
    m_isTold = false;
    auto const showNote = +[](PolkitAgentSession*, char* text, gpointer self) {
        static_cast<Authentication*>(self)->m_isTold = true;
        static_cast<Authentication*>(self)->m_dialog.SetNote(text);
    };
    g_signal_connect(m_session, "show-error", G_CALLBACK(showNote), this);
    g_signal_connect(m_session, "show-info", G_CALLBACK(showNote), this);
    g_signal_connect(m_session, "completed",
                     G_CALLBACK(+[](PolkitAgentSession*, gboolean isGained, gpointer self) {
                         static_cast<Authentication*>(self)->OnCompleted(isGained);
                     }),
                     this);
    polkit_agent_session_initiate(m_session);
}

void Authentication::EndSession() {
    if (m_session) {
        g_signal_handlers_disconnect_by_data(m_session, this);
        polkit_agent_session_cancel(m_session);
        g_clear_object(&m_session);
    }
}

void Authentication::OnRequest(char const* prompt, bool isEchoed) {
    std::string_view text(prompt);
    if (text.starts_with("Password") && !isEchoed) {
        m_dialog.AskForPasswordOf(m_names[m_user]);
    } else {
        m_dialog.AskFor(std::string(text), isEchoed);
    }
}

void Authentication::OnCompleted(bool isGained) {
    if (isGained || ++m_attempts == kMaxAttempts) {
        Finish(false);
        return;
    }
    if (!m_isTold) { // the system knows the reason better
        m_dialog.SetNote(Translated("That password was not accepted. Please try again."));
    }
    StartSession();
}

// polkit keeps its own account of who has proved to be whom: it needs to hear only that this is over, and
// whether the user wanted it so.
void Authentication::Finish(bool isCancelled) {
    if (!m_task) {
        return;
    }
    GTask* const task = std::exchange(m_task, nullptr);
    if (m_cancelHandler != 0) {
        g_signal_handler_disconnect(g_task_get_cancellable(task), m_cancelHandler);
    }
    m_dialog.Hide();
    EndSession();
    if (isCancelled) {
        g_task_return_new_error(task, POLKIT_ERROR, POLKIT_ERROR_CANCELLED, "Dismissed by the user");
    } else {
        g_task_return_boolean(task, TRUE);
    }
    g_object_unref(task);
}

} // namespace

struct SAgentState {
    std::string iconPath;
    std::string program;
    std::unique_ptr<Authentication> authentication; // the last question, finished or not
};

} // namespace Launcher

// The listener that polkit calls; a class of GLib's object system, hence the C names.
struct QuillmarkListener {
    PolkitAgentListener parent;
    Launcher::SAgentState* state; // borrowed
};
struct QuillmarkListenerClass {
    PolkitAgentListenerClass parent;
};
G_DEFINE_TYPE(QuillmarkListener, quillmark_listener, POLKIT_AGENT_TYPE_LISTENER)

static void quillmark_listener_init(QuillmarkListener*) {
}

static void quillmark_listener_initiate(PolkitAgentListener* listener, char const* action,
                                        char const* message, char const*, PolkitDetails*, char const* cookie,
                                        GList* identities, GCancellable* cancellable,
                                        GAsyncReadyCallback callback, gpointer userData) {
    using namespace Launcher;
    GTask* const task = g_task_new(listener, cancellable, callback, userData);
    SAgentState& state = *reinterpret_cast<QuillmarkListener*>(listener)->state;
    if (state.authentication && !state.authentication->IsFinished()) {
        g_task_return_new_error(task, POLKIT_ERROR, POLKIT_ERROR_FAILED, "Another question is still open");
        g_object_unref(task);
        return;
    }
    std::string_view const asked(action);
    bool const isOurs = asked == kDefaultAction || asked == kInstalledAction;
    state.authentication = std::make_unique<Authentication>(
        state.iconPath, isOurs ? ReasonToStart(state.program) : SPasswordReason{message, action}, cookie,
        identities, task);
    state.authentication->Begin();
}

static gboolean quillmark_listener_finish(PolkitAgentListener*, GAsyncResult* result, GError** error) {
    return g_task_propagate_boolean(G_TASK(result), error);
}

static void quillmark_listener_class_init(QuillmarkListenerClass* listenerClass) {
    listenerClass->parent.initiate_authentication = quillmark_listener_initiate;
    listenerClass->parent.initiate_authentication_finish = quillmark_listener_finish;
}

namespace Launcher {

int RunPolkitAgent(std::string const& iconPath, std::string const& program) {
    SAgentState state{iconPath, program, nullptr};
    auto* const listener =
        static_cast<QuillmarkListener*>(g_object_new(quillmark_listener_get_type(), nullptr));
    listener->state = &state;
    PolkitSubject* const launcher =
        polkit_unix_process_new_for_owner(::getppid(), 0, static_cast<gint>(::getuid()));
    gpointer const registration = polkit_agent_listener_register(
        &listener->parent, POLKIT_AGENT_REGISTER_FLAGS_NONE, launcher, nullptr, nullptr, nullptr);
    g_object_unref(launcher);
    if (!registration || !SendWord(STDIN_FILENO, EWord::eReady)) {
        return kExitNotStarted;
    }
    gtk_main();
    return kExitUnused;
}

} // namespace Launcher
