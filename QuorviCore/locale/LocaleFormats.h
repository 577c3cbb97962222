#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// Numbers, money and dates as the user's locale writes them. Copies share their state; for one
// thread at a time.
class LocaleFormats {
public:
    // In the calendar's locale and time zone.
    explicit LocaleFormats(const Calendar& calendar);

    std::string integer(std::int64_t value) const;
    std::string decimal(double value, int fewestFractionDigits, int mostFractionDigits) const;
    // An amount of US dollars.
    std::string usd(double amount, int fewestFractionDigits, int mostFractionDigits) const;

    std::string longDate(Date date) const;   // without the time
    std::string shortTime(Date date) const;  // the time of day
    // In upper case as the locale's language has it.
    std::string upperCased(std::string_view text) const;

private:
    struct State;
    std::shared_ptr<const State> state_;
};

}  // namespace quorvi
