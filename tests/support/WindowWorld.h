#pragma once

#include <memory>
#include <string>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/window/MainWindow.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeAccountSync.h"
#include "tests/fakes/FakeAudioInput.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakeHttpTransport.h"
#include "tests/fakes/FakeKeyEventPoster.h"
#include "tests/fakes/FakeKeyEventTap.h"
#include "tests/fakes/FakeLocalKeyMonitor.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/FakePermissions.h"
#include "tests/fakes/FakeSoundOutput.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {

// Everything that the main window shows, on fakes of all ports and a virtual clock. The window is
// made when it is first asked for.
struct WindowWorld {
    WindowWorld() {
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
        if (!window)
            window = std::make_unique<MainWindow>(
                services());
        window->present();
        scheduler.advance(std::chrono::milliseconds(1));
        return *window;
    }    WindowServices services() {
        return {model,     corrections,
                HistoryEnvironment{history, executor, scheduler, [this] { return calendar; }, {}},
                sync,      keys,
                loginItem, updater,
                preferences, scheduler, [this] { ++quits; }};
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
    const TestFolder folder;
    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    FakeKeyEventTap keyboard;
    FakeKeyEventPoster poster{scheduler, &keyboard};
    FakeAccessibility accessibility{scheduler};
    FakeWorkspace workspace;
    FakePasteboard pasteboard{scheduler};
    FakeAudioInput microphone{scheduler};
    FakeSoundOutput speaker;
    FakePermissions permissions;
    FakeLocalKeyMonitor localKeys;
    MemoryPreferences preferences;
    MemoryKeyStore keys;
    FakeHttpTransport service{scheduler};
    FakeFileStore files;
    FakeLoginItem loginService;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    const Calendar calendar{"Europe/Athens", "en_US"};
    HistoryStore history{{preferences, files, "history.json", executor, scheduler, pasteboard,
                          [this] { return calendar; }}};
    CorrectionStore corrections{preferences, scheduler};
    FakeAccountSync sync;
    LaunchAtLoginController loginItem{loginService, executor, scheduler};
    AppUpdater updater{UpdateEnvironment{scheduler,
                                         executor,
                                         preferences,
                                         downloader,
                                         installer,
                                         {.feed = "", .publicKey = "", .currentVersion = "0.1.0",
                                          .folder = folder.path() / "updates"}}};
    AppModel model{AppModel::Environment{
        scheduler, executor, executor, keyboard, poster, accessibility, workspace, pasteboard,
        microphone, speaker, permissions, localKeys, preferences, keys, service, history,
        corrections, [this]() -> AccountSyncing& { return sync; }, "https://speech.example",
        folder.path()}};
    AXElement field = accessibility.makeText(editor, "Dear ");
    int quits = 0;
    std::unique_ptr<MainWindow> window;
};

}  // namespace quorvi::test
