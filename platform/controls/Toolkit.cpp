#include "platform/controls/Toolkit.h"

#include "platform/controls/HostWindows.h"
#include "platform/controls/ToolkitBoxes.h"
#include "platform/controls/ToolkitThread.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "platform/runtime/OwnerQueue.h"

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/module.h>
#include <wx/thread.h>

#include <clocale>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace norvel::controls {

namespace {

constexpr int erroreAutomazione = 430;

// The application object of a host that knows nothing of the toolkit.
class HostedApp : public wxApp {
  public:
    // The command line is the host's and none of the toolkit's business.
    bool OnInit() override { return true; }

    // A failure that an event handler let escape: shown, and the window lives on.
    bool OnExceptionInMainLoop() override {
        mostraErroreModulo(erroreInCorso());
        return true;
    }

    // A debug build of the toolkit would open a dialog of its own over the host.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function,
                         const wxChar* condition, const wxChar* message) override {
        std::fprintf(stderr, "NorvelRicerca: %s:%d: %s: %s %s\n", wxString(file).utf8_str().data(),
                     line, wxString(function).utf8_str().data(),
                     wxString(condition).utf8_str().data(), wxString(message).utf8_str().data());
    }
};

// The process's locale is the host's: the toolkit's start-up sets it from the environment, and this
// puts it back.
class LocaleGuard {
  public:
    LocaleGuard() : saved_(std::setlocale(LC_ALL, nullptr)) {}
    ~LocaleGuard() { std::setlocale(LC_ALL, saved_.c_str()); }
    LocaleGuard(const LocaleGuard&) = delete;
    LocaleGuard& operator=(const LocaleGuard&) = delete;

  private:
    std::string saved_;
};

std::mutex& startMutex() {
    static std::mutex mutex;
    return mutex;
}

bool toolkitRuns() {
    return wxTheApp != nullptr && wxModule::AreInitialized();
}

Errore erroreAltroThread() {
    return {erroreAutomazione, "La finestra di ricerca è aperta in un altro thread"};
}
Errore erroreThreadDelProgramma() {
    return {erroreAutomazione, "La finestra di ricerca può essere aperta solo dal thread delle "
                               "finestre del programma"};
}

// Moves a toolkit of ours to the calling thread; another's stays where it is.
void moveHere() {
    if (dynamic_cast<HostedApp*>(wxTheApp) == nullptr) throw erroreThreadDelProgramma();
    if (aWindowIsOpen()) throw erroreAltroThread();
    if (eventsRunOnAnotherThread()) throw erroreThreadDelProgramma();
    adoptCallingThread();
}

void start() {
    if (eventsRunOnAnotherThread()) throw erroreThreadDelProgramma();
    const LocaleGuard locale;
    const wxLogNull silence; // the failure is reported by the Errore alone
    wxApp::SetInstance(new HostedApp);
    int argc = 1;
    char name[] = "NorvelRicerca";
    char* argv[] = {name, nullptr};
    if (!wxEntryStart(argc, argv))
        throw Errore(erroreAutomazione, "Impossibile aprire la finestra di ricerca: nessuno "
                                        "schermo disponibile (variabile DISPLAY)");
    wxTheApp->SetAppName("NorvelRicerca");
    wxTheApp->SetExitOnFrameDelete(false);
    wxTheApp->CallOnInit();
}

// Once: both find the toolkit by themselves, whoever runs it.
void connectRuntime() {
    static bool connected = false;
    if (std::exchange(connected, true)) return;
    installBoxes();
    setOwnerWaker([] {
        if (wxTheApp != nullptr) wxTheApp->CallAfter([] { runOwnerQueue(); });
    });
}

} // namespace

void avviaToolkit() {
    const std::scoped_lock lock(startMutex());
    if (!toolkitRuns()) {
        start();
    } else if (!wxThread::IsMain()) {
        moveHere();
    }
    connectRuntime();
}

bool threadDelToolkit() {
    return !toolkitRuns() || wxThread::IsMain();
}

} // namespace norvel::controls
