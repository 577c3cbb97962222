#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/text/Utf16Range.h"

namespace quorvi {

// The text of a field around a pasted transcript. An immutable value; all operations are pure and
// thread-safe. Texts are UTF-8, positions UTF-16, comparisons canonical equivalence.
class CorrectionContext {
public:
    static constexpr std::int64_t fieldLimit = 100'000;  // UTF-16 code units

    // The context of pasting `transcript` over `selection` of the field; nothing when the field is
    // over the limit, the transcript empty, or the range not one of whole characters in the field.
    static std::optional<CorrectionContext> make(std::string_view fieldBefore, Utf16Range selection,
                                                 std::string transcript);

    // Whether a field read after the paste shows the transcript where it was expected.
    static std::optional<CorrectionContext> verified(const std::optional<std::string>& fieldBefore,
                                                     const std::optional<Utf16Range>& selection,
                                                     std::string transcript,
                                                     std::string_view fieldAfter);

    const std::string& transcript() const { return transcript_; }
    const std::string& prefix() const { return prefix_; }
    const std::string& suffix() const { return suffix_; }
    std::string expectedField() const { return prefix_ + transcript_ + suffix_; }

    // What the user has made of the transcript in a later state of the field (possibly empty);
    // nothing when the text around it has changed too.
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
