#include "Quorvi/platform/linux/atspi/AtspiRichText.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiChromium.h"
#include "Quorvi/platform/linux/atspi/AtspiRoles.h"
#include "QuorviCore/text/Text.h"

namespace quorvi::atspi {
namespace {

constexpr std::size_t nodeLimit = 600;
constexpr std::string_view replacement = objectReplacement;

struct Node {
    ObjectRef object;
    Role role = Role::invalid;
    std::optional<std::string> text;
    std::int32_t caret = -1;
    std::optional<Span> selected;
    bool selectionIsLost = false;
    bool countsUtf16 = false;
    std::vector<std::unique_ptr<Node>> embedded;
};

std::size_t occurrences(std::string_view text) {
    std::size_t count = 0;
    for (auto at = text.find(replacement); at != std::string_view::npos;
         at = text.find(replacement, at + replacement.size()))
        ++count;
    return count;
}

std::size_t sequenceLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

// Fetches the objects level by level, each level with a few rounds of calls made together.
class Loader {
public:
    Loader(AtspiPeers& peers, TimePoint deadline) : peers_(peers), deadline_(deadline) {}

    bool load(Node& root) {
        browser_ = peers_.isBrowser(root.object.bus, deadline_);
        chromium_ = peers_.isChromium(root.object.bus, deadline_);
        std::vector<Node*> level{&root};
        while (!level.empty()) {
            count_ += level.size();
            if (count_ > nodeLimit || !loadTexts(level)) return false;
            auto next = loadEmbedded(level);
            if (!next) return false;
            level = std::move(*next);
        }
        return true;
    }

private:
    bool isLate() const { return std::chrono::steady_clock::now() >= deadline_; }

    bool loadTexts(const std::vector<Node*>& level) {
        constexpr std::size_t each = 6;
        std::vector<Call> calls;
        for (const Node* node : level) {
            const auto& object = node->object;
            calls.push_back({object, textInterface, "GetText", arguments(0, -1)});
            calls.push_back(propertyCall(object, textInterface, "CharacterCount"));
            calls.push_back(propertyCall(object, textInterface, "CaretOffset"));
            calls.push_back({object, textInterface, "GetNSelections", arguments()});
            calls.push_back({object, textInterface, "GetSelection", arguments(0)});
            calls.push_back(propertyCall(object, accessibleInterface, "ChildCount"));
        }
        const auto replies = peers_.callAll(std::move(calls), deadline_);
        if (isLate()) return false;
        for (std::size_t i = 0; i < level.size(); ++i) {
            Node& node = *level[i];
            const auto* reply = &replies[i * each];
            node.text = readText(reply[0]);
            if (!node.text) continue;
            if (readInteger(reply[5]).value_or(0) > static_cast<int>(nodeLimit)) return false;
            const auto units = text::utf16Length(*node.text);
            node.countsUtf16 = readInteger(reply[1]).value_or(-1) == units;
            node.caret = readInteger(reply[2]).value_or(-1);
            if (readInteger(reply[3]).value_or(0) > 0) node.selected = readSpan(reply[4]);
            if (browser_) restoreTypedSpaces(*node.text);
            if (!chromium_) continue;
            if (node.selected) {
                node.selected = selectionFromChromium(*node.selected, node.caret, *node.text);
                node.selectionIsLost = !node.selected;
            }
            dropPlaceholderBreak(*node.text);
        }
        return true;
    }

    // The children of a text are its runs, which it contains already, and its embedded objects in
    // the order of their stand-ins.
    std::optional<std::vector<Node*>> loadEmbedded(const std::vector<Node*>& level) {
        std::vector<Node*> parents;
        std::vector<Call> calls;
        for (Node* node : level)
            if (node->text && occurrences(*node->text) > 0) {
                parents.push_back(node);
                calls.push_back({node->object, accessibleInterface, "GetChildren", arguments()});
            }
        const auto replies = peers_.callAll(std::move(calls), deadline_);
        std::vector<Node*> next;
        for (std::size_t i = 0; i < parents.size(); ++i) {
            const auto children = readObjects(replies[i]);
            if (!children || children->size() > nodeLimit || !embed(*parents[i], *children))
                return std::nullopt;
            for (const auto& child : parents[i]->embedded) next.push_back(child.get());
        }
        return next;
    }

    bool embed(Node& parent, const std::vector<ObjectRef>& children) {
        std::vector<Call> calls;
        for (const auto& child : children)
            calls.push_back({child, accessibleInterface, "GetRole", arguments()});
        const auto roles = peers_.callAll(std::move(calls), deadline_);
        for (std::size_t i = 0; i < children.size(); ++i) {
            const auto role = readUnsigned(roles[i]);
            if (!role) return false;
            if (static_cast<Role>(*role) == Role::staticText) continue;
            auto node = std::make_unique<Node>();
            node->object = children[i];
            node->role = static_cast<Role>(*role);
            parent.embedded.push_back(std::move(node));
        }
        return parent.embedded.size() == occurrences(*parent.text);
    }

    AtspiPeers& peers_;
    TimePoint deadline_;
    bool chromium_ = false;
    bool browser_ = false;
    std::size_t count_ = 0;
};

// Writes the nodes out in order and notes where the caret and the selection's ends fall.
class Flattener {
public:
    RichText take() {
        RichText rich{std::move(text_), std::nullopt};
        if (lost_) return rich;
        if (start_)
            rich.selection = Utf16Range{*start_, end_ - *start_};
        else if (caret_)
            rich.selection = Utf16Range{*caret_, 0};
        return rich;
    }

    // `caret` and `selection` say whether the parent's reach into this node.
    void add(const Node& node, bool caret, bool selection) {
        const std::string_view text = *node.text;
        const Span selected = selection ? node.selected.value_or(Span{}) : Span{};
        const std::int32_t caretAt = caret ? node.caret : -1;
        lost_ = lost_ || (selection && node.selectionIsLost);
        std::int32_t offset = 0;
        std::size_t embedded = 0;
        bool needsBreak = false;
        for (std::size_t at = 0; at < text.size();) {
            const auto character =
                text.substr(at, std::min(sequenceLength(text[at]), text.size() - at));
            const Node* child = character == replacement && embedded < node.embedded.size()
                                    ? node.embedded[embedded++].get()
                                    : nullptr;
            const bool block = child && isBlock(child->role);
            if (needsBreak || (block && at > 0)) append("\n");
            needsBreak = block;

            const bool inside = offset >= selected.start && offset < selected.end;
            const bool hasText = child && child->text;
            if (caretAt == offset && !(hasText && child->caret >= 0)) caret_ = units_;
            if (inside && !hasText && !start_) start_ = units_;
            if (hasText)
                add(*child, caretAt == offset, inside);
            else
                append(character);
            if (inside && !hasText) end_ = units_;

            offset += node.countsUtf16 && character.size() == 4 ? 2 : 1;
            at += character.size();
        }
        if (caretAt >= offset) caret_ = units_;
    }

private:
    void append(std::string_view piece) {
        text_ += piece;
        units_ += piece.size() == 4 ? 2 : 1;
    }

    std::string text_;
    std::int64_t units_ = 0;
    std::optional<std::int64_t> caret_;
    std::optional<std::int64_t> start_;
    std::int64_t end_ = 0;
    bool lost_ = false;  // there is a selection, but not to be told where
};

}  // namespace

void restoreTypedSpaces(std::string& text) {
    static constexpr std::string_view noBreakSpace = "\xC2\xA0";
    static constexpr std::string_view neighbours[] = {" ", "\n", noBreakSpace, replacement};
    for (auto at = text.find(noBreakSpace); at != std::string::npos;
         at = text.find(noBreakSpace, at + 1)) {
        const auto before = std::string_view(text).substr(0, at);
        const auto after = std::string_view(text).substr(at + noBreakSpace.size());
        const bool wasTyped =
            before.empty() || after.empty() ||
            std::ranges::any_of(neighbours, [&](std::string_view neighbour) {
                return before.ends_with(neighbour) || after.starts_with(neighbour);
            });
        if (!wasTyped) continue;
        text.erase(at, 1);
        text[at] = ' ';
    }
}

std::optional<RichText> readRichText(AtspiPeers& peers, const ObjectRef& object,
                                     TimePoint deadline) {
    Node root;
    root.object = object;
    if (!Loader(peers, deadline).load(root) || !root.text) return std::nullopt;
    Flattener flattener;
    flattener.add(root, true, true);
    return flattener.take();
}

}  // namespace quorvi::atspi
