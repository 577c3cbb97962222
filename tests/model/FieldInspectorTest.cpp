#include "Quorvi/insertion/FieldInspector.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr pid_t editor = 100;
constexpr pid_t other = 200;

class FieldInspectorTest : public testing::Test {
protected:
    FieldInspectorTest() {
        workspace.setFrontmost(RunningApplication{editor, "Editor"});
        accessibility.setWindow(editor, window);
        accessibility.focus(field);
    }

    std::string captureError() {
        return errorOf([&] { inspector.capture(0); });
    }
    std::string validateError(const InsertionTarget& target, std::uint64_t generation = 0) {
        return errorOf([&] { inspector.validate(target, generation); });
    }
    static std::string errorOf(const std::function<void()>& attempt) {
        try {
            attempt();
        } catch (const std::exception& e) {
            return e.what();
        }
        return "";
    }
    // The application names a group as focused; inside it, the field has the focus.
    void focusThrough(const AXElement& group) {
        accessibility.focus(group);
        accessibility.set(field, "AXFocused", true);
    }

    VirtualScheduler scheduler;
    FakeAccessibility accessibility{scheduler};
    FakeWorkspace workspace;
    FieldInspector inspector{scheduler, accessibility, workspace};
    AXElement window = accessibility.make(editor, "AXWindow", "window");
    AXElement field = accessibility.makeText(editor, "Hello ", "AXTextArea", "field");
};

constexpr auto copyHint = " Your transcript is ready to copy in Quorvi.";

TEST_F(FieldInspectorTest, CapturesTheFocusedFieldWithItsWindowAndCaret) {
    const auto target = inspector.capture(7);
    EXPECT_EQ(target.pid, editor);
    EXPECT_EQ(target.appName, "Editor");
    EXPECT_EQ(target.window, window);
    EXPECT_EQ(target.element, field);
    EXPECT_EQ(target.selection, (Utf16Range{6, 0}));
    EXPECT_EQ(target.inputGeneration, 7u);
    EXPECT_EQ(validateError(target, 7), "");

    workspace.setFrontmost(RunningApplication{editor, ""});
    EXPECT_EQ(inspector.capture(0).appName, "your app");
}

TEST_F(FieldInspectorTest, RefusesToCaptureWithTheReason) {
    accessibility.set(field, "AXSubrole", std::string("AXSecureTextField"));
    EXPECT_EQ(captureError(), "Select a regular text field to dictate.");

    workspace.setFrontmost(std::nullopt);
    EXPECT_EQ(captureError(),
              "Click the text field you want to dictate into, then use your shortcut.");

    workspace.setFrontmost(RunningApplication{FakeWorkspace::quorviPid, "Quorvi"});
    EXPECT_EQ(captureError(),
              "Click a text field in your writing app first. Quorvi can stay in the menu bar.");

    accessibility.trusted = false;
    EXPECT_EQ(captureError(), "Enable Accessibility in Quorvi Settings to insert text.");
}

TEST_F(FieldInspectorTest, FindsTheTextElementInsideAFocusedGroup) {
    const auto group = accessibility.make(editor, "AXGroup", "group");
    const auto inner = accessibility.make(editor, "AXGroup", "inner");
    const auto label = accessibility.make(editor, "AXStaticText", "label");
    accessibility.append(group, inner);
    accessibility.append(inner, field);
    accessibility.append(inner, label);
    focusThrough(group);
    EXPECT_EQ(inspector.capture(0).element, field);

    accessibility.set(field, "AXSubrole", std::string("AXSecureTextField"));
    EXPECT_EQ(captureError(), "Select a regular text field to dictate.") << "found by the search";
    accessibility.unset(field, "AXSubrole");

    accessibility.set(field, "AXFocused", false);
    EXPECT_EQ(inspector.capture(0).element, std::nullopt) << "the group has no selection";
}

TEST_F(FieldInspectorTest, TheSearchKeepsItsLimits) {
    const auto found = [&](const AXElement& group) {
        focusThrough(group);
        return inspector.capture(0).element.has_value();
    };
    const auto groupWith = [&](int others, Duration delay = {}) {
        const auto group = accessibility.make(editor, "AXGroup");
        accessibility.append(group, field);
        for (int i = 0; i < others; ++i) {
            const auto child = accessibility.make(editor, "AXGroup");
            accessibility.setDelay(child, delay);
            accessibility.append(group, child);
        }
        return group;
    };
    for (int levels : {11, 12}) {
        auto top = field;
        for (int level = 0; level <= levels; ++level) {
            const auto parent = accessibility.make(editor, "AXGroup");
            accessibility.append(parent, top);
            top = parent;
        }
        EXPECT_EQ(found(top), levels == 11) << levels << " levels down";
    }
    EXPECT_TRUE(found(groupWith(47)));
    EXPECT_FALSE(found(groupWith(48))) << "only the last children are looked at";
    EXPECT_TRUE(found(groupWith(1, 45ms)));
    EXPECT_FALSE(found(groupWith(4, 45ms))) << "the time is up";
    // The start, the later children and theirs are examined before the first child's field.
    for (int before : {63, 64}) {
        const auto many = groupWith(0);
        for (int examined = 1; examined < before; ++examined) {
            const auto child = accessibility.make(editor, "AXGroup");
            accessibility.append(many, child);
            if (++examined < before)
                accessibility.append(child, accessibility.make(editor, "AXGroup"));
        }
        EXPECT_EQ(found(many), before == 63) << before << " before it";
    }
}

TEST_F(FieldInspectorTest, AButtonIsNoDestinationButItsApplicationIs) {
    const auto button = accessibility.make(editor, "AXButton", "button");
    accessibility.focus(button);
    const auto target = inspector.capture(0);
    EXPECT_EQ(target.element, std::nullopt);
    EXPECT_EQ(target.selection, std::nullopt);
    accessibility.focus(field);
    EXPECT_EQ(validateError(target), "") << "any field of the same window will do";
}

TEST_F(FieldInspectorTest, ValidationNamesWhatChanged) {
    const auto target = inspector.capture(3);
    const auto error = [&](std::uint64_t generation = 3) {
        const auto whole = validateError(target, generation);
        EXPECT_TRUE(whole.ends_with(copyHint)) << whole;
        return whole.substr(0, whole.size() - std::string_view(copyHint).size());
    };
    EXPECT_EQ(error(4), "The destination changed while dictating.");

    accessibility.set(field, "AXSelectedTextRange", Utf16Range{5, 0});
    EXPECT_EQ(error(), "The text cursor moved.");

    const auto second = accessibility.makeText(editor, "");
    accessibility.focus(second);
    EXPECT_EQ(error(), "The focused field changed.");
    accessibility.set(second, "AXSubrole", std::string("AXSecureTextField"));
    EXPECT_EQ(error(), "Select a regular text field.");

    accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
    EXPECT_EQ(error(), "The active window changed.");

    workspace.setFrontmost(RunningApplication{other, "Other"});
    EXPECT_EQ(error(), "The destination changed while dictating.");

    accessibility.trusted = false;
    EXPECT_EQ(error(), "Accessibility access changed.");
}

TEST_F(FieldInspectorTest, ReadsTheFieldWithinItsLimit) {
    const auto target = inspector.capture(0);
    EXPECT_EQ(inspector.correctionField(target, true), "Hello ");
    accessibility.set(field, "AXValue", std::string(100'000, 'x'));
    EXPECT_TRUE(inspector.correctionField(target, true));
    accessibility.set(field, "AXValue", std::string(100'001, 'x'));
    EXPECT_FALSE(inspector.correctionField(target, true));
    std::string greek;
    for (int i = 0; i < 60'000; ++i) greek += "α";
    accessibility.set(field, "AXValue", greek);
    EXPECT_TRUE(inspector.correctionField(target, true)) << "units are counted, not bytes";

    accessibility.focus(accessibility.makeText(editor, ""));
    EXPECT_FALSE(inspector.correctionField(target, true));
    EXPECT_TRUE(inspector.correctionField(target, false));
    accessibility.set(field, "AXSubrole", std::string("AXSecureTextField"));
    EXPECT_FALSE(inspector.correctionField(target, false));
}

TEST_F(FieldInspectorTest, AHungApplicationYieldsNothingAndDoesNotThrow) {
    accessibility.hang(accessibility.applicationElement(editor));
    accessibility.hang(accessibility.systemWideElement());
    const auto target = inspector.capture(0);
    EXPECT_EQ(target.element, std::nullopt);
    EXPECT_EQ(target.window, std::nullopt);
}

}  // namespace
}  // namespace quorvi::test
