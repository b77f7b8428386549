#include "engine/DownloadAttempt.h"

#include "platform/BlockingAnswer.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <condition_variable>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype hashedAtOnce = 0x100000;
constexpr int ok = 200;
constexpr int partialContent = 206;
constexpr int rangeNotSatisfiable = 416;

template<typename... Cases>
struct Choose : Cases... {
    using Cases::operator()...;
};
template<typename... Cases>
Choose(Cases...) -> Choose<Cases...>;

[[noreturn]] void raise(const HttpError &error) {
    if (error.reason() == HttpError::Reason::lost || error.reason() == HttpError::Reason::notConnected)
        throw DownloadError(DownloadError::Kind::offline);
    // Neither file nor ftp answers with a status.
    if (error.reason() == HttpError::Reason::badAddress)
        throw DownloadError::http(0);
    throw HttpError(error);
}

} // namespace

DownloadAttempt::DownloadAttempt(Order order, const ModelDownloader::World &world, DownloadMeter &meter)
    : m_order(std::move(order)),
      m_world(world),
      m_meter(meter),
      m_partialPath(m_order.path + u".partial"_s) {}

QString DownloadAttempt::run() {
    try {
        return resume();
    } catch (const DiskFullError &) {
        throw DownloadError(DownloadError::Kind::diskFull);
    }
}

QString DownloadAttempt::resume() {
    const qint64 total = m_order.tier.sizeBytes;
    const qint64 existing = usablePartial();
    const bool isWhole = existing >= 1 && partialSize() >= total;
    if (existing >= 1) {
        if (!isWhole)
            m_meter.tellChecking(existing, total);
        hashPartial();
    }
    if (isWhole)
        return finish();
    m_meter.start(existing, total);
    Ending ending = request(m_order.url);
    if (std::holds_alternative<RangeIgnored>(ending)) {
        startAgain();
        ending = request(m_order.tier.url);
    }
    return std::visit(
        Choose{
            [this](const Whole &) {
                m_meter.tell();
                return finish();
            },
            [this](const RangeIsEmpty &) { return finish(); },
            // The hash of all of it would say the same, once the disk is full.
            [this](const TooLong &) -> QString { discard(); },
            [](const Refused &refused) -> QString { throw DownloadError::http(refused.status); },
            [](const Failed &failed) -> QString { raise(failed.error); },
            [](const CutOff &) -> QString { throw Cancelled(); },
            [](const RangeIgnored &) -> QString { throw DownloadError::http(ok); },
        },
        ending);
}

qint64 DownloadAttempt::partialSize() const {
    return QFileInfo(m_partialPath).size();
}

qint64 DownloadAttempt::usablePartial() const {
    const qint64 total = m_order.tier.sizeBytes;
    if (partialSize() > total)
        QFile::remove(m_partialPath);
    return std::min(partialSize(), total);
}

void DownloadAttempt::hashPartial() {
    readInPieces(m_partialPath, hashedAtOnce, [this](QByteArrayView piece) {
        m_hasher.update(piece);
        return !m_order.stop.stop_requested();
    });
    throwIfStopped();
}

void DownloadAttempt::throwIfStopped() const {
    if (m_order.stop.stop_requested())
        throw Cancelled();
}

DownloadAttempt::Ending DownloadAttempt::request(const QUrl &url) {
    throwIfStopped();
    if (!m_file)
        m_file.emplace(m_partialPath);
    std::stop_source cut;
    const auto cutOff = [&cut] { cut.request_stop(); };
    const std::stop_callback onStop(m_order.stop, cutOff);
    // A pause from before the request lets it go on to its end.
    std::optional<std::stop_callback<decltype(cutOff)>> onPause;
    if (!m_order.pause.stop_requested())
        onPause.emplace(m_order.pause, cutOff);
    Ending ending = receive(url, cut.get_token());
    throwIfStopped();
    if (m_order.pause.stop_requested())
        throw DownloadError(DownloadError::Kind::paused);
    return ending;
}

DownloadAttempt::Ending DownloadAttempt::receive(const QUrl &url, const std::stop_token &cut) {
    try {
        waitForNetwork(url, cut);
        BlockingAnswer answer(requestFor(url), cut);
        const int status = answer.status();
        if (status == ok && m_meter.atStart() >= 1)
            return RangeIgnored();
        if (status == rangeNotSatisfiable)
            return RangeIsEmpty();
        if (status != ok && status != partialContent)
            return Refused{status};
        for (auto pieces = answer.more(); !pieces.isEmpty(); pieces = answer.more()) {
            if (!take(pieces))
                return TooLong();
        }
        return Whole();
    } catch (const HttpError &error) {
        return Failed{error};
    } catch (const Cancelled &) {
        return CutOff();
    }
}

HttpRequest DownloadAttempt::requestFor(const QUrl &url) const {
    HttpRequest request;
    request.url = url;
    request.idleTimeout = m_world.idleTimeout;
    request.redirects = HttpRequest::Redirects::areFollowed;
    request.headers.emplaceBack("User-Agent", "Ostrelin/0.1 (Macintosh)");
    if (m_meter.atStart() >= 1)
        request.headers.emplaceBack("Range", "bytes=" + QByteArray::number(m_meter.atStart()) + '-');
    return request;
}

void DownloadAttempt::waitForNetwork(const QUrl &url, const std::stop_token &cut) const {
    std::mutex lock;
    std::unique_lock held(lock);
    std::condition_variable_any never;
    while (!isLoopback(url.host()) && !m_world.hasNetwork()) {
        never.wait_for(held, cut, m_world.networkPollInterval, [] { return false; });
        if (cut.stop_requested())
            throw Cancelled();
    }
}

bool DownloadAttempt::take(const QList<QByteArray> &pieces) {
    qint64 count = 0;
    for (const QByteArray &piece : pieces)
        count += piece.size();
    // A file that grows beyond its size is wrong, and a server that never ends would fill the disk.
    if (m_meter.received() + count > m_order.tier.sizeBytes)
        return false;
    m_file->append(pieces);
    for (const QByteArray &piece : pieces)
        m_hasher.update(piece);
    m_meter.add(count);
    return true;
}

void DownloadAttempt::startAgain() {
    m_file.reset();
    QFile::remove(m_partialPath);
    m_hasher = IncrementalHasher();
    m_meter.start(0, m_order.tier.sizeBytes);
}

QString DownloadAttempt::finish() {
    throwIfStopped();
    if (m_hasher.hexDigest() != m_order.tier.sha256.toLower() || partialSize() != m_order.tier.sizeBytes)
        discard();
    // The name is a promise that has to hold also after the power has failed.
    if (!m_file)
        m_file.emplace(m_partialPath);
    m_file->flush();
    m_file.reset();
    moveIntoPlace(m_partialPath, m_order.path);
    return m_order.path;
}

void DownloadAttempt::discard() {
    m_file.reset();
    QFile::remove(m_partialPath);
    throw DownloadError(DownloadError::Kind::hashMismatch);
}
