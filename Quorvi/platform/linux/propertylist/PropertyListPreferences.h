#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/Preferences.h"
#include "Quorvi/platform/linux/propertylist/PropertyListFile.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Preferences in a binary property list (XML would lose control characters and fractions of a
// second). The constructor reads the file; values are answered from memory. A change is written
// soon afterwards on the executor, merged by key with the changes of other processes, which are
// adopted. Unknown keys and types pass through unchanged. The previous generation is kept beside
// the file.
//
// A file that can't be read is never written: the values then come from the previous generation, if
// there is one, and last for this run. A failed write is retried with the next change and by
// flush().
//
// Main thread. The store and the scheduler outlive the executor, which may outlive this object. The
// destructor writes nothing; call flush() before.
class PropertyListPreferences final : public Preferences {
public:
    PropertyListPreferences(FileStore& files, const std::filesystem::path& file, Executor& disk,
                            Scheduler& scheduler);
    ~PropertyListPreferences() override;
    PropertyListPreferences(const PropertyListPreferences&) = delete;
    PropertyListPreferences& operator=(const PropertyListPreferences&) = delete;

    std::optional<SettingValue> value(std::string_view key) const override;
    bool contains(std::string_view key) const override { return values_.contains(key); }
    // Replaces malformed UTF-8 by U+FFFD.
    void set(std::string_view key, SettingValue value) override;
    void remove(std::string_view key) override;

    bool couldBeRead() const override { return couldBeRead_; }
    std::optional<Message> persistenceError() const override { return persistenceError_; }
    void flush() override;
    std::function<bool()> flusher() override;
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }

private:
    std::function<void()> writing();
    void note(std::string_view key, PropertyListFile::Value value);
    void takeOver();

    Executor& disk_;
    Scheduler& scheduler_;
    std::shared_ptr<PropertyListFile> file_;
    PropertyListFile::Values values_;
    std::map<std::string, std::uint64_t, std::less<>> changedAt_;  // own changes in this run
    bool couldBeRead_;
    std::optional<Message> persistenceError_;
    Observable changes_;
    Lifetime lifetime_;
};

}  // namespace quorvi
