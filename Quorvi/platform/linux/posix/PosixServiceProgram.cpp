#include "Quorvi/platform/linux/posix/PosixServiceProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/random.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "QuorviCore/base/Wipe.h"

namespace quorvi {

namespace {

constexpr auto freshness = std::chrono::seconds(2);  // of the answer whether it is installed
constexpr int patience = 1000;                       // ms between the request to end and SIGKILL
constexpr std::string_view announcement = "listening on ";
constexpr std::size_t longestLine = 200;

struct Pipe {
    std::unique_ptr<Descriptor> reading, writing;
    static std::optional<Pipe> make() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
        return Pipe{std::make_unique<Descriptor>(ends[0]), std::make_unique<Descriptor>(ends[1])};
    }
};

bool isProgram(const std::string& path) {
    return access(path.c_str(), X_OK) == 0;
}

// 128 random bits in hexadecimal digits.
std::string newToken() {
    std::array<unsigned char, 16> bytes;
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) return {};
    std::string token;
    for (const auto byte : bytes)
        for (const auto half : {byte >> 4, byte & 15}) token += "0123456789abcdef"[half];
    return token;
}

bool isReadable(const pollfd& one) {
    return (one.revents & (POLLIN | POLLHUP | POLLERR)) != 0;
}

}  // namespace

// One run, shared by its owner and its thread.
struct PosixServiceProgram::Watch {
    Descriptor stopping{eventfd(0, EFD_CLOEXEC)};
    std::atomic<bool> isWanted{true};  // events may be delivered
    std::atomic<bool> isOver{false};
    Events events;
    std::thread thread;

    void stop() {
        isWanted = false;
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = write(stopping.get(), &one, sizeof one);
    }
};

class PosixServiceProgram::Running : public Run {
public:
    explicit Running(std::shared_ptr<Watch> watch) : watch_(std::move(watch)) {}
    ~Running() override { watch_->stop(); }

private:
    std::shared_ptr<Watch> watch_;
};

namespace {

// The program of one run, on that run's thread.
class Program {
public:
    // The token travels by the pipe, where no other program can read it.
    bool start(const std::string& path, const std::vector<std::string>& arguments,
               const std::string& token) {
        auto input = Pipe::make();
        auto output = Pipe::make();
        if (!input || !output || token.empty()) return false;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input->reading->get(), STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output->writing->get(), STDOUT_FILENO);
        std::vector<char*> argv{const_cast<char*>(path.c_str())};
        for (const auto& each : arguments) argv.push_back(const_cast<char*>(each.c_str()));
        argv.push_back(nullptr);
        // The program has a signal mask and handlers of its own.
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
        const int error =
            posix_spawn(&process_, path.c_str(), &actions, &attributes, argv.data(), environ);
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) return false;
        handle_ =
            std::make_unique<Descriptor>(static_cast<int>(syscall(SYS_pidfd_open, process_, 0)));
        input_ = std::move(input->writing);
        output_ = std::move(output->reading);
        std::string line = token + "\n";
        const bool sent =
            write(input_->get(), line.data(), line.size()) == static_cast<ssize_t>(line.size());
        wipe(line);
        return sent;
    }

    // Waits until the program has printed a line, which is returned, has ended, or `stopping` has
    // something to read: an empty line then.
    std::string readLine(int stopping) {
        std::string line;
        while (line.size() < longestLine) {
            pollfd both[] = {{output_->get(), POLLIN, 0}, {stopping, POLLIN, 0}};
            if (poll(both, 2, -1) < 0) continue;
            if (isReadable(both[1])) return {};
            char next = 0;
            if (read(output_->get(), &next, 1) != 1) return {};
            if (next == '\n') return line;
            line += next;
        }
        return {};
    }

    // Returns when the program has ended, or `stopping` has something to read.
    void waitForEnd(int stopping) const {
        pollfd both[] = {{handle_->get(), POLLIN, 0}, {stopping, POLLIN, 0}};
        while (poll(both, 2, -1) < 0) {
        }
    }

    // Has the program end, if it has not, and waits for that.
    void end() {
        if (process_ <= 0) return;
        input_.reset();
        kill(process_, SIGTERM);
        pollfd one{handle_ ? handle_->get() : -1, POLLIN, 0};
        if (!handle_ || poll(&one, 1, patience) <= 0) kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = 0;
    }

private:
    pid_t process_ = 0;
    std::unique_ptr<Descriptor> handle_;  // readable once the process has ended
    std::unique_ptr<Descriptor> input_;
    std::unique_ptr<Descriptor> output_;
};

}  // namespace

PosixServiceProgram::PosixServiceProgram(Scheduler& scheduler, Executor& executor, std::string path,
                                         std::vector<std::string> arguments)
    : scheduler_(scheduler),
      executor_(executor),
      path_(std::move(path)),
      arguments_(std::move(arguments)),
      isInstalled_(isProgram(path_)),
      lookedAt_(scheduler.now()) {}

PosixServiceProgram::~PosixServiceProgram() {
    for (const auto& watch : watches_) watch->stop();
    for (const auto& watch : watches_) watch->thread.join();
}

bool PosixServiceProgram::isInstalled() {
    if (!isLooking_ && scheduler_.now() - lookedAt_ > freshness) {
        isLooking_ = true;
        executor_.run([path = path_, &scheduler = scheduler_,
                       report = lifetime_.guard([this](bool found) { looked(found); })] {
            scheduler.post([report, found = isProgram(path)] { report(found); });
        });
    }
    return isInstalled_;
}

void PosixServiceProgram::looked(bool found) {
    isLooking_ = false;
    lookedAt_ = scheduler_.now();
    if (std::exchange(isInstalled_, found) != found) changes_.notify();
}

std::unique_ptr<ServiceProgram::Run> PosixServiceProgram::start(Events events) {
    std::erase_if(watches_, [](const auto& watch) {
        if (!watch->isOver) return false;
        watch->thread.join();
        return true;
    });
    auto watch = std::make_shared<Watch>();
    watch->events = std::move(events);
    watch->thread =
        std::thread([&scheduler = scheduler_, path = path_, arguments = arguments_, watch] {
            Endpoint endpoint{{}, newToken()};
            Program program;
            if (program.start(path, arguments, endpoint.token)) {
                const auto line = program.readLine(watch->stopping.get());
                if (line.starts_with(announcement)) {
                    endpoint.address = line.substr(announcement.size());
                    scheduler.post([watch, endpoint] {
                        if (watch->isWanted) watch->events.onServing(endpoint);
                    });
                    program.waitForEnd(watch->stopping.get());
                }
            }
            program.end();
            scheduler.post([watch] {
                if (watch->isWanted) watch->events.onEnd();
            });
            watch->isOver = true;
        });
    watches_.push_back(watch);
    return std::make_unique<Running>(std::move(watch));
}

}  // namespace quorvi
