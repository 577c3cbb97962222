// The program with a key in the keyring, and a search for the key wherever a running program may
// have left it.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <algorithm>

#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "tests/support/Paths.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/Keyring.h"
#include "tests/support/network/TlsServer.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

const KeychainQuery query{"app.quorvi.Quorvi.openai", "api-key", false};
const std::string key = "sk-proj-Kz7hQ0v3mW9xT2bN5cR8yL1dF4gJ6pS";

// The key as it is, and in the forms in which programs write what they hold.
std::vector<std::string> formsOfKey() {
    std::string hex, wide;
    for (const char c : key) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(c));
        hex += digits.data();
        wide += {c, '\0'};
    }
    auto base64 = shell("printf '" + key + "' | base64 -w0");
    base64.resize(key.size() / 3 * 4);  // what doesn't depend on what follows
    return {key, hex, wide, base64};
}

bool holdsKey(const std::string& bytes) {
    static const auto forms = formsOfKey();
    return std::ranges::any_of(forms,
                               [&](const auto& form) { return bytes.find(form) != bytes.npos; });
}

// Everything that was written in this session: the programs' homes, temporary files and logs, crash
// dumps, and the keyring's own file, which is encrypted.
std::vector<std::string> filesWithKey() {
    std::vector<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(
             std::getenv("QUORVI_SESSION_DIR"), fs::directory_options::skip_permission_denied))
        if (entry.is_regular_file() && holdsKey(contentOf(entry.path())))
            found.push_back(entry.path());
    return found;
}

// Command lines and environments of the process and all below it.
std::vector<std::string> processesWithKey(const std::string& pid) {
    std::vector<std::string> found;
    for (const auto* file : {"/cmdline", "/environ"})
        if (holdsKey(contentOf("/proc/" + pid + file))) found.push_back(pid + file);
    std::istringstream children(shell("pgrep -P " + pid));
    for (std::string child; children >> child;)
        std::ranges::move(processesWithKey(child), std::back_inserter(found));
    return found;
}

// The places in a process's memory.
std::vector<std::string> memoryWithKey(pid_t pid) {
    const auto folder = "/proc/" + std::to_string(pid);
    std::vector<std::string> found;
    std::ifstream maps(folder + "/maps"), memory(folder + "/mem", std::ios::binary);
    EXPECT_TRUE(memory.is_open());
    for (std::string line; std::getline(maps, line);) {
        unsigned long begin = 0, end = 0;
        char readable = '-';
        if (std::sscanf(line.c_str(), "%lx-%lx %c", &begin, &end, &readable) != 3 ||
            readable != 'r')
            continue;
        if (end - begin > (1UL << 30)) continue;  // a sanitizer's notes on the memory
        std::string bytes(end - begin, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(begin));
        memory.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (holdsKey(bytes)) found.push_back(line);
    }
    return found;
}

const std::vector<std::string> nowhere;

struct KeyTraces : testing::Test {
    // So that a crash dumps its memory where it is looked for.
    KeyTraces() { fs::current_path(fs::temp_directory_path()); }
};

TEST_F(KeyTraces, AreInNoFileProcessOrMemoryAfterAllThatCanBeDoneWithAKey) {
    const Keyring keyring;
    const TestFolder folder;
    const auto control = folder.write("control", "-" + key + "-");
    EXPECT_EQ(filesWithKey(), std::vector{control}) << "the search itself";
    fs::remove(control);

    const auto input = (folder.path() / "input").string();
    ASSERT_EQ(mkfifo(input.c_str(), 0600), 0);
    const TestAuthority authority;
    authority.issue("server", "IP:127.0.0.1");
    const TlsServer server(authority, "server");
    const auto service = server.url(""), services = service + " " + service + "/cut " + service;
    Process drill({"sh", "-c",
                   "exec " + builtProgram("key_drill") + " " + authority.caFile() + " " + services +
                       " https://127.0.0.1:1 " + service + " < " + input});
    std::ofstream pipe(input);
    pipe << key << std::flush;
    ASSERT_EQ(drill.readLine(), "done 3");
    LoopScheduler loop;
    SecretServiceKeychain keychain(loop);
    EXPECT_EQ(keychain.read(query, {}).secret.view(), key);
    EXPECT_EQ(processesWithKey(std::to_string(drill.pid())), nowhere);
    EXPECT_EQ(memoryWithKey(drill.pid()), nowhere);
    pipe << "\n" << std::flush;
    EXPECT_EQ(drill.wait(), -SIGABRT);
    EXPECT_EQ(filesWithKey(), nowhere);
}

TEST_F(KeyTraces, AreInNoFileOrProcessWhenTheKeyCameInTheEnvironment) {
    Process quorvi({builtProgram("quorvi"), "--print-stages"}, {"QUORVI_API_KEY=" + key});
    while (!quorvi.readLine().ends_with("| ready")) continue;
    EXPECT_EQ(processesWithKey(std::to_string(quorvi.pid())), nowhere);
    quorvi.signal(SIGABRT);
    EXPECT_EQ(quorvi.wait(), -SIGABRT);
    EXPECT_EQ(filesWithKey(), nowhere);
}

}  // namespace
}  // namespace quorvi::test
