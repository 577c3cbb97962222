#pragma once

#include <filesystem>
#include <string>

#include "Quorvi/platform/Downloader.h"
#include "Quorvi/platform/Preferences.h"
#include "Quorvi/platform/UpdateInstaller.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Where this build gets its updates from. The feed and the key are fixed at build time: whoever
// could set them at run time could make it install anything.
struct UpdateConfiguration {
    std::string feed;       // HTTPS address; empty turns updates off
    std::string publicKey;  // Ed25519, base64
    std::string currentVersion;
    std::string systemVersion;       // empty when unknown
    std::string package = "quorvi";  // the name that an update's package must have
    std::filesystem::path folder;    // for downloads; belongs to the updater alone
};

// What the updater uses; all of it outlives the updater.
struct UpdateEnvironment {
    Scheduler& scheduler;
    Executor& executor;  // for files and signatures, some hundred milliseconds at a time
    Preferences& preferences;
    Downloader& downloader;
    UpdateInstaller& installer;
    UpdateConfiguration configuration;
};

}  // namespace quorvi
