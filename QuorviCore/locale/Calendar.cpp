#include "QuorviCore/locale/Calendar.h"

#include <unicode/calendar.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <stdexcept>

#include "QuorviCore/locale/SystemLocale.h"

namespace quorvi {

namespace {

constexpr double farthest = 2e11;  // seconds

Date within(Date date) {
    return {std::clamp(date.secondsSinceReferenceDate, -farthest, farthest)};
}

void check(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error("The calendar could not be loaded.");
}

// Throws std::invalid_argument for an unknown name.
std::unique_ptr<icu::TimeZone> zoneNamed(const std::string& name) {
    std::unique_ptr<icu::TimeZone> zone(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    if (*zone == icu::TimeZone::getUnknown()) throw std::invalid_argument("no time zone " + name);
    return zone;
}

std::unique_ptr<icu::Calendar> makeCalendar(const std::string& zone, const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(
        zoneNamed(zone).release(), icu::Locale(locale.c_str()), status));
    check(status);
    // Where midnight comes twice, a day starts at the first.
    calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    return calendar;
}

void setTime(icu::Calendar& calendar, Date date) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(within(date).unixSeconds() * 1000, status);
    check(status);
}

Date timeOf(const icu::Calendar& calendar) {
    UErrorCode status = U_ZERO_ERROR;
    const double milliseconds = calendar.getTime(status);
    check(status);
    return Date::fromUnixSeconds(milliseconds / 1000);
}

void setToMidnight(icu::Calendar& calendar) {
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        calendar.set(field, 0);
}

Date midnight(icu::Calendar& calendar, Date date, int daysLater) {
    setTime(calendar, date);
    UErrorCode status = U_ZERO_ERROR;
    calendar.add(UCAL_DATE, daysLater, status);
    check(status);
    setToMidnight(calendar);
    return timeOf(calendar);
}

}  // namespace

// Calculates under a lock that is held for microseconds.
struct Calendar::State {
    // The calendar must be used under this lock.
    std::unique_lock<std::mutex> lock() {
        std::unique_lock held(mutex);
        if (!calendar) lookUp();
        return held;
    }
    void lookUp();
    Day find(Date date);
    Day calculate(Date date);

    std::mutex mutex;  // guards what follows
    std::string zone, locale;
    std::unique_ptr<icu::Calendar> calendar;  // nullptr until the system's is first used
    std::map<double, Day> days;               // by their end
};

void Calendar::State::lookUp() {
    std::unique_ptr<icu::TimeZone> host(icu::TimeZone::detectHostTimeZone());
    icu::UnicodeString name;
    host->getID(name);
    zone.clear();
    name.toUTF8String(zone);
    if (*host == icu::TimeZone::getUnknown()) zone = "UTC";
    locale = systemLocale();
    calendar = makeCalendar(zone, locale);
}

Calendar::Day Calendar::State::find(Date date) {
    const auto known = days.upper_bound(date.secondsSinceReferenceDate);
    if (known != days.end() && known->second.contains(date)) return known->second;
    const Day day = calculate(date);
    days.emplace(day.end.secondsSinceReferenceDate, day);
    return day;
}

// If the clocks go back over midnight, the calendar fields name the previous day again after a day
// has begun; that time belongs to the day that has begun.
Calendar::Day Calendar::State::calculate(Date date) {
    Date start = midnight(*calendar, date, 0);
    if (const Date next = midnight(*calendar, start, 1); start < next && next <= date) start = next;
    Date end = midnight(*calendar, start, 1);
    for (int further = 2; end <= start; ++further) end = midnight(*calendar, start, further);
    return {start, end};
}

Calendar::Calendar(const std::string& zone, const std::string& locale)
    : state_(std::make_shared<State>()) {
    state_->zone = zone;
    state_->locale = locale;
    state_->calendar = makeCalendar(zone, locale);
}

Calendar Calendar::system() {
    return Calendar(std::make_shared<State>());
}

bool Calendar::isInUse() const {
    const std::lock_guard lock(state_->mutex);
    return state_->calendar != nullptr;
}

const std::string& Calendar::zone() const {
    const auto lock = state_->lock();
    return state_->zone;
}

const std::string& Calendar::locale() const {
    const auto lock = state_->lock();
    return state_->locale;
}

Calendar::Day Calendar::day(Date date) const {
    const auto lock = state_->lock();
    return state_->find(within(date));
}

Calendar::Day Calendar::dayBefore(const Day& day) const {
    return this->day({day.start.secondsSinceReferenceDate - 0.5});
}

std::optional<Date> Calendar::addingDays(Date date, int days) const {
    const auto lock = state_->lock();
    auto& calendar = *state_->calendar;
    setTime(calendar, date);
    UErrorCode status = U_ZERO_ERROR;
    calendar.add(UCAL_DATE, days, status);
    const double milliseconds = calendar.getTime(status);
    if (U_FAILURE(status)) return std::nullopt;
    return Date::fromUnixSeconds(milliseconds / 1000);
}

std::optional<Date> Calendar::startOfMonth(Date date) const {
    const auto lock = state_->lock();
    auto& calendar = *state_->calendar;
    setTime(calendar, date);
    calendar.set(UCAL_DATE, 1);
    setToMidnight(calendar);
    UErrorCode status = U_ZERO_ERROR;
    const double milliseconds = calendar.getTime(status);
    if (U_FAILURE(status)) return std::nullopt;
    return Date::fromUnixSeconds(milliseconds / 1000);
}

}  // namespace quorvi
