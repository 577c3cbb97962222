#include "Quorvi/platform/linux/wayland/layershell/LayerSurface.h"

#include <linux/input-event-codes.h>
#include <wayland-client.h>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "protocols/virtual-pointer.h"
#include "tests/support/desktop/EditorUser.h"

namespace quorvi::test {
namespace {

// A mouse, on a connection of its own.
class Mouse {
public:
    Mouse() {
        auto* manager = connection_.bind<zwlr_virtual_pointer_manager_v1>(
            zwlr_virtual_pointer_manager_v1_interface, 1);
        pointer_ = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager, nullptr);
        zwlr_virtual_pointer_manager_v1_destroy(manager);
        connection_.synchronise();
    }
    ~Mouse() { zwlr_virtual_pointer_v1_destroy(pointer_); }
    Mouse(const Mouse&) = delete;
    Mouse& operator=(const Mouse&) = delete;

    void click(std::uint32_t x, std::uint32_t y) {
        for (const auto nudge : {1U, 0U})
            zwlr_virtual_pointer_v1_motion_absolute(pointer_, 0, x + nudge, y, 1280, 800);
        for (const auto state : {1U, 0U}) {
            zwlr_virtual_pointer_v1_button(pointer_, 0, BTN_LEFT, state);
            zwlr_virtual_pointer_v1_frame(pointer_);
        }
        connection_.synchronise();
    }

private:
    WaylandConnection connection_;
    zwlr_virtual_pointer_v1* pointer_;
};

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
                          .onScale = [](int) { ADD_FAILURE(); }}};
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
