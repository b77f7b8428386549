#pragma once

#include "engine/ModelDownloader.h"
#include "platform/AtomicFile.h"
#include "support/Await.h"
#include "support/FileServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <optional>

/// A download that runs while the test does something else.
struct RunningDownload {
    std::stop_source stop;
    bool hasEnded = false;
    QString path;
    std::exception_ptr error;

    /// The typed error that it ended with, if it did.
    std::optional<DownloadError> failure() const {
        try {
            if (error)
                std::rethrow_exception(error);
        } catch (const DownloadError &failure) {
            return failure;
        } catch (const std::exception &) {
        }
        return std::nullopt;
    }

    bool wasCancelled() const {
        try {
            if (error)
                std::rethrow_exception(error);
        } catch (const Cancelled &) {
            return true;
        } catch (const std::exception &) {
        }
        return false;
    }

    /// The sentence of whatever error it ended with.
    std::string sentence() const {
        try {
            if (error)
                std::rethrow_exception(error);
        } catch (const std::exception &failure) {
            return failure.what();
        }
        return {};
    }
};

/// A models folder, a file to download into it, and a downloader.
class DownloadFixture : public ::testing::Test {
protected:
    using Run = std::shared_ptr<RunningDownload>;
    using Kind = DownloadError::Kind;
    using Manner = FileServer::Manner;

    static QByteArray sampleFile(qsizetype size) {
        QByteArray bytes(size, Qt::Uninitialized);
        QRandomGenerator random(42);
        for (char &byte : bytes)
            byte = static_cast<char>(random.generate());
        return bytes;
    }

    static QString sha256(const QByteArray &bytes) {
        return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    }

    ModelTier tierAt(const QUrl &url, const std::optional<QUrl> &mirror = {}) const {
        ModelTier tier;
        tier.filename = QStringLiteral("model.gguf");
        tier.url = url;
        tier.mirrorURL = mirror;
        tier.sha256 = sha256(file);
        tier.sizeBytes = file.size();
        return tier;
    }

    Run begin(const ModelTier &tier) {
        auto run = std::make_shared<RunningDownload>();
        see(downloader->download(tier, folder.path(), run->stop.get_token()), run);
        return run;
    }

    /// Waits for its end, and hears what was told until then.
    static bool hasEnded(const Run &run) {
        const bool ended = eventually([&] { return run->hasEnded; });
        QCoreApplication::processEvents();
        return ended;
    }

    /// Downloads to the end, whichever it is.
    Run download(const ModelTier &tier) {
        const Run run = begin(tier);
        EXPECT_TRUE(hasEnded(run));
        return run;
    }

    QString finalPath() const { return folder.filePath(QStringLiteral("model.gguf")); }
    QString partialPath() const { return folder.filePath(QStringLiteral("model.gguf.partial")); }
    std::optional<QByteArray> finalFile() const { return readFile(finalPath()); }
    std::optional<QByteArray> partialFile() const { return readFile(partialPath()); }

    void put(const QString &path, const QByteArray &bytes) const {
        QFile target(path);
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        ASSERT_EQ(target.write(bytes), bytes.size());
    }
    void putPartial(const QByteArray &bytes) const { put(partialPath(), bytes); }

    void expectVerified(const Run &run) const {
        EXPECT_EQ(run->sentence(), "");
        EXPECT_EQ(run->path.toStdString(), finalPath().toStdString());
        EXPECT_TRUE(finalFile() == file);
        EXPECT_FALSE(partialFile());
    }

    void expectFailure(const Run &run, Kind kind) const {
        ASSERT_TRUE(run->failure()) << run->sentence();
        EXPECT_EQ(run->failure()->kind(), kind) << run->sentence();
    }

    /// A downloader in another world.
    void useWorld(const ModelDownloader::World &world) {
        downloader = std::make_unique<ModelDownloader>(world);
        listen();
    }

    void listen() {
        downloader->onProgress = [this](const DownloadProgress &progress) { told.append(progress); };
    }

    void SetUp() override { listen(); }

    const QByteArray file = sampleFile(300'000);
    const QTemporaryDir folder;
    QList<DownloadProgress> told;
    std::unique_ptr<ModelDownloader> downloader = std::make_unique<ModelDownloader>();

private:
    static Task<> see(Task<QString> task, Run run) {
        try {
            run->path = co_await task;
        } catch (...) {
            run->error = std::current_exception();
        }
        run->hasEnded = true;
    }
};
