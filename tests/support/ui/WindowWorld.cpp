#include "tests/support/ui/WindowWorld.h"

#include <QCoreApplication>

#include "tests/support/Feeds.h"

namespace quorvi::test {

WindowWorld::WindowWorld(bool keeps) : FakeDesktop(scheduler, scheduler, keeps) {
    workspace.setFrontmost(RunningApplication{editor, "Text Editor"});
    accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
    accessibility.focus(field);
    poster.onPost = [this](const auto& post) {
        accessibility.type(field, pasteboard.readBy(post.pid));
    };
}

WindowWorld::~WindowWorld() {
    window.reset();
    model.shutdown();
    scheduler.advance(std::chrono::seconds(5));
}

AppModel::Environment WindowWorld::chosenService() {
    auto parts = environment(scheduler, executor, history, corrections,
                             [this]() -> SyncControl& { return sync; });
    parts.service.clear();
    parts.offlineProgram = &recogniser;
    return parts;
}

MainWindow& WindowWorld::show() {
    if (!window) window = std::make_unique<MainWindow>(services());
    window->present();
    scheduler.advance(std::chrono::milliseconds(1));
    return *window;
}

void WindowWorld::settle() {
    for (int turn = 0; turn < 100; ++turn) {
        QCoreApplication::processEvents();
        scheduler.settle();
    }
}

WindowServices WindowWorld::services() {
    return {model,
            corrections,
            HistoryEnvironment{history, executor, scheduler, calendar, {}},
            sync,
            cloud,
            keys,
            loginItem,
            updater,
            preferences,
            scheduler,
            [this] { ++quits; },
            [this](PrivacyPane pane) { return pane != missingSettings; },
            capabilities,
            isKeyGiven,
            capabilities.hasRemoteDesktop ? &keyConsent : nullptr};
}

void WindowWorld::saveKey() {
    keys.save("sk-key").start();
    model.refreshPermissions();
}

void WindowWorld::withdrawEverything() {
    permissions.setMicrophone(MicrophoneAuthorization::denied);
    accessibility.trusted = false;
    model.refreshPermissions();
}

void WindowWorld::beginDictation() {
    model.start();
    scheduler.advance(std::chrono::milliseconds(1));
}

void WindowWorld::dictate(const std::string& text) {
    service.body = R"({"text":")" + text + R"("})";
    beginDictation();
    scheduler.advance(std::chrono::seconds(1));
    model.finish();
    scheduler.advance(std::chrono::seconds(3));
}

void WindowWorld::offerUpdate(const std::string& package, const std::string& notes) {
    downloader.package = package;
    downloader.body = feed(FeedItem{
        .url = "https://updates.example/2.deb",
        .signature = "14Br6DuwkBgUuUqWUCHKh4cnBuWFVWW22cYtdUEHTPTG6Y3KBtTZb9z8aCkuku4r"
                     "AHx3YOtzFMPJcgEe+F6eAg==",
        .length = package.size(),
        .more = "<pubDate>Wed, 25 Nov 2026 08:00:00 +0000</pubDate><description><![CDATA[" + notes +
                "]]></description>"});
}

}  // namespace quorvi::test
