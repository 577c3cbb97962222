#include "QuorviCore/locale/LocaleFormats.h"

#include <unicode/currunit.h>
#include <unicode/datefmt.h>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>

#include <stdexcept>

namespace quorvi {

namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::Precision;

void check(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error("The locale's formats could not be loaded.");
}

std::string toUtf8(const icu::UnicodeString& s) {
    std::string result;
    s.toUTF8String(result);
    return result;
}

std::unique_ptr<icu::DateFormat> inZone(icu::DateFormat* format, const std::string& zone) {
    std::unique_ptr<icu::DateFormat> owned(format);
    if (!owned) throw std::runtime_error("The locale's formats could not be loaded.");
    owned->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)));
    return owned;
}

std::string formatted(const icu::DateFormat& format, Date date) {
    icu::UnicodeString text;
    format.format(date.unixSeconds() * 1000, text);
    return toUtf8(text);
}

std::string formatted(const LocalizedNumberFormatter& format, double value) {
    UErrorCode status = U_ZERO_ERROR;
    const auto text = format.formatDouble(value, status).toString(status);
    check(status);
    return toUtf8(text);
}

}  // namespace

struct LocaleFormats::State {
    explicit State(const Calendar& calendar)
        : locale(calendar.locale().c_str()),
          number(icu::number::NumberFormatter::withLocale(locale)),
          longDate(inZone(icu::DateFormat::createDateInstance(icu::DateFormat::kLong, locale),
                          calendar.zone())),
          shortTime(inZone(icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, locale),
                           calendar.zone())) {}

    icu::Locale locale;
    LocalizedNumberFormatter number;
    std::unique_ptr<icu::DateFormat> longDate;
    std::unique_ptr<icu::DateFormat> shortTime;
};

LocaleFormats::LocaleFormats(const Calendar& calendar)
    : state_(std::make_shared<const State>(calendar)) {}

std::string LocaleFormats::integer(std::int64_t value) const {
    UErrorCode status = U_ZERO_ERROR;
    const auto text = state_->number.formatInt(value, status).toString(status);
    check(status);
    return toUtf8(text);
}

std::string LocaleFormats::decimal(double value, int fewest, int most) const {
    return formatted(state_->number.precision(Precision::minMaxFraction(fewest, most)), value);
}

std::string LocaleFormats::usd(double amount, int fewest, int most) const {
    UErrorCode status = U_ZERO_ERROR;
    const icu::CurrencyUnit dollar(u"USD", status);
    check(status);
    return formatted(state_->number.unit(dollar).precision(Precision::minMaxFraction(fewest, most)),
                     amount);
}

std::string LocaleFormats::longDate(Date date) const {
    return formatted(*state_->longDate, date);
}

std::string LocaleFormats::shortTime(Date date) const {
    return formatted(*state_->shortTime, date);
}

std::string LocaleFormats::upperCased(std::string_view text) const {
    auto result = icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    return toUtf8(result.toUpper(state_->locale));
}

}  // namespace quorvi
