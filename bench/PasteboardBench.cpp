// The clipboard's part of an insertion, with an owner on another thread and connection.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/x11/clipboard/X11Pasteboard.h"
#include "bench/Figure.h"
#include "tests/support/clipboard/ForeignOwner.h"
#include "tests/support/clipboard/ForeignRequestor.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using Items = std::vector<PasteboardItem>;

Task<void> signalWhenDone(Task<void> task, bool& done) {
    co_await task;
    done = true;
}

void run(LoopScheduler& scheduler, Task<void> task) {
    bool done = false;
    auto running = signalWhenDone(std::move(task), done);
    running.start();
    if (!scheduler.runUntil([&] { return done; }, 60s)) throw std::runtime_error("no end");
}

Task<void> snapshot(Pasteboard& pasteboard, std::size_t& bytes) {
    auto reading = pasteboard.read({});
    const auto items = co_await reading;
    bytes = 0;
    for (const auto& item : items)
        for (const auto& one : item.representations) bytes += one.data->size();
}

// The clipboard operations of an insertion, without the wait for the paste. The read at the end
// shows when the restore is done.
Task<void> roundTrip(Pasteboard& pasteboard) {
    auto reading = pasteboard.read({});
    auto backup = co_await reading;
    auto writing =
        pasteboard.writeText("The weather is nice today.", TranscriptVisibility::hiddenFromHistory);
    const auto count = co_await writing;
    if (!count) throw std::runtime_error("the clipboard could not be taken");
    pasteboard.restore(*count, std::move(backup));
    auto settled = pasteboard.read({});
    co_await settled;
}

PasteboardRepresentation data(const char* type, std::size_t size) {
    return {type, type, 8, std::make_shared<const Bytes>(size, std::uint8_t{'x'})};
}

// The reference: a minimal client that reads the same data.
double referenceTransfer(test::ForeignRequestor& requestor, const char* type) {
    const auto began = bench::millisecondsNow();
    requestor.request(type);
    requestor.take();
    if (requestor.type == requestor.atom("INCR")) requestor.takePieces();
    return bench::millisecondsNow() - began;
}

void small(LoopScheduler& scheduler, X11Pasteboard& pasteboard) {
    const Items items{
        {{data("UTF8_STRING", 300), data("text/plain", 300), data("text/plain;charset=utf-8", 300),
          data("text/html", 2000), data("STRING", 300), data("TEXT", 300)}}};
    test::ForeignRequestor requestor;
    std::vector<double> times, references;
    for (int i = 0; i < 200; ++i) {
        test::ForeignOwner owner(items);
        double reference = referenceTransfer(requestor, "TARGETS");
        for (const auto& one : items[0].representations)
            reference += referenceTransfer(requestor, one.type.c_str());
        references.push_back(reference);
        const auto began = bench::millisecondsNow();
        run(scheduler, roundTrip(pasteboard));
        times.push_back(bench::millisecondsNow() - began);
    }
    bench::figure("clipboard_roundtrip", bench::median(times), "ms", bench::median(references));
    bench::figure("clipboard_roundtrip_p95", bench::percentile(times, 0.95), "ms");
}

void large(LoopScheduler& scheduler, X11Pasteboard& pasteboard) {
    test::ForeignOwner owner({{{data("image/png", 20'000'000)}}}, {.pieceSize = 256 * 1024});
    test::ForeignRequestor requestor;
    std::vector<double> times, references;
    for (int i = 0; i < 15; ++i) {
        references.push_back(referenceTransfer(requestor, "image/png"));
        std::size_t bytes = 0;
        const auto began = bench::millisecondsNow();
        run(scheduler, snapshot(pasteboard, bytes));
        times.push_back(bench::millisecondsNow() - began);
        if (bytes != 20'000'000) throw std::runtime_error("not everything was read");
    }
    bench::figure("clipboard_snapshot_20mb", bench::median(times), "ms", bench::median(references));
}

}  // namespace
}  // namespace quorvi

int main() {
    quorvi::LoopScheduler scheduler;
    quorvi::X11Pasteboard pasteboard(scheduler);
    quorvi::small(scheduler, pasteboard);
    quorvi::large(scheduler, pasteboard);
}
