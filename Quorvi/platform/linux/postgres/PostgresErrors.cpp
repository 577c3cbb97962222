#include "Quorvi/platform/linux/postgres/PostgresErrors.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ranges>

namespace quorvi {

namespace {

using namespace std::chrono_literals;
namespace code = cloudErrorCode;

struct Meaning {
    std::string_view state;  // or the class at its start
    int code;
    std::optional<Duration> retryAfter;
    std::string_view sentence;  // empty for the message of the server
};

constexpr auto busy = "The database server is busy.";
constexpr auto stopping = "The database server is starting or stopping.";
constexpr auto notSetUp = "The database is not set up for Quorvi.";

// The first match counts.
constexpr std::array meanings{
    Meaning{"08", code::networkFailure, {}, {}},
    Meaning{"0A", code::badContainer, {}, {}},
    Meaning{"22", code::invalidArguments, {}, {}},
    Meaning{"23", code::invalidArguments, {}, {}},
    Meaning{"25006", code::serviceUnavailable, 30s, "The database can only be read at the moment."},
    Meaning{"28",
            code::notAuthenticated,
            {},
            "The database does not accept the account or its password."},
    Meaning{"3D000", code::badContainer, {}, "There is no such database on the server."},
    Meaning{"3F000", code::badContainer, {}, notSetUp},
    Meaning{"40", code::zoneBusy, 1s, busy},
    Meaning{"42501", code::permissionFailure, {}, "The account may not use this database."},
    Meaning{"42703", code::badContainer, {}, notSetUp},
    Meaning{"42883", code::badContainer, {}, notSetUp},
    Meaning{"42P01", code::badContainer, {}, notSetUp},
    Meaning{"53100", code::quotaExceeded, {}, "The database server's disk is full."},
    Meaning{"53300", code::requestRateLimited, 30s,
            "The database server has too many connections."},
    Meaning{"53", code::serviceUnavailable, 30s, busy},
    Meaning{"54", code::limitExceeded, {}, {}},
    Meaning{"55P03", code::zoneBusy, 2s, busy},
    Meaning{"57014", code::serviceUnavailable, 5s, busy},
    Meaning{"57P", code::serviceUnavailable, 5s, stopping},
    Meaning{"58", code::serviceUnavailable, 30s, {}},
};

bool isStateCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
}

}  // namespace

CloudError cloudErrorOfState(std::string_view sqlState, const std::string& message) {
    const auto found = std::ranges::find_if(
        meanings, [&](const Meaning& meaning) { return sqlState.starts_with(meaning.state); });
    if (found == meanings.end()) return CloudError(code::internalError, message);
    const auto& sentence = found->sentence;
    return CloudError(found->code, sentence.empty() ? message : std::string(sentence),
                      found->retryAfter);
}

std::string sqlStateIn(std::string_view message) {
    // A line "…: FATAL:  28P01"; a note about the source of the password may follow.
    std::string found;
    for (const auto& line : std::views::split(message, '\n')) {
        const std::string_view text(line.begin(), line.end());
        if (text.size() < 8) continue;
        const auto state = text.substr(text.size() - 5);
        if (text.substr(0, text.size() - 5).ends_with(":  ") &&
            std::ranges::all_of(state, isStateCharacter))
            found = state;
    }
    return found;
}

}  // namespace quorvi
