#include "engine/ModelDownloader.h"

#include "engine/DownloadAttempt.h"
#include "platform/Mailbox.h"
#include "platform/NetworkState.h"
#include "platform/OwnThread.h"
#include "platform/Turnstile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

/// What the downloader and its downloads have in common; a download may be the last to hold it.
struct ModelDownloader::Shared : std::enable_shared_from_this<ModelDownloader::Shared> {
    Shared(ModelDownloader *downloader, World given);

    /// One download, which holds the place of its turn until its attempts have closed their file.
    static Task<QString> download(std::shared_ptr<Shared> self, ModelTier tier, QString folder,
                                  std::stop_token pause, std::stop_token stop);

    /// One attempt, on a thread that is gone when this returns.
    static Task<QString> attempt(std::shared_ptr<Shared> self, DownloadAttempt::Order order);

    static void tell(const std::shared_ptr<Shared> &self, const DownloadProgress &progress);

    ModelDownloader *owner; ///< main thread; nothing once it is gone
    const World world;
    std::stop_source pause; ///< of the downloads that there are; those to come have another
    std::stop_source end;   ///< the same for a stop
    Turnstile turns;
    std::shared_ptr<OwnThread<QString>> thread; ///< of the running attempt
    DownloadMeter meter;                        ///< belongs to the running attempt's thread
};

namespace {

ModelDownloader::World completed(ModelDownloader::World world) {
    if (!world.hasNetwork)
        world.hasNetwork = ::hasNetwork;
    return world;
}

/// Where the tier's file belongs; throws for a name that leads out of the folder.
QString filePath(const QString &folder, const QString &name) {
    if (folder.isEmpty() || !isModelFilename(name))
        throw DownloadError::message(u"The download could not be saved."_s);
    return folder + u'/' + name;
}

/// True after a failure that another address might not have.
bool mayTryMirror(const std::exception &error) {
    if (dynamic_cast<const Cancelled *>(&error))
        return false;
    const auto *const known = dynamic_cast<const DownloadError *>(&error);
    if (!known)
        return true;
    switch (known->kind()) {
    case DownloadError::Kind::paused:
    case DownloadError::Kind::diskFull:
    case DownloadError::Kind::hashMismatch:
        return false;
    case DownloadError::Kind::http:
    case DownloadError::Kind::message:
    case DownloadError::Kind::offline:
        break;
    }
    return true;
}

} // namespace

ModelDownloader::Shared::Shared(ModelDownloader *downloader, World given)
    : owner(downloader),
      world(completed(std::move(given))),
      meter(world.now, [this](const DownloadProgress &progress) {
          Mailbox::main().post([self = weak_from_this(), progress] { tell(self.lock(), progress); });
      }) {}

void ModelDownloader::Shared::tell(const std::shared_ptr<Shared> &self, const DownloadProgress &progress) {
    if (self && self->owner && self->owner->onProgress)
        self->owner->onProgress(progress);
}

Task<QString> ModelDownloader::Shared::download(std::shared_ptr<Shared> self, ModelTier tier, QString folder,
                                                std::stop_token pause, std::stop_token stop) {
    std::stop_source end;
    const std::stop_callback onStop(stop, [&end] { end.request_stop(); });
    const std::stop_callback onEnd(self->end.get_token(), [&end] { end.request_stop(); });
    const Turnstile::Turn turn = co_await self->turns.enter(end.get_token());
    if (end.stop_requested())
        throw Cancelled();
    if (pause.stop_requested())
        throw DownloadError(DownloadError::Kind::paused);
    const QString path = filePath(folder, tier.filename);
    if (QFileInfo(path).isFile())
        co_return path;
    DownloadAttempt::Order order{tier, path, tier.url, pause, end.get_token()};
    try {
        co_return co_await attempt(self, order);
    } catch (const std::exception &error) {
        if (!tier.mirrorURL || !mayTryMirror(error))
            throw;
    }
    if (end.stop_requested())
        throw Cancelled();
    if (pause.stop_requested())
        throw DownloadError(DownloadError::Kind::paused);
    // What failed may have come after the file was in its place.
    if (QFileInfo(path).isFile())
        co_return path;
    order.url = *tier.mirrorURL;
    co_return co_await attempt(self, order);
}

Task<QString> ModelDownloader::Shared::attempt(std::shared_ptr<Shared> self, DownloadAttempt::Order order) {
    const auto thread = std::make_shared<OwnThread<QString>>([self = self.get(), order = std::move(order)] {
        return DownloadAttempt(order, self->world, self->meter).run();
    });
    self->thread = thread;
    co_return co_await thread->result();
}

ModelDownloader::ModelDownloader() : ModelDownloader(World()) {}

ModelDownloader::ModelDownloader(World world) : m_shared(std::make_shared<Shared>(this, std::move(world))) {}

ModelDownloader::~ModelDownloader() {
    m_shared->owner = nullptr;
    stop();
}

Task<QString> ModelDownloader::download(ModelTier tier, QString modelsFolder, std::stop_token stop) {
    return Shared::download(m_shared, std::move(tier), std::move(modelsFolder), m_shared->pause.get_token(),
                            stop);
}

void ModelDownloader::stop() {
    std::exchange(m_shared->end, std::stop_source()).request_stop();
    if (const auto thread = m_shared->thread)
        thread->join();
}

void ModelDownloader::pause() {
    std::exchange(m_shared->pause, std::stop_source()).request_stop();
}
