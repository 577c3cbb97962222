#pragma once

#include <functional>
#include <memory>

#include "Quorvi/platform/Accessibility.h"

namespace quorvi {

// The desktop's accessibility interface over AT-SPI, spoken directly on D-Bus so that every query
// keeps to its own time-out. Follows the accessibility bus and the applications' focus events on a
// thread of its own from construction to destruction.
class AtspiAccessibility : public Accessibility {
public:
    // `canInstallTap` says whether a global input hook is possible; called on any thread, it must
    // not block. `onTrustChanged`, optional, is told on a thread of the adapter's when isTrusted()
    // may say something else.
    explicit AtspiAccessibility(std::function<bool()> canInstallTap,
                                std::function<void()> onTrustChanged = nullptr);
    ~AtspiAccessibility() override;

    bool isTrusted() const override;
    void requestTrust() override;

    AXElement applicationElement(pid_t pid) override;
    AXElement systemWideElement() override;

    std::optional<AXValue> attribute(const AXElement& element, std::string_view name,
                                     Duration timeout) override;

    // Always false: AT-SPI has no switch by which an application is asked to offer more.
    bool setAttribute(const AXElement& element, std::string_view name, bool value,
                      Duration timeout) override;

    std::optional<pid_t> processIdentifier(const AXElement& element) override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
