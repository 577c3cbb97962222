#include "tests/support/ui/WindowWorld.h"

namespace quorvi::test {

WindowWorld::WindowWorld() : FakeDesktop(scheduler, scheduler) {
    workspace.setFrontmost(RunningApplication{editor, "Text Editor"});
    accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
    accessibility.focus(field);
    poster.onPost = [this](const auto&) { accessibility.type(field, pasteboard.text()); };
}

WindowWorld::~WindowWorld() {
    window.reset();
    model.shutdown();
    scheduler.advance(std::chrono::seconds(5));
}

MainWindow& WindowWorld::show() {
    if (!window) window = std::make_unique<MainWindow>(services());
    window->present();
    scheduler.advance(std::chrono::milliseconds(1));
    return *window;
}

WindowServices WindowWorld::services() {
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

}  // namespace quorvi::test
