#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"

#include <utility>

#include "QuorviCore/settings/StoredValue.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using Problem = PropertyListFile::Problem;

std::optional<Message> sentence(Problem problem) {
    switch (problem) {
        case Problem::notRead:
            return say::preferencesUnreadable();
        case Problem::notWritten:
            return say::preferencesNotSaved();
        case Problem::none:
            break;
    }
    return std::nullopt;
}

}  // namespace

PropertyListPreferences::PropertyListPreferences(FileStore& files,
                                                 const std::filesystem::path& file, Executor& disk,
                                                 Scheduler& scheduler)
    : disk_(disk),
      scheduler_(scheduler),
      file_(std::make_shared<PropertyListFile>(files, file)),
      values_(file_->load()),
      couldBeRead_(!file_->isBlocked()),
      persistenceError_(sentence(couldBeRead_ ? Problem::none : Problem::notRead)) {}

PropertyListPreferences::~PropertyListPreferences() = default;

std::optional<SettingValue> PropertyListPreferences::value(std::string_view key) const {
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return settingValueOf(*found->second);
}

void PropertyListPreferences::set(std::string_view key, SettingValue setting) {
    if (auto* text = std::get_if<std::string>(&setting); text && !text::isValidUtf8(*text))
        *text = text::wellFormed(*text);
    auto value = std::visit(
        [](auto& plain) { return PropertyList(PropertyList::Value(std::move(plain))); }, setting);
    const auto found = values_.find(key);
    if (found != values_.end() && *found->second == value) return;
    auto shared = std::make_shared<const PropertyList>(std::move(value));
    if (found == values_.end())
        values_.emplace(key, shared);
    else
        found->second = shared;
    note(key, std::move(shared));
}

void PropertyListPreferences::remove(std::string_view key) {
    const auto found = values_.find(key);
    if (found == values_.end()) return;
    values_.erase(found);
    note(key, nullptr);
}

std::function<void()> PropertyListPreferences::writing() {
    return
        [file = file_, &scheduler = scheduler_, report = lifetime_.guard([this] { takeOver(); })] {
            if (file->write()) scheduler.post(report);
        };
}

void PropertyListPreferences::note(std::string_view key, PropertyListFile::Value value) {
    const auto noted = file_->change(key, std::move(value));
    changedAt_.insert_or_assign(std::string(key), noted.revision);
    if (noted.needsWrite) disk_.run(writing());
    changes_.notify();
}

// Another process's values, except where this one has made a newer change since that will be
// written over them.
void PropertyListPreferences::takeOver() {
    bool changed = false;
    for (auto& outcome : file_->takeOutcomes()) {
        for (auto& [key, value] : outcome.foreign) {
            const auto own = changedAt_.find(key);
            if (own != changedAt_.end() && own->second > outcome.revision) continue;
            if (value)
                values_.insert_or_assign(key, std::move(value));
            else
                values_.erase(key);
            changed = true;
        }
        auto error = sentence(outcome.problem);
        changed = changed || error != persistenceError_;
        persistenceError_ = std::move(error);
    }
    if (changed) changes_.notify();
}

std::function<bool()> PropertyListPreferences::flusher() {
    return [file = file_, write = writing()] {
        write();
        return file->isWritten();
    };
}

void PropertyListPreferences::flush() {
    file_->write();
    takeOver();
}

}  // namespace quorvi
