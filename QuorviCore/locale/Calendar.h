#pragma once

#include <memory>
#include <optional>
#include <string>

#include "QuorviCore/async/Date.h"

namespace quorvi {

// The days and months of a time zone and a locale. A day is what lies between two midnights; where
// clocks skip midnight it begins when they go on, and a day that a zone leaves out does not exist.
// The boundaries that were asked for are kept, so a day costs one calculation however many instants
// of it are looked up. Copies share them; thread-safe.
class Calendar {
public:
    struct Day {
        Date start;
        Date end;  // the next day's start

        bool contains(Date date) const { return date >= start && date < end; }
        bool operator==(const Day&) const = default;
    };

    // `zone` is a name such as "Europe/Athens", `locale` one such as "el_GR"; the locale decides
    // which calendar counts the months. Throws std::invalid_argument for an unknown zone.
    Calendar(const std::string& zone, const std::string& locale);

    // The user's own, as the system has it now.
    static Calendar system();

    const std::string& zone() const;
    const std::string& locale() const;

    // Instants beyond some six thousand years are taken to lie there.
    Day day(Date date) const;
    Date startOfDay(Date date) const { return day(date).start; }
    Day dayBefore(const Day& day) const;

    // The same time of day some days later, or earlier when negative; nothing when there is none.
    std::optional<Date> addingDays(Date date, int days) const;

    std::optional<Date> startOfMonth(Date date) const;

    // Whether both have the same days and months.
    bool operator==(const Calendar& other) const {
        return zone() == other.zone() && locale() == other.locale();
    }

private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace quorvi
