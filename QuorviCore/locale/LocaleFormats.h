#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// Formats numbers, money and dates for the user's locale. Copies share their state; one thread at a
// time.
class LocaleFormats {
public:
    // Uses the locale and time zone of the calendar.
    explicit LocaleFormats(const Calendar& calendar);

    std::string integer(std::int64_t value) const;
    std::string decimal(double value, int fewestFractionDigits, int mostFractionDigits) const;
    // An amount of US dollars.
    std::string usd(double amount, int fewestFractionDigits, int mostFractionDigits) const;

    std::string longDate(Date date) const;   // without the time
    std::string shortTime(Date date) const;  // the time of day
    // Upper-cases by the rules of the locale's language.
    std::string upperCased(std::string_view text) const;

private:
    struct State;
    std::shared_ptr<const State> state_;
};

}  // namespace quorvi
