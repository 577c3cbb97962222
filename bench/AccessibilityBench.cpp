// Time of a dictation's accessibility queries in mousepad. Run it in a desktop session. The
// reference sends the same messages, one blocking call after another.
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/atspi/AtspiBus.h"
#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "bench/Figure.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"

namespace quorvi {
namespace {

using namespace atspi;
using namespace quorvi::test;
using namespace std::chrono_literals;

constexpr int rounds = 300;

struct NoObserver : BusObserver {
    void focusChanged(const ObjectRef&, bool) override {}
    void windowActiveChanged(const ObjectRef&, bool) override {}
    void peerLeft(const std::string&) override {}
    void busLost() override {}
};

// The reference: plain calls to the same application.
struct PlainCalls {
    NoObserver observer;
    AtspiBus bus{observer};
    AtspiPeers peers{bus};

    std::optional<ObjectRef> fieldOf(pid_t pid) {
        const auto names = peers.namesOf(pid, soon());
        if (names.empty()) return std::nullopt;
        std::vector<ObjectRef> level{{names[0], rootPath}};
        while (!level.empty()) {
            std::vector<ObjectRef> children;
            for (const auto& object : level) {
                const auto states = readStates(ask(object, "GetState"));
                const auto role = readUnsigned(ask(object, "GetRole"));
                if (states && states->has(State::focused) &&
                    role == static_cast<unsigned>(Role::text))
                    return object;
                if (const auto some = readObjects(ask(object, "GetChildren")))
                    children.insert(children.end(), some->begin(), some->end());
            }
            level = std::move(children);
        }
        return std::nullopt;
    }
    static TimePoint soon() { return std::chrono::steady_clock::now() + 5s; }
    Variant ask(const ObjectRef& object, const char* method) {
        return peers.call({object, accessibleInterface, method, arguments()}, soon());
    }
};

double medianOf(int count, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const double start = bench::millisecondsNow();
        work();
        times.push_back(bench::millisecondsNow() - start);
    }
    return bench::median(std::move(times));
}

// The focused field of an editor with `content`, for both ways.
struct Subject {
    explicit Subject(const std::string& content)
        : editor(mousepad(folder.write("note.txt", content))) {
        if (!eventually([&] { return accessibility.isTrusted() && plain.bus.isUsable(); })) return;
        field = reader.waitForFocus(editor.pid(), "AXTextArea");
        eventually([&] { return (object = plain.fieldOf(editor.pid())).has_value(); });
    }
    bool isReady() const { return field && object; }

    TestFolder folder;
    AtspiAccessibility accessibility{[] { return true; }};
    FieldReader reader{accessibility};
    PlainCalls plain;
    Process editor;
    std::optional<AXElement> field;
    std::optional<ObjectRef> object;
};

int captureQueries() {
    Subject subject("Some text\nof two lines");
    if (!subject.isReady()) return 1;
    const auto application = subject.accessibility.applicationElement(subject.editor.pid());
    const auto get = [&](const AXElement& element, const char* name) {
        return subject.accessibility.attribute(element, name, 250ms);
    };
    int failures = 0;
    const double capture = medianOf(rounds, [&] {
        const auto focused = get(application, "AXFocusedUIElement");
        if (!focused || !get(std::get<AXElement>(*focused), "AXRole") ||
            get(std::get<AXElement>(*focused), "AXSubrole") ||
            !get(application, "AXFocusedWindow") ||
            !get(std::get<AXElement>(*focused), "AXSelectedTextRange"))
            ++failures;
    });
    // Focus and window: role and state each. Role: three questions; password: one; selection:
    // seven.
    const double plain = medianOf(rounds, [&] {
        for (int i = 0; i < 15; ++i) subject.plain.ask(*subject.object, "GetState");
    });
    bench::figure("ax_capture_queries", capture, "ms", plain);
    return failures;
}

int value(std::size_t length) {
    Subject subject(std::string(length, 'x'));
    if (!subject.isReady()) return 1;
    int failures = 0;
    const double reading = medianOf(rounds / 3, [&] {
        const auto text = subject.accessibility.attribute(*subject.field, "AXValue", 1s);
        if (!text || std::get<std::string>(*text).size() != length) ++failures;
    });
    const double plain = medianOf(rounds / 3, [&] {
        subject.plain.peers.call({*subject.object, textInterface, "GetText", arguments(0, -1)},
                                 PlainCalls::soon());
    });
    bench::figure("ax_value_100000", reading, "ms", plain);
    return failures;
}

}  // namespace
}  // namespace quorvi

int main() {
    const int failures = quorvi::captureQueries() + quorvi::value(100'000);
    if (failures > 0) std::fprintf(stderr, "%d queries failed\n", failures);
    return failures > 0 ? 1 : 0;
}
