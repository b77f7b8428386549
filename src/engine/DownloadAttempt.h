#pragma once

#include "engine/DownloadMeter.h"
#include "engine/ModelDownloader.h"
#include "platform/GrowingFile.h"
#include "platform/Http.h"
#include "records/IncrementalHasher.h"

#include <optional>
#include <variant>

/// One attempt to bring one file from one address. It blocks, so it runs on a thread of its own.
class DownloadAttempt {
public:
    struct Order {
        ModelTier tier;
        QString path;          ///< where the verified file belongs
        QUrl url;              ///< the tier's own, or its mirror
        std::stop_token pause; ///< ends a request under way, as a pause
        std::stop_token stop;  ///< ends everything
    };

    DownloadAttempt(Order order, const ModelDownloader::World &world, DownloadMeter &meter);

    /// The path of the verified file. Throws as ModelDownloader::download().
    QString run();

private:
    /// How a request has ended.
    struct Whole {};        ///< with everything that the server has
    struct RangeIsEmpty {}; ///< the server has nothing after what is there already
    struct RangeIgnored {}; ///< the server sends the file from its beginning
    struct TooLong {};      ///< with more bytes than the file may have
    struct Refused {
        int status;
    };
    struct Failed {
        HttpError error;
    };
    struct CutOff {}; ///< by a pause or a stop
    using Ending = std::variant<Whole, RangeIsEmpty, RangeIgnored, TooLong, Refused, Failed, CutOff>;

    QString resume();
    qint64 usablePartial() const;
    void hashPartial();

    Ending request(const QUrl &url);
    Ending receive(const QUrl &url, const std::stop_token &cut);
    HttpRequest requestFor(const QUrl &url) const;
    void waitForNetwork(const QUrl &url, const std::stop_token &cut) const;
    bool take(const QList<QByteArray> &pieces);
    void startAgain();

    /// Nothing is made, opened or renamed once the stop is requested.
    void throwIfStopped() const;
    QString finish();
    [[noreturn]] void discard();
    qint64 partialSize() const;

    const Order m_order;
    const ModelDownloader::World &m_world;
    DownloadMeter &m_meter;
    const QString m_partialPath;
    std::optional<GrowingFile> m_file;
    IncrementalHasher m_hasher;
};
