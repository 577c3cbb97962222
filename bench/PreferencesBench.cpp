// The main thread's time for a change of a preference, compared with writing the file
// synchronously; and the start with a full file.

#include <time.h>

#include <filesystem>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "bench/Figure.h"
#include "tests/support/TestFolder.h"

namespace quorvi::bench {
namespace {

constexpr int settings = 20;
constexpr std::size_t rulesSize = 400'000;  // about 2,000 rules

// Processor time of the calling thread, independent of the machine's load.
double processorMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct Opened {
    explicit Opened(const std::filesystem::path& file) : preferences(files, file, disk, loop) {}
    PosixFileStore files;
    LoopScheduler loop;
    SerialExecutor disk{"disk"};
    PropertyListPreferences preferences;
};

void measure() {
    const test::TestFolder folder;
    const auto file = folder.path() / "Quorvi" / "preferences.plist";
    {
        Opened opened(file);
        for (int i = 0; i < settings; ++i)
            opened.preferences.setInteger("setting " + std::to_string(i), i);
        opened.preferences.setBytes("rules", Bytes(rulesSize, 'x'));
        opened.preferences.flush();
    }

    std::vector<double> opening;
    for (int i = 0; i < 21; ++i) {
        const double start = millisecondsNow();
        const Opened opened(file);
        opening.push_back(millisecondsNow() - start);
    }

    Opened opened(file);
    const std::string content = test::contentOf(file);
    const std::string_view parts[]{content};
    std::vector<double> setting, processor, durable, writing;
    for (int i = 0; i < 200; ++i) {
        double start = millisecondsNow();
        const double used = processorMilliseconds();
        opened.preferences.setString("vocabulary", "word " + std::to_string(i));
        processor.push_back(processorMilliseconds() - used);
        setting.push_back(millisecondsNow() - start);
        opened.preferences.flush();
        durable.push_back(millisecondsNow() - start);

        start = millisecondsNow();
        opened.files.replace(folder.path() / "literal" / "preferences.plist", parts);
        writing.push_back(millisecondsNow() - start);
    }
    figure("preference_write", median(setting), "ms", median(writing));
    figure("preference_write_processor_p99", percentile(processor, 0.99), "ms");
    figure("preference_durable", median(durable), "ms", median(writing));
    figure("preferences_open", median(opening), "ms");
}

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::measure();
}
