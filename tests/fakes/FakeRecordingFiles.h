#pragma once

#include <map>
#include <memory>
#include <string>

#include "Quorvi/platform/RecordingFiles.h"
#include "QuorviCore/Error.h"

namespace quorvi::test {

// Recordings in memory, for one thread.
class FakeRecordingFiles : public RecordingFiles {
public:
    using Content = std::shared_ptr<std::string>;

    std::filesystem::path newFile() const override {
        return "recording " + std::to_string(++made_) + ".m4a";
    }
    void prepare() override {
        if (refuses) throw QuorviError::message(say::recordingFolderNotOwn("/tmp/recordings"));
    }
    std::shared_ptr<const OpenRecording> takeOut(const std::filesystem::path& file) override {
        auto taken = named.extract(file);
        if (taken.empty())
            throw QuorviError::message(say::recordingNotKeptApart("No such file or directory"));
        return std::make_shared<Open>(std::move(taken.mapped()));
    }
    std::unique_ptr<RecordingInMemory> keepInMemory(const Bytes& audio) const override {
        return std::make_unique<InMemory>(audio, inMemory);
    }
    void remove(const std::filesystem::path& file) override { named.erase(file); }
    void removeLeftOver() override { named.clear(); }

    std::map<std::filesystem::path, Content> named;
    bool refuses = false;  // prepare() throws
    mutable int inMemory = 0;

private:
    struct Open : OpenRecording {
        explicit Open(Content written) : content(std::move(written)) {}
        Bytes read() const override { return {content->begin(), content->end()}; }
        Content content;
    };

    struct InMemory : RecordingInMemory {
        InMemory(Bytes audio_, int& count_) : audio(std::move(audio_)), count(++count_) {}
        ~InMemory() override { --count; }
        Bytes read() const override { return audio; }
        Bytes audio;
        int& count;
    };

    mutable int made_ = 0;
};

}  // namespace quorvi::test
