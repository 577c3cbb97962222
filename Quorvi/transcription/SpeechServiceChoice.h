#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Quorvi/settings/Settings.h"
#include "QuorviCore/transcription/SpeechServiceKind.h"

namespace quorvi {

// The speech service that the user has chosen in the settings; or the one that was fixed for this
// run, which takes precedence. Main thread; the settings outlive it.
class SpeechServiceChoice {
public:
    // `fixedAddress` is that of the whole run (QUORVI_SERVICE), if not empty.
    SpeechServiceChoice(Settings& settings, std::string fixedAddress);

    bool isFixed() const { return !fixedAddress_.empty(); }
    const std::string& fixedAddress() const { return fixedAddress_; }
    // With a fixed address: whether it is that of the OpenAI API, or other.
    SpeechServiceKind kind() const;
    // What is stored, valid or not.
    std::string otherAddress() const { return settings_.get(setting::service); }
    std::string otherModel() const { return settings_.get(setting::serviceModel); }
    bool otherTakesKey() const { return settings_.get(setting::serviceTakesKey); }

    void choose(SpeechServiceKind kind);
    void setOtherAddress(const std::string& address);
    void setOtherModel(const std::string& model) { settings_.set(setting::serviceModel, model); }
    void setOtherTakesKey(bool takes) { settings_.set(setting::serviceTakesKey, takes); }

    // The address that requests go to; empty for the recogniser on this machine. Throws QuorviError
    // if it is not valid.
    std::string address() const;
    // The same; empty if it is not valid.
    std::string validAddress() const;
    // Whether requests carry an API key, and if so, whether that is the key of the OpenAI API, as
    // for a fixed address, and not one of this service's own.
    bool takesKey() const;
    bool usesMainKey() const { return isFixed() || kind() == SpeechServiceKind::openAI; }

    [[nodiscard]] Subscription onChange(std::function<void()> observer) const;

private:
    Settings& settings_;
    std::string fixedAddress_;
};

}  // namespace quorvi
