// How long the worst answers of a service hold the main thread, with the window open: the longest
// turn from the answer to the paste and the painted page, and of a look at the history.
#include <time.h>

#include <QApplication>
#include <QPushButton>
#include <cstdio>

#include "Quorvi/ui/design/DesignStyle.h"
#include "bench/Figure.h"
#include "tests/support/ui/WindowWorld.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t longest = (256 << 10) - 64;  // with the answer's own syntax

std::string repeated(std::string_view piece, std::size_t size) {
    std::string text;
    while (text.size() + piece.size() <= size) text += piece;
    return text;
}

// Processor time of the calling thread, since the machine may be busy.
double threadMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class Desk {
public:
    Desk() {
        world_.saveKey();
        world_.show();
        settle();
        longest_ = 0;
    }

    void dictate(const std::string& text) {
        world_.service.body = R"({"text":")" + text + R"("})";
        world_.beginDictation();
        run(1s);
        turn([&] { world_.model.finish(); });
        run(3s);
        settle();
    }
    void look(WindowPage page) {
        turn([&] { world_.model.setSelectedPage(page); });
        settle();
    }
    // Shows a long text in full.
    void unfold() {
        for (auto* button : world_.show().findChildren<QPushButton*>())
            if (button->isVisible() && button->text() == QStringLiteral("Show full text"))
                turn([&] { button->click(); });
        settle();
    }
    double longest() const { return longest_; }

private:
    template <class Work>
    void turn(Work work, const char* what = "call") {
        const double start = threadMilliseconds();
        work();
        const double took = threadMilliseconds() - start;
        if (took > 5 && getenv("QUORVI_TURNS"))
            std::fprintf(stderr, "  %s of %.1f ms\n", what, took);
        longest_ = std::max(longest_, took);
    }
    void run(Duration time) {
        for (const auto end = world_.scheduler.now() + time; world_.scheduler.now() < end;) {
            turn([&] { world_.scheduler.advance(1ms); }, "model");
            turn([] { QCoreApplication::processEvents(); }, "events");
        }
    }
    void settle() { run(100ms); }

    test::WindowWorld world_;
    double longest_ = 0;
};

double longestTurn(const std::string& text) {
    Desk desk;
    desk.dictate(text);
    desk.look(WindowPage::history);
    desk.unfold();
    desk.look(WindowPage::dictation);
    return desk.longest();
}

}  // namespace
}  // namespace quorvi::bench

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    quorvi::installDesign(application);
    using namespace quorvi::bench;
    const auto measured = [&](const char* name, const std::string& text) {
        if (argc < 2 || std::string_view(argv[1]) == name) figure(name, longestTurn(text), "ms");
    };
    longestTurn("hello there");  // fonts and icons
    measured("transcript_short_main", "hello there");
    measured("transcript_1mb_main", repeated("weather nice ", 1 << 20));
    measured("transcript_words_main", repeated("weather nice ", longest));
    measured("transcript_word_main", repeated("w", longest));
    measured("transcript_marks_main", "a" + repeated("\u0301", longest - 1));
    measured("transcript_marks_mixed_main", "a" + repeated("\u0301\u0316", longest - 1));
    measured("transcript_bidi_main", repeated("a\u202Eb\u202Dא", longest));
    return 0;
}
