#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "tools/speech-service/HttpService.h"
#include "tools/speech-service/Options.h"
#include "tools/speech-service/RecognitionQueue.h"
#include "tools/speech-service/Recognizer.h"

namespace {

using namespace quorvi::speech;

// Returns the first line of standard input. From then on, its end ends this program.
std::string keyOfSupervisor() {
    std::string key;
    char next = 0;
    while (read(STDIN_FILENO, &next, 1) == 1 && next != '\n') key += next;
    if (key.empty()) throw std::runtime_error("Standard input has no key.");
    std::thread([] {
        char ignored;
        while (read(STDIN_FILENO, &ignored, 1) == 1) {
        }
        kill(getpid(), SIGTERM);
    }).detach();
    return key;
}

int serve(Options options) {
    // Blocked before any thread starts, so that the signals reach sigwait() only.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    signal(SIGPIPE, SIG_IGN);

    if (options.isSupervised) options.key = keyOfSupervisor();
    Recognizer recognizer(options);
    RecognitionQueue queue(recognizer, options.delay);
    const HttpService service(options, queue);
    std::printf("listening on %s\n", service.url().c_str());
    std::fflush(stdout);

    int received = 0;
    sigwait(&ends, &received);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const auto options = parseOptions(argc, argv);
        if (!options) {
            std::fputs(usage().c_str(), stdout);
            return 0;
        }
        return serve(*std::move(options));
    } catch (const UsageError& error) {
        std::fprintf(stderr, "quorvi-speech-service: %s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi-speech-service: %s\n", error.what());
        return 1;
    }
}
