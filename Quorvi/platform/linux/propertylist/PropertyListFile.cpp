#include "Quorvi/platform/linux/propertylist/PropertyListFile.h"

#include <stdexcept>
#include <utility>

#include "Quorvi/platform/linux/posix/FileLock.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr std::uintmax_t maximalSize = 64 << 20;
constexpr auto lockPatience = 2s;

// The file exists but cannot be parsed.
struct NotUnderstood : std::runtime_error {
    using std::runtime_error::runtime_error;
};

bool same(const PropertyListFile::Value& a, const PropertyListFile::Value& b) {
    return a == b || (a && b && *a == *b);
}

PropertyListFile::Value valueOf(const PropertyListFile::Values& values, std::string_view key) {
    const auto found = values.find(key);
    return found == values.end() ? nullptr : found->second;
}

// Returns the changes from one dictionary to the other, except the keys in `except`.
PropertyListFile::Changes difference(const PropertyListFile::Values& from,
                                     const PropertyListFile::Values& to,
                                     const PropertyListFile::Changes& except) {
    PropertyListFile::Changes result;
    for (const auto& [key, value] : to)
        if (!except.contains(key) && !same(valueOf(from, key), value)) result[key] = value;
    for (const auto& [key, value] : from)
        if (!except.contains(key) && !to.contains(key)) result[key] = nullptr;
    return result;
}

}  // namespace

PropertyListFile::PropertyListFile(FileStore& files, std::filesystem::path file)
    : files_(files), path_(std::move(file)), previous_(path_.string() + ".previous") {}

std::optional<PropertyListFile::Values> PropertyListFile::read(
    const std::filesystem::path& file) const {
    std::error_code unknown;
    const auto size = std::filesystem::file_size(file, unknown);
    if (!unknown && size > maximalSize) throw NotUnderstood("too large");
    const auto content = files_.read(file);
    if (!content) return std::nullopt;
    auto list = PropertyList::fromBinary(*content);
    auto* entries = list ? std::get_if<PropertyList::Dictionary>(&list->value) : nullptr;
    if (!entries) throw NotUnderstood("not a dictionary in a binary property list");
    Values values;
    for (auto& [key, value] : *entries)
        values.emplace(key, std::make_shared<const PropertyList>(std::move(value)));
    return values;
}

PropertyListFile::Values PropertyListFile::load() {
    try {
        base_ = read(path_).value_or(Values{});
        return base_;
    } catch (const std::exception&) {
        blocked_ = true;
    }
    try {
        return read(previous_).value_or(Values{});
    } catch (const std::exception&) {
        return {};
    }
}

bool PropertyListFile::isBlocked() const {
    std::lock_guard lock(mutex_);
    return blocked_;
}

PropertyListFile::Noted PropertyListFile::change(std::string_view key, Value value) {
    std::lock_guard lock(mutex_);
    ++revision_;
    if (blocked_) return {revision_, false};
    pending_.insert_or_assign(std::string(key), std::move(value));
    return {revision_, !std::exchange(asked_, true)};
}

bool PropertyListFile::write() {
    std::lock_guard oneWriter(writing_);
    Changes changes;
    Outcome outcome;
    {
        std::lock_guard lock(mutex_);
        asked_ = false;
        if (pending_.empty() || blocked_) return false;
        changes.swap(pending_);
        outcome.revision = revision_;
    }
    try {
        outcome.foreign = merge(changes);
        lastFailed_ = false;
    } catch (const NotUnderstood&) {
        outcome.problem = Problem::notRead;
    } catch (const std::exception&) {
        outcome.problem = Problem::notWritten;
        lastFailed_ = true;
    }
    std::lock_guard lock(mutex_);
    blocked_ = outcome.problem == Problem::notRead;
    if (outcome.problem == Problem::notWritten) pending_.merge(changes);  // newer ones stay
    outcomes_.push_back(std::move(outcome));
    return true;
}

// Applies the changes to what the file holds now. A file that is gone, perhaps with its folder, is
// made anew from what it last held.
PropertyListFile::Changes PropertyListFile::merge(const Changes& changes) {
    const FileLock lock(path_.string() + ".lock", lockPatience);
    const auto current = read(path_);
    auto values = current.value_or(base_);
    auto foreign = difference(base_, values, changes);
    for (const auto& [key, value] : changes) {
        if (value)
            values.insert_or_assign(key, value);
        else
            values.erase(key);
    }
    if (!current || lastFailed_ || !difference(*current, values, {}).empty()) store(values);
    base_ = std::move(values);
    return foreign;
}

void PropertyListFile::store(const Values& values) {
    PropertyList::Dictionary entries;
    for (const auto& [key, value] : values) entries.emplace(key, *value);
    const auto content = PropertyList{std::move(entries)}.toBinary();
    if (content.size() > maximalSize) throw std::length_error("too large");
    const std::string_view parts[] = {content};
    files_.replace(path_, parts, previous_);
}

bool PropertyListFile::isWritten() const {
    std::lock_guard oneWriter(writing_);
    return !lastFailed_;
}

std::vector<PropertyListFile::Outcome> PropertyListFile::takeOutcomes() {
    std::lock_guard lock(mutex_);
    return std::exchange(outcomes_, {});
}

}  // namespace quorvi
