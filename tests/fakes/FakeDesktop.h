#pragma once

#include <functional>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeAudioInput.h"
#include "tests/fakes/FakeDesktopShortcut.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakeHttpTransport.h"
#include "tests/fakes/FakeKeyEventPoster.h"
#include "tests/fakes/FakeLocalKeyMonitor.h"
#include "tests/fakes/FakeNetwork.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/FakePermissions.h"
#include "tests/fakes/FakeSoundOutput.h"
#include "tests/fakes/FakeTextCommitter.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/PrintedMessage.h"

namespace quorvi::test {

// A virtual clock, and an executor on it.
struct VirtualTime {
    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
};

// A key in memory, in a storage that may be locked.
class LockableKeyStore : public MemoryKeyStore {
public:
    bool isLocked() override { return locked; }
    Task<void> unlock(std::stop_token) override {
        if (!userUnlocks) throw QuorviError::message(say::keyringStayedLocked());
        locked = false;
        co_return;
    }

    bool locked = false;
    bool userUnlocks = true;
};

// Everything that a controller needs, in memory: a fake of each of the desktop's ports.
struct FakeDesktop {
    // `virtualTime` is for fakes that move the clock themselves; usually both are the same.
    // `keeps`: the desktop keeps the shortcut itself.
    FakeDesktop(Scheduler& time, VirtualScheduler& virtualTime, bool keeps = false)
        : keepsShortcut(keeps),
          poster(time, &keyboard),
          committer(time),
          accessibility(virtualTime),
          pasteboard(time),
          microphone(time, recordings),
          service(time) {}

    AppModel::Environment environment(Scheduler& time, Executor& executor, HistoryStore& history,
                                      CorrectionStore& corrections,
                                      std::function<SyncControl&()> sync,
                                      Preferences* others = nullptr, Executor* queries = nullptr) {
        return {time,
                queries ? *queries : executor,
                executor,
                keyboard,
                poster,
                accessibility,
                workspace,
                pasteboard,
                microphone,
                recordings,
                speaker,
                permissions,
                localKeys,
                others ? *others : preferences,
                keyStore,
                service,
                history,
                corrections,
                std::move(sync),
                "https://speech.example",
                {},
                nullptr,
                &network,
                &committer,
                keepsShortcut ? &desktopShortcut : nullptr};
    }

    // Opens an editor in front, whose field has the focus and receives what is pasted.
    AXElement openEditor(pid_t pid, std::string text) {
        auto field = accessibility.makeText(pid, std::move(text));
        workspace.setFrontmost(RunningApplication{pid, "Editor"});
        accessibility.setWindow(pid, accessibility.make(pid, "AXWindow"));
        accessibility.focus(field);
        poster.onPost = [this, field](const auto& post) {
            accessibility.type(field, pasteboard.readBy(post.pid));
        };
        return field;
    }

    const bool keepsShortcut;
    FakeDesktopShortcut desktopShortcut;
    FakeKeyEventTap keyboard;
    FakeKeyEventPoster poster;
    FakeTextCommitter committer;
    FakeAccessibility accessibility;
    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    FakeRecordingFiles recordings;
    FakeAudioInput microphone;
    FakeSoundOutput speaker;
    FakePermissions permissions;
    FakeLocalKeyMonitor localKeys;
    MemoryPreferences preferences;
    LockableKeyStore keyStore;
    FakeHttpTransport service;
    FakeNetwork network;
    FakeFileStore files;
    const Calendar calendar{"Europe/Athens", "en_US"};
};

}  // namespace quorvi::test
