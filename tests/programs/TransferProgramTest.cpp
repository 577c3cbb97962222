// Taking one's data along and erasing it, as from a command line, with a running program, a real
// keyring and a real autostart folder.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Keyring.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

const std::string document =
    R"({"format":"quorvi-export","version":1,"history":[{"device":"elsewhere","redacted":false,)"
    R"("revision":9,"value":{"appName":"Mail","audioSeconds":1.5,"date":812345678.25,)"
    R"("id":"01234567-89AB-CDEF-0123-456789ABCDEF","language":"en","text":"Grüße",)"
    R"("wordCount":1}}],"corrections":[],"settings":[{"device":"elsewhere","key":"mode",)"
    R"("redacted":false,"revision":9,"value":"toggle"}]})";

struct Said {
    int status;
    std::string output;  // of both kinds
};

// A user's home, and commands in it.
class Home {
public:
    Process start(const std::string& command, std::vector<std::string> settings = {}) const {
        settings.push_back("HOME=" + folder.path().string());
        settings.push_back("XDG_RUNTIME_DIR=" + folder.path().string());
        return Process({"sh", "-c", command}, settings);
    }
    Said import() const {
        folder.write("in.json", document);
        return run("import " + file("in.json").string());
    }
    Said run(const std::string& arguments) const {
        auto program = start("exec " + builtProgram("quorvi") + " " + arguments + " 2>&1",
                             {"DISPLAY", "WAYLAND_DISPLAY"});
        auto output = program.readAll();
        return {program.wait(), std::move(output)};
    }
    fs::path file(const std::string& name) const { return folder.path() / name; }
    // What is in the user's files, by their names.
    std::vector<std::string> content() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path()))
            if (entry.is_regular_file() && entry.path().filename() != "quorvi.lock")
                all.push_back(entry.path().string() + ":" + contentOf(entry.path()));
        std::ranges::sort(all);
        return all;
    }

    TestFolder folder;
};

TEST(TransferProgram, CarriesEverythingToAnotherHomeAlsoBesideTheRunningProgram) {
    const Home one, other;
    const auto import = one.import();
    EXPECT_EQ(import.output,
              "Taken over: 1 dictation, 0 rules and 1 setting.\n"
              "The rest was here already, is newer here, or was deleted here.\n");
    EXPECT_EQ(import.status, 0);

    // While the program runs, it is only exported.
    auto program = one.start("exec " + builtProgram("quorvi") + " --print-stages");
    program.readLine();
    for (const auto& arguments :
         {"import " + one.file("in.json").string(), std::string("erase --yes")}) {
        const auto said = one.run(arguments);
        EXPECT_EQ(said.output, "quorvi: Quorvi is running. Quit it first: quorvi quit\n");
        EXPECT_EQ(said.status, 1);
    }
    const auto out = other.file("out ü.json");
    auto said = one.run("export '" + out.string() + "'");
    EXPECT_TRUE(said.output.starts_with(out.string() + ": 1 dictation, 3 rules and 12 settings.\n"))
        << said.output;
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(fs::status(out).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(contentOf(out).find("\"text\":\"Grüße\"") != std::string::npos);
    EXPECT_EQ(other.run("import '" + out.string() + "'").status, 0);
    EXPECT_EQ(contentOf(other.file(".local/share/Quorvi/history.json")),
              contentOf(one.file(".local/share/Quorvi/history.json")));

    // Nothing is changed by what is broken, missing, or in the way.
    const auto before = other.content();
    fs::create_symlink(out, one.file("link"));
    one.folder.write("broken.json", document.substr(0, document.size() - 2));
    for (const auto& [arguments, status, sentence] :
         std::vector<std::tuple<std::string, int, std::string>>{
             {"import " + one.file("broken.json").string(), 1, "This file is no export of Quorvi"},
             {"import /nowhere", 1, "There is no file /nowhere."},
             {"import", 2, "import needs one file"},
             {"export /", 1, "/ is a folder. Name a file."},
             {"export " + one.file("link").string(), 1, "is a link or a device. Name a file."},
             {"export " + one.file("new/x.json").string(), 1, "could not be written (No such"},
             {"export /proc/quorvi.json", 1, "could not be written"},
             {"erase now", 2, "erase takes nothing but --yes"},
             {"erase < /dev/null", 1, "Nothing was removed. Without a terminal, say --yes."}}) {
        said = other.run(arguments);
        EXPECT_EQ(said.status, status) << arguments;
        EXPECT_NE(said.output.find(sentence), std::string::npos) << said.output;
    }
    EXPECT_EQ(other.content(), before);
    // A fresh user's settings are completed in memory only.
    const Home fresh;
    EXPECT_EQ(fresh.run("export " + fresh.file("x.json").string()).status, 0);
    EXPECT_EQ(fresh.content().size(), 1u);
}

TEST(TransferProgram, ErasesAllOfItAndTheKeyAndSaysWhatStays) {
    const Keyring keyring;
    const Home home;
    ASSERT_EQ(home.import().status, 0);
    EXPECT_EQ(home.run("--cloud-database=folder:" + home.file("shared").string()).status, 0);
    auto storing = home.start("printf 'sk-test-0123456789abcdef' | " + builtProgram("quorvi") +
                              " --store-key");
    ASSERT_EQ(storing.wait(), 0);
    // The history is kept elsewhere.
    const auto history = home.file(".local/share/Quorvi/history.json");
    fs::rename(history, home.file("elsewhere.json"));
    fs::create_symlink(home.file("elsewhere.json"), history);

    // Typed on a terminal: first no, then yes.
    const auto typed = [&](const std::string& answer) {
        auto program = home.start("echo " + answer + " | script -qec '" + builtProgram("quorvi") +
                                  " erase' " + home.file("typescript").string());
        auto output = program.readAll();
        fs::remove(home.file("typescript"));
        return Said{program.wait(), std::move(output)};
    };
    const auto before = home.content();
    auto said = typed("no");
    EXPECT_EQ(said.status, 1);
    EXPECT_NE(said.output.find("Nothing was removed."), std::string::npos) << said.output;
    EXPECT_EQ(home.content(), before);

    said = typed("erase");
    EXPECT_EQ(said.status, 0) << said.output;
    for (const std::string sentence :
         {"Your other machines keep what they have, and so does the cloud, folder:",
          "There is no API key in your keyring.", "Everything was removed."})
        EXPECT_NE(said.output.find(sentence), std::string::npos) << said.output;
    EXPECT_FALSE(fs::exists(home.file(".local/share/Quorvi")));
    EXPECT_FALSE(fs::exists(home.file(".config/Quorvi")));
    EXPECT_FALSE(fs::exists(home.file("elsewhere.json")));
    EXPECT_TRUE(fs::exists(home.file("in.json")));
}

}  // namespace
}  // namespace quorvi::test
