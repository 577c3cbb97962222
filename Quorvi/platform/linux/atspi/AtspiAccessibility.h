#pragma once

#include <functional>
#include <memory>

#include "Quorvi/platform/Accessibility.h"
#include "Quorvi/platform/InputActivity.h"

namespace quorvi {

// The desktop's accessibility interface: AT-SPI, spoken directly on D-Bus so that each query keeps
// its time-out. A thread of its own follows the accessibility bus and the applications' focus
// events from construction to destruction.
class AtspiAccessibility : public Accessibility, public InputActivity {
public:
    // `canInstallTap` says whether a global input hook is possible; called on any thread, it must
    // not block. `onTrustChanged`, optional, is called on a thread of the adapter when isTrusted()
    // may have changed.
    explicit AtspiAccessibility(std::function<bool()> canInstallTap,
                                std::function<void()> onTrustChanged = nullptr);
    ~AtspiAccessibility() override;

    bool isTrusted() const override;
    void requestTrust() override;

    AXElement applicationElement(pid_t pid) override;
    AXElement systemWideElement() override;

    std::optional<AXValue> attribute(const AXElement& element, std::string_view name,
                                     Duration timeout) override;

    // Only "AXPaste", and "AXManualAccessibility" of an application, which asks for its root's
    // attributes: nobody but a screen reader does, and Chromium then shows its pages.
    bool setAttribute(const AXElement& element, std::string_view name, bool value,
                      Duration timeout) override;

    std::optional<pid_t> processIdentifier(const AXElement& element) override;

    // The adapter outlives the subscription.
    [[nodiscard]] Subscription onTyping(const AXElement& field,
                                        std::function<void()> typed) override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
