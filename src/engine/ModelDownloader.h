#pragma once

#include "engine/DownloadError.h"
#include "engine/DownloadProgress.h"
#include "platform/Task.h"
#include "records/ModelTier.h"

#include <chrono>
#include <functional>
#include <memory>

/// Brings a model's file from the network into the models folder.
///
/// Bytes go to a file beside the final name, with ".partial" after it, and a later download goes on from
/// there, in this run of the program or another. Nothing gets the final name before the SHA-256 and the
/// size of the whole file match the catalog, and before it is on the disk. Writing and hashing happen on
/// a thread of their own. Main thread only.
class ModelDownloader {
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// What a download asks of the world; a test has a world of its own.
    struct World {
        /// How long a connection may stay without a byte.
        std::chrono::milliseconds idleTimeout{60'000};
        /// The time; called on a thread of its own.
        std::function<Moment()> now = std::chrono::steady_clock::now;
        /// Whether this machine has any network, and how often that is asked while it has none; called on
        /// a thread of its own.
        std::function<bool()> hasNetwork;
        std::chrono::milliseconds networkPollInterval{1'000};
    };

    ModelDownloader();
    explicit ModelDownloader(World world);

    /// As stop().
    ~ModelDownloader();
    ModelDownloader(const ModelDownloader &) = delete;
    ModelDownloader &operator=(const ModelDownloader &) = delete;

    /// Told how far the download is: at most four times a second, once when the last bytes have come, and
    /// once when the check of a partial file begins, unless that has all of them. Always called by the event
    /// loop of the main thread.
    std::function<void(const DownloadProgress &)> onProgress;

#ifndef Q_MOC_RUN
    /// The path of the tier's file in `modelsFolder`, once it is there and verified; a file that stands
    /// under the final name is taken as it is. An attempt that fails is followed by one at the mirror, if
    /// the tier has one and the failure wasn't a pause, a full disk or a wrong hash.
    ///
    /// Throws DownloadError, or another std::exception whose what() is the sentence to show, or Cancelled
    /// once `stop` is requested. The partial file is kept, unless it was whole and wrong. Downloads run
    /// one after the other: this one first waits until one before it has closed its file.
    Task<QString> download(ModelTier tier, QString modelsFolder, std::stop_token stop);
#endif

    /// Ends the running request; its download then throws a DownloadError of the kind `paused`. While the
    /// partial file is being hashed there is no request yet: the pause then takes effect when the request
    /// that follows has ended. Nothing happens where no download runs.
    void pause();

    /// Ends the downloads that there are, as a requested stop does, and waits until the running one has
    /// closed its file: from then on nothing is written any more.
    void stop();

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
};
