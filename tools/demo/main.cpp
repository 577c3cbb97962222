// Two dictations, end to end, in a private headless desktop. Starts the offline speech service, a
// text editor and Quorvi, holds the shortcut, speaks a sentence into the virtual microphone,
// releases the shortcut, and reads the text back from the editor. Then corrects a name in the
// editor, waits until Quorvi has learned it, and dictates the sentence again.
//
//   quorvi-demo BIN-FOLDER OUTPUT-FOLDER [again]
//
// With "again", in a home folder of an earlier run: one dictation, with the correction applied.
// Prints each step with its time. Exit status 0 only if the text arrived, with the correction the
// second time, and the clipboard was restored.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"
#include "tests/support/desktop/UserClipboard.h"

namespace quorvi::test {
namespace {

constexpr auto sentence = "please call catherine about the weather";
constexpr auto recognised = "Please call catherine about the weather.";
constexpr auto corrected = "Please call Katherine about the weather.";
constexpr int behindTheFirstLetter = 27;  // characters from the end of the sentence
constexpr auto ownClipboard = "what the user had copied before";

class Demo {
public:
    Demo(std::filesystem::path bin, std::filesystem::path output)
        : bin_(std::move(bin)), output_(std::move(output)) {
        std::filesystem::create_directories(output_);
    }

    bool runAgain() {
        prepare();
        dictate("listening-again.png");
        return report(expectText(corrected));
    }

    bool run() {
        prepare();
        dictate("listening.png");
        bool good = expectText(recognised);
        correct();
        user_.chord({key::leftControl}, key::end);
        user_.tap(key::enter);
        dictate("listening-again.png");
        good = expectText(std::string(corrected) + "\n" + corrected) && good;
        if (good) step("the second dictation is corrected by the rule learned from the edit");
        return report(good);
    }

private:
    void prepare() {
        startService();
        openEditor();
        fillClipboard();
        startQuorvi();
    }

    void step(const std::string& text) const {
        const auto now = std::chrono::steady_clock::now() - begin_;
        std::printf("%7.3f s  %s\n", std::chrono::duration<double>(now).count(), text.c_str());
        std::fflush(stdout);
    }

    void startService() {
        const auto sentences = folder_.write("sentences", std::string(sentence) + "\n");
        service_ = Process({bin_ / "quorvi-speech-service", "--port", "0", "--punctuate",
                            "--sentences", sentences});
        const auto line = service_.readLine();
        setenv("QUORVI_SERVICE", line.substr(line.rfind(' ') + 1).c_str(), 1);
        setenv("QUORVI_API_KEY", "offline", 1);
        step("offline speech service: " + line);
    }

    void openEditor() {
        editor_ = Process(mousepad(folder_.write("note.txt", "")));
        field_ = reader_.waitForFocus(editor_.pid(), "AXTextArea");
        if (!field_) throw std::runtime_error("the editor showed no text field");
        step("text editor: mousepad, an empty document, caret in it");
    }

    void fillClipboard() {
        copyFile(folder_.write("clipboard", ownClipboard));
        step(std::string("clipboard: \"") + ownClipboard + "\"");
    }

    void startQuorvi() {
        // With the session's home folder, which may be kept between runs.
        quorvi_ = Process({bin_ / "quorvi", "--print-stages"},
                          {std::string("HOME=") + std::getenv("HOME")});
        unsetenv("QUORVI_API_KEY");
        until("| ready");
        step("Quorvi is ready");
    }

    void correct() {
        user_.tap(key::left, behindTheFirstLetter);
        user_.tap(key::backspace);
        user_.chord({key::leftShift}, key::k);
        step("corrected by hand: catherine is now Katherine");
        until("Correction saved");
        picture("learned.png");
    }

    bool expectText(const std::string& wanted) {
        const auto text = reader_.value(*field_).value_or("(unreadable)");
        step("the editor holds: \"" + text + "\"");
        return text == wanted;
    }

    void dictate(const std::string& pictureName) {
        const auto speech = (folder_.path() / "speech.wav").string();
        outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "-w", speech, sentence});
        user_.press(key::rightAlt);
        step("right Alt held down");
        until("Listening");
        step(std::string("speaking: \"") + sentence + "\"");
        Process voice({"paplay", "-d", std::getenv("QUORVI_MIC_FEED"), speech});
        std::this_thread::sleep_for(std::chrono::milliseconds(900));
        picture(pictureName);
        if (voice.wait() != 0) throw std::runtime_error("paplay failed");
        user_.release(key::rightAlt);
        step("right Alt released");
        until("Done");
    }

    // Prints Quorvi's lines up to one that contains the text.
    void until(const std::string& text) {
        for (;;) {
            const auto line = quorvi_.readLine();
            step("    quorvi: " + line.substr(0, line.rfind(" | ")));
            if (line.find(text) != line.npos) return;
            if (line.find("Needs attention") == 0 || line.find("Ready to paste") == 0)
                throw std::runtime_error("the dictation did not succeed");
        }
    }

    void picture(const std::string& name) const {
        if (isOnSway())
            outputOf({"grim", output_ / name});
        else
            outputOf({"import", "-window", "root", output_ / name});
    }

    bool report(bool good) {
        picture("dictation.png");
        const auto before = pastedText();
        step("the clipboard holds: \"" + before + "\"");
        kill(quorvi_.pid(), SIGTERM);
        quorvi_.wait();
        const auto after = pastedText();
        step("after quitting Quorvi, it still holds: \"" + after + "\"");
        step("picture: " + (output_ / "dictation.png").string());
        good = good && before == ownClipboard && after == ownClipboard;
        step(good ? "the text arrived and the clipboard is back as it was" : "FAILED");
        return good;
    }

    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
    std::filesystem::path bin_;
    std::filesystem::path output_;
    TestFolder folder_;
    AtspiAccessibility accessibility_{[] { return true; }};
    FieldReader reader_{accessibility_};
    TestUser user_;
    Process service_;
    Process editor_;
    std::optional<AXElement> field_;
    Process quorvi_;
};

}  // namespace
}  // namespace quorvi::test

int main(int argc, char** argv) {
    const bool again = argc == 4 && std::string_view(argv[3]) == "again";
    if (argc != 3 && !again) {
        std::fprintf(stderr, "usage: quorvi-demo BIN-FOLDER OUTPUT-FOLDER [again]\n");
        return 2;
    }
    try {
        quorvi::test::Demo demo(argv[1], argv[2]);
        return (again ? demo.runAgain() : demo.run()) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi-demo: %s\n", error.what());
        return 1;
    }
}
