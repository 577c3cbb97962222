#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/text/Utf16Range.h"

namespace quorvi {

// The text of a field around a pasted transcript. Immutable; thread-safe. Texts are UTF-8,
// positions UTF-16, comparison by canonical equivalence.
class CorrectionContext {
public:
    static constexpr std::int64_t fieldLimit = 100'000;  // UTF-16 code units

    // Returns the context of pasting `transcript` over `selection`; nullopt if the field exceeds
    // the limit, the transcript is empty, or the range is not within the field or splits a
    // character.
    static std::optional<CorrectionContext> make(std::string_view fieldBefore, Utf16Range selection,
                                                 std::string transcript);

    // Returns the context if the field, as read after the paste, has the transcript at the expected
    // place; otherwise nullopt.
    static std::optional<CorrectionContext> verified(const std::optional<std::string>& fieldBefore,
                                                     const std::optional<Utf16Range>& selection,
                                                     std::string transcript,
                                                     std::string_view fieldAfter);

    const std::string& transcript() const { return transcript_; }
    const std::string& prefix() const { return prefix_; }
    const std::string& suffix() const { return suffix_; }
    std::string expectedField() const { return prefix_ + transcript_ + suffix_; }

    // Returns what the transcript has become in a later state of the field, possibly empty; nullopt
    // if the text around it has changed too.
    std::optional<std::string> editedTranscript(std::string_view field) const;

    bool operator==(const CorrectionContext&) const = default;

private:
    CorrectionContext(std::string prefix, std::string transcript, std::string suffix)
        : prefix_(std::move(prefix)),
          transcript_(std::move(transcript)),
          suffix_(std::move(suffix)) {}

    std::string prefix_;
    std::string transcript_;
    std::string suffix_;
};

}  // namespace quorvi
