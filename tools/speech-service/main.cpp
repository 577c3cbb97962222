#include <signal.h>

#include <cstdio>
#include <exception>

#include "tools/speech-service/HttpService.h"
#include "tools/speech-service/Options.h"
#include "tools/speech-service/RecognitionQueue.h"
#include "tools/speech-service/Recognizer.h"

namespace {

using namespace quorvi::speech;

int serve(const Options& options) {
    // Blocked before any thread starts, so that the signals reach sigwait() only.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    signal(SIGPIPE, SIG_IGN);

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
        return serve(*options);
    } catch (const UsageError& error) {
        std::fprintf(stderr, "quorvi-speech-service: %s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi-speech-service: %s\n", error.what());
        return 1;
    }
}
