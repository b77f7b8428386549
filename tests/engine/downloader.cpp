// Downloads a file of so many bytes with that SHA-256 into a folder, and prints how it went: "done", or
// "full" for a full disk, or the sentence of another error; then what is left of the partial file. Or says
// whether there is a network.
//
//   engine_downloader <address> <folder> <bytes> <sha256>
//   engine_downloader network

#include "engine/ModelDownloader.h"
#include "platform/NetworkState.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

Task<> run(ModelDownloader &downloader, ModelTier tier, QString folder) {
    try {
        co_await downloader.download(tier, folder, {});
        std::puts("done");
    } catch (const DownloadError &error) {
        std::puts(error.kind() == DownloadError::Kind::diskFull ? "full" : error.what());
    } catch (const std::exception &error) {
        std::puts(error.what());
    }
    std::printf("%lld\n", static_cast<long long>(QFileInfo(folder + u"/model.gguf.partial"_s).size()));
    // The download may be over before the event loop has begun.
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
}

} // namespace

int main(int argc, char **argv) {
    if (argc == 2 && std::strcmp(argv[1], "network") == 0)
        return std::puts(hasNetwork() ? "yes" : "no") < 0;
    if (argc != 5)
        return 1;
    QCoreApplication application(argc, argv);
    ModelTier tier;
    tier.filename = u"model.gguf"_s;
    tier.url = QUrl(QString::fromLocal8Bit(argv[1]));
    tier.sizeBytes = QByteArray(argv[3]).toLongLong();
    tier.sha256 = QString::fromLatin1(argv[4]);
    ModelDownloader downloader;
    const Task<> task = run(downloader, tier, QString::fromLocal8Bit(argv[2]));
    return QCoreApplication::exec();
}
