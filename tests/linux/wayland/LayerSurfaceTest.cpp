#include "Quorvi/platform/linux/wayland/layershell/LayerSurface.h"

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/Mouse.h"

namespace quorvi::test {
namespace {

class LayerSurfaceTest : public testing::Test, protected EditorUser {
protected:
    using Event = LayerSurface::PointerEvent;

    bool until(const std::function<bool()>& condition) { return test::until(scheduler, condition); }
    // The colour in the middle of what is at the bottom of the screen.
    static std::string colour() {
        return shell("grim -t ppm -g '640,725 1x1' - | tail -c 3 | od -An -tx1 | tr -d ' \\n'");
    }
    static LayerSurface::Picture picture(std::uint32_t colour) {
        return {100, 50, 1, std::vector<std::uint32_t>(5000, colour), {{0, 0, 40, 50}}};
    }

    LoopScheduler scheduler;
    std::vector<Event> clicks;
    LayerSurface surface{scheduler,
                         50,
                         {.onPointer =
                              [this](Event event, double x, double) {
                                  EXPECT_LT(x, 42);
                                  if (event == Event::pressed || event == Event::released)
                                      clicks.push_back(event);
                              },
                          .onScale = [](int) { ADD_FAILURE(); },
                          .onClosed = [] { ADD_FAILURE(); }}};
};

TEST_F(LayerSurfaceTest, IsSeenAboveTheEditorWhichKeepsTheKeyboardAndTheOtherClicks) {
    Mouse mouse;
    ASSERT_TRUE(openMousepad());
    for (const auto& [value, seen] : {std::pair(0xFFFF0000U, "ff0000"), {0xFF00FF00U, "00ff00"}}) {
        surface.show(picture(value));
        EXPECT_TRUE(until([&, seen = seen] { return colour() == seen; })) << colour();
    }
    user.type("typed ");
    EXPECT_TRUE(until([&] { return fieldText() == "typed "; })) << fieldText();
    mouse.click(660, 725);  // beside the clickable part
    mouse.click(600, 725);
    EXPECT_TRUE(until([&] { return clicks.size() >= 2; }));
    EXPECT_EQ(clicks, (std::vector{Event::pressed, Event::released}));
    user.type("on");
    EXPECT_TRUE(until([&] { return fieldText() == "typed on"; })) << fieldText();
    surface.hide();
    EXPECT_TRUE(until([&] { return colour() != "00ff00"; }));
}

}  // namespace
}  // namespace quorvi::test
