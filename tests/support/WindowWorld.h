#pragma once

#include <QLocale>
#include <memory>
#include <string>

#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/window/MainWindow.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeSyncControl.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {

// Everything that the main window shows, on fakes of all ports and a virtual clock. The window is
// made when it is first asked for.
struct WindowWorld : VirtualTime, FakeDesktop {
    WindowWorld() : FakeDesktop(scheduler, scheduler) {
        workspace.setFrontmost(RunningApplication{editor, "Text Editor"});
        accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
        accessibility.focus(field);
        poster.onPost = [this](const auto&) { accessibility.type(field, pasteboard.text()); };
    }
    ~WindowWorld() {
        window.reset();
        model.shutdown();
        scheduler.advance(std::chrono::seconds(5));
    }

    MainWindow& show() {
        if (!window) window = std::make_unique<MainWindow>(services());
        window->present();
        scheduler.advance(std::chrono::milliseconds(1));
        return *window;
    }
    WindowServices services() {
        return {model,
                corrections,
                HistoryEnvironment{history, executor, scheduler, [this] { return calendar; }, {}},
                sync,
                keys,
                loginItem,
                updater,
                preferences,
                scheduler,
                [this] { ++quits; }};
    }
    void saveKey() {
        keys.save("sk-key").start();
        model.refreshPermissions();
    }
    // Nothing is set up: no key, no microphone, no accessibility.
    void withdrawEverything() {
        permissions.setMicrophone(MicrophoneAuthorization::denied);
        accessibility.trusted = false;
        model.refreshPermissions();
    }
    void beginDictation() {
        model.start();
        scheduler.advance(std::chrono::milliseconds(1));
    }
    void dictate(const std::string& text) {
        service.body = R"({"text":")" + text + R"("})";
        beginDictation();
        scheduler.advance(std::chrono::seconds(1));
        model.finish();
        scheduler.advance(std::chrono::seconds(3));
    }

    static constexpr pid_t editor = 100;
    const Calendar calendar{"Europe/Athens", QLocale().name().toStdString()};
    const TestFolder folder;
    MemoryKeyStore& keys = keyStore;
    FakeLoginItem loginService;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    HistoryStore history{{preferences, files, "history.json", executor, scheduler, pasteboard,
                          [this] { return calendar; }}};
    CorrectionStore corrections{preferences, scheduler};
    FakeSyncControl sync;
    LaunchAtLoginController loginItem{loginService, executor, scheduler};
    AppUpdater updater{UpdateEnvironment{scheduler,
                                         executor,
                                         preferences,
                                         downloader,
                                         installer,
                                         {.feed = "",
                                          .publicKey = "",
                                          .currentVersion = "0.1.0",
                                          .folder = folder.path() / "updates"}}};
    AppModel model{environment(scheduler, executor, history, corrections,
                               [this]() -> SyncControl& { return sync; })};
    AXElement field = accessibility.makeText(editor, "Dear ");
    int quits = 0;
    std::unique_ptr<MainWindow> window;
};

}  // namespace quorvi::test
