#pragma once

#include <QLocale>
#include <memory>
#include <string>

#include "Quorvi/history/SystemCalendar.h"
#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/window/MainWindow.h"
#include "tests/fakes/FakeClockChanges.h"
#include "tests/fakes/FakeCloudAccess.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeKeyConsent.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeServiceProgram.h"
#include "tests/fakes/FakeSyncControl.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {

// The program's interface on fakes of all ports and a virtual clock. For tests and pictures. The
// window is created by the first show().
struct WindowWorld : VirtualTime, FakeDesktop {
    // `keeps` as in FakeDesktop.
    explicit WindowWorld(bool keeps = false);
    ~WindowWorld();

    MainWindow& show();
    // Lets searches, sums and rows finish, which are turns of the clock and of Qt's loop.
    void settle();
    WindowServices services();
    void saveKey();
    // No key, no microphone, no accessibility.
    void withdrawEverything();
    void beginDictation();
    void dictate(const std::string& text);
    // Publishes version 2.0. `package` is what can be downloaded; its signature is valid if it is
    // "a package".
    void offerUpdate(const std::string& package, const std::string& notes);

    // The user chooses the speech service.
    AppModel::Environment chosenService();

    static constexpr pid_t editor = 100;
    Calendar travels{"Europe/Athens", QLocale().name().toStdString()};  // what the system says
    FakeClockChanges clock;
    SystemCalendar calendar{clock, executor, scheduler, [this] { return travels; }};
    const TestFolder folder;
    MemoryKeyStore& keys = keyStore;
    FakeLoginItem loginService;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    HistoryStore history{{preferences, files, "history.json", executor, scheduler, pasteboard,
                          [this] { return calendar.get(); }}};
    CorrectionStore corrections{preferences, scheduler};
    FakeSyncControl sync;
    FakeCloudAccess cloud{scheduler};
    LaunchAtLoginController loginItem{loginService, executor, scheduler};
    AppUpdater updater{
        UpdateEnvironment{scheduler,
                          executor,
                          preferences,
                          downloader,
                          installer,
                          {.feed = "https://updates.example/appcast.xml",
                           .publicKey = "mnHHxJnv3uGNIz8InN8GRG0AMk4PbLAHUeZiyvPSJ6s=",
                           .currentVersion = "0.1.0",
                           .folder = folder.path() / "updates"}}};
    FakeServiceProgram recogniser{scheduler};
    AppModel model{chosenService()};
    AXElement field = accessibility.makeText(editor, "Dear ");
    int quits = 0;
    std::optional<PrivacyPane> missingSettings;  // that the desktop does not have
    DesktopCapabilities capabilities;
    FakeKeyConsent keyConsent;
    bool isKeyGiven = false;
    std::unique_ptr<MainWindow> window;
};

}  // namespace quorvi::test
