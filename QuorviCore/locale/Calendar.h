#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "QuorviCore/async/Date.h"

namespace quorvi {

// Days and months in a time zone and locale. If the clocks skip midnight, a day starts at the first
// instant after it; a date that the zone leaves out does not exist. Boundaries are cached, so each
// day is calculated once. Copies share the cache; thread-safe.
class Calendar {
public:
    struct Day {
        Date start;
        Date end;  // start of the next day

        bool contains(Date date) const { return date >= start && date < end; }
        bool operator==(const Day&) const = default;
    };

    // `zone` is an IANA name such as "Europe/Athens"; `locale`, such as "el_GR", selects the
    // calendar system. Throws std::invalid_argument for an unknown zone.
    Calendar(const std::string& zone, const std::string& locale);

    // Returns the user's calendar as the system has it when it is first used; then its files are
    // read.
    static Calendar system();
    bool isInUse() const;

    const std::string& zone() const;
    const std::string& locale() const;

    // Instants more than about six thousand years away are clamped.
    Day day(Date date) const;
    Date startOfDay(Date date) const { return day(date).start; }
    Day dayBefore(const Day& day) const;

    // Returns the same time of day `days` later, or earlier if negative; nullopt if out of range.
    std::optional<Date> addingDays(Date date, int days) const;

    std::optional<Date> startOfMonth(Date date) const;

    // Whether both have the same days and months.
    bool operator==(const Calendar& other) const {
        return zone() == other.zone() && locale() == other.locale();
    }

private:
    struct State;
    explicit Calendar(std::shared_ptr<State> state) : state_(std::move(state)) {}

    std::shared_ptr<State> state_;
};

}  // namespace quorvi
