#include "Quorvi/insertion/FieldInspector.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr pid_t editor = 100;

class FieldInspectorTest : public testing::Test {
protected:
    FieldInspectorTest() {
        workspace.setFrontmost(RunningApplication{editor, "Editor"});
        accessibility.setWindow(editor, window);
        accessibility.focus(field);
    }

    // The sentence of the refusal, empty when there is none.
    static std::string errorOf(const std::function<void()>& attempt) {
        try {
            attempt();
        } catch (const std::exception& e) {
            return e.what();
        }
        return "";
    }
    std::string captureError() {
        return errorOf([&] { inspector.capture(0); });
    }
    void makeSecure(const AXElement& element) {
        accessibility.set(element, "AXSubrole", std::string("AXSecureTextField"));
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

TEST_F(FieldInspectorTest, CapturesTheFocusedFieldWithItsWindowAndCaret) {
    const auto target = inspector.capture(7);
    EXPECT_EQ(target.pid, editor);
    EXPECT_EQ(target.appName, "Editor");
    EXPECT_EQ(target.window, window);
    EXPECT_EQ(target.element, field);
    EXPECT_EQ(target.selection, (Utf16Range{6, 0}));
    EXPECT_EQ(errorOf([&] { inspector.validate(target, 7); }), "");
    workspace.setFrontmost(RunningApplication{editor, ""});
    EXPECT_EQ(inspector.capture(0).appName, "your app");
}

TEST_F(FieldInspectorTest, WhatIsNoTextFieldIsNoDestinationButItsApplicationIs) {
    accessibility.focus(accessibility.make(editor, "AXButton", "button"));
    const auto target = inspector.capture(0);
    EXPECT_EQ(target.element, std::nullopt);
    accessibility.focus(field);
    EXPECT_EQ(errorOf([&] { inspector.validate(target, 0); }), "") << "any field of the window";

    accessibility.hang(accessibility.applicationElement(editor));
    accessibility.hang(accessibility.systemWideElement());
    const auto hung = inspector.capture(0);
    EXPECT_EQ(hung.element, std::nullopt);
    EXPECT_EQ(hung.window, std::nullopt);
}

TEST_F(FieldInspectorTest, RefusesToCaptureWithTheReason) {
    makeSecure(field);
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
    accessibility.append(group, inner);
    accessibility.append(inner, field);
    accessibility.append(inner, accessibility.make(editor, "AXStaticText", "label"));
    focusThrough(group);
    EXPECT_EQ(inspector.capture(0).element, field);
    accessibility.set(field, "AXFocused", false);
    EXPECT_EQ(inspector.capture(0).element, std::nullopt) << "the group has no selection";
    accessibility.set(field, "AXFocused", true);
    makeSecure(field);
    EXPECT_EQ(captureError(), "Select a regular text field to dictate.") << "found by the search";
}

TEST_F(FieldInspectorTest, TheSearchKeepsItsLimits) {
    const auto found = [&](const AXElement& group) {
        focusThrough(group);
        return inspector.capture(0).element.has_value();
    };
    const auto appendGroup = [&](const AXElement& parent) {
        const auto child = accessibility.make(editor, "AXGroup");
        accessibility.append(parent, child);
        return child;
    };
    const auto groupWith = [&](int others, Duration delay = {}) {
        const auto group = accessibility.make(editor, "AXGroup");
        accessibility.append(group, field);
        for (; others > 0; --others) accessibility.setDelay(appendGroup(group), delay);
        return group;
    };
    for (int levels : {11, 12}) {
        const auto top = accessibility.make(editor, "AXGroup");
        auto parent = top;
        for (int level = 0; level < levels; ++level) parent = appendGroup(parent);
        accessibility.append(parent, field);
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
            const auto child = appendGroup(many);
            if (++examined < before) appendGroup(child);
        }
        EXPECT_EQ(found(many), before == 63) << before << " before it";
    }
}

TEST_F(FieldInspectorTest, ValidationNamesWhatChanged) {
    const auto target = inspector.capture(3);
    const auto error = [&](std::uint64_t generation = 3) {
        const auto whole = errorOf([&] { inspector.validate(target, generation); });
        constexpr std::string_view hint = " Your transcript is ready to copy in Quorvi.";
        EXPECT_TRUE(whole.ends_with(hint)) << whole;
        return whole.substr(0, whole.size() - hint.size());
    };
    EXPECT_EQ(error(4), "The destination changed while dictating.");
    accessibility.set(field, "AXSelectedTextRange", Utf16Range{5, 0});
    EXPECT_EQ(error(), "The text cursor moved.");
    const auto second = accessibility.makeText(editor, "");
    accessibility.focus(second);
    EXPECT_EQ(error(), "The focused field changed.");
    makeSecure(second);
    EXPECT_EQ(error(), "Select a regular text field.");

    accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
    EXPECT_EQ(error(), "The active window changed.");

    workspace.setFrontmost(RunningApplication{200, "Other"});
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
    makeSecure(field);
    EXPECT_FALSE(inspector.correctionField(target, false));
}

}  // namespace
}  // namespace quorvi::test
