#include "Quorvi/insertion/FieldInspector.h"

#include <gtest/gtest.h>

#include <functional>

#include "QuorviCore/Error.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/PrintedMessage.h"
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

    // The sentence of the refusal, empty if there is none.
    static Message errorOf(const std::function<void()>& attempt) {
        try {
            attempt();
        } catch (const QuorviError& error) {
            return error.sentence();
        }
        return {};
    }
    Message captureError() {
        return errorOf([&] { inspector.capture(0); });
    }
    Message validationError(const InsertionTarget& target, std::uint64_t generation) {
        return errorOf([&] { inspector.validate(target, generation); });
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
    AXElement window = accessibility.make(editor, "AXWindow");
    AXElement field = accessibility.makeText(editor, "Hello ");
};

TEST_F(FieldInspectorTest, CapturesTheFocusedFieldWithItsWindowAndCaret) {
    const auto target = inspector.capture(7);
    EXPECT_EQ(target.pid, editor);
    EXPECT_EQ(target.appName, "Editor");
    EXPECT_EQ(target.window, window);
    EXPECT_EQ(target.element, field);
    EXPECT_EQ(target.selection, (Utf16Range{6, 0}));
    EXPECT_EQ(validationError(target, 7), Message());
    workspace.setFrontmost(RunningApplication{editor, ""});
    EXPECT_EQ(inspector.capture(0).appName, "your app");
}

TEST_F(FieldInspectorTest, WhatIsNoTextFieldIsNoDestinationButItsApplicationIs) {
    accessibility.focus(accessibility.make(editor, "AXButton"));
    const auto target = inspector.capture(0);
    EXPECT_EQ(target.element, std::nullopt);
    accessibility.focus(field);
    EXPECT_EQ(validationError(target, 0), Message()) << "any field of the window";

    accessibility.hang(accessibility.applicationElement(editor));
    accessibility.hang(accessibility.systemWideElement());
    const auto hung = inspector.capture(0);
    EXPECT_EQ(hung.element, std::nullopt);
    EXPECT_EQ(hung.window, std::nullopt);
}

TEST_F(FieldInspectorTest, AQueryThatStallsCostsNoOther) {
    for (const int stalls : {1, 2}) {
        accessibility.onQuery = [&, left = stalls]() mutable {
            const bool isTheCaret = accessibility.queries.back() == "AXSelectedTextRange";
            accessibility.setDelay(field, isTheCaret && left-- > 0 ? 270ms : 0ms);
        };
        const auto target = inspector.capture(0);
        EXPECT_TRUE(target.element == field);
        EXPECT_TRUE(target.window == window);
        EXPECT_EQ(target.selection.has_value(), stalls == 1) << "asked twice";
    }
}

TEST_F(FieldInspectorTest, RefusesToCaptureWithTheReason) {
    makeSecure(field);
    EXPECT_EQ(captureError(), say::selectRegularField());
    workspace.setFrontmost(std::nullopt);
    EXPECT_EQ(captureError(), say::clickFieldFirst());
    workspace.setFrontmost(RunningApplication{FakeWorkspace::quorviPid, "Quorvi"});
    EXPECT_EQ(captureError(), say::clickFieldInWritingApp());
    accessibility.trusted = false;
    EXPECT_EQ(captureError(), say::insertionNeedsAccessibility());
}

TEST_F(FieldInspectorTest, FindsTheTextElementInsideAFocusedGroup) {
    const auto group = accessibility.make(editor, "AXGroup");
    const auto inner = accessibility.make(editor, "AXGroup");
    accessibility.append(group, inner);
    accessibility.append(inner, field);
    accessibility.append(inner, accessibility.make(editor, "AXStaticText"));
    focusThrough(group);
    EXPECT_EQ(inspector.capture(0).element, field);
    accessibility.set(field, "AXFocused", false);
    EXPECT_EQ(inspector.capture(0).element, std::nullopt) << "the group has no selection";
    accessibility.set(field, "AXFocused", true);
    makeSecure(field);
    EXPECT_EQ(captureError(), say::selectRegularField()) << "found by the search";
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
}

TEST_F(FieldInspectorTest, ValidationNamesWhatChanged) {
    const auto target = inspector.capture(3);
    EXPECT_EQ(validationError(target, 4), say::destinationChanged());
    const auto second = accessibility.makeText(editor, "");
    const std::pair<Message, std::function<void()>> changes[] = {
        {say::cursorMoved(),
         [&] { accessibility.set(field, "AXSelectedTextRange", Utf16Range{5, 0}); }},
        {say::fieldChanged(), [&] { accessibility.focus(second); }},
        {say::notARegularField(), [&] { makeSecure(second); }},
        {say::windowChanged(),  // which the display alone can tell of a terminal
         [&] { workspace.setFrontmost(RunningApplication{editor, "Editor", 2}); }},
        {say::windowChanged(),
         [&] {
             workspace.setFrontmost(RunningApplication{editor, "Editor"});
             accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
         }},
        {say::destinationChanged(),
         [&] { workspace.setFrontmost(RunningApplication{200, "Other"}); }},
        {say::accessibilityChanged(), [&] { accessibility.trusted = false; }}};
    for (const auto& [message, change] : changes) {
        change();
        EXPECT_EQ(validationError(target, 3), message);
    }
}

TEST_F(FieldInspectorTest, ReadsTheFieldWithinItsLimit) {
    const auto target = inspector.capture(0);
    EXPECT_EQ(inspector.correctionField(target, true), "Hello ");
    accessibility.set(field, "AXValue", std::string(100'001, 'x'));
    EXPECT_FALSE(inspector.correctionField(target, true));
    accessibility.set(field, "AXValue", std::string(100'000, 'x'));
    accessibility.focus(accessibility.makeText(editor, ""));
    EXPECT_FALSE(inspector.correctionField(target, true));
    EXPECT_TRUE(inspector.correctionField(target, false));
    makeSecure(field);
    EXPECT_FALSE(inspector.correctionField(target, false));
}

}  // namespace
}  // namespace quorvi::test
