#pragma once

#include <gtest/gtest.h>

#include <QStackedWidget>

#include "Quorvi/dictation/WindowPage.h"
#include "tests/support/ui/OffscreenEnvironment.h"
#include "tests/support/ui/Seen.h"
#include "tests/support/ui/WindowWorld.h"

namespace quorvi::test {

using namespace std::chrono_literals;

// The window without a screen, on fakes of everything behind it.
class WindowTest : public testing::Test {
protected:
    Seen window() { return Seen(world.show()); }
    Seen page() { return Seen(*world.show().findChild<QStackedWidget*>()->currentWidget()); }
    Seen open(WindowPage which) {
        world.model.setSelectedPage(which);
        settle();
        return page();
    }
    // Searches, sums and rows are turns of the clock and the loop.
    void settle() {
        world.show();
        world.settle();
    }
    static void expectInOrder(const Seen& seen, std::initializer_list<const char*> parts) {
        const auto text = seen.text();
        std::size_t at = 0;
        for (const auto* part : parts) {
            const auto found = text.find(part, at);
            ASSERT_NE(found, text.npos) << part << " is missing, or not in this order, in:\n"
                                        << text;
            at = found;
        }
    }

    WindowWorld world;
};

}  // namespace quorvi::test
