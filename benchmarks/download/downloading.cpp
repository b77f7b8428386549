// Downloads a file of so many bytes with that SHA-256 into a folder, as the program does. The status is 0
// if it is there and verified.
//
//   bench_downloading <address> <folder> <bytes> <sha256>

#include "engine/ModelDownloader.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

namespace {

Task<> run(ModelDownloader &downloader, ModelTier tier, QString folder) {
    try {
        co_await downloader.download(tier, folder, {});
        QCoreApplication::exit(0);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        QCoreApplication::exit(1);
    }
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 5)
        return 1;
    QCoreApplication application(argc, argv);
    ModelTier tier;
    tier.filename = QStringLiteral("model.gguf");
    tier.url = QUrl(QString::fromLocal8Bit(argv[1]));
    tier.sizeBytes = QByteArray(argv[3]).toLongLong();
    tier.sha256 = QString::fromLatin1(argv[4]);
    ModelDownloader downloader;
    QTimer::singleShot(0, &application, [&] { run(downloader, tier, QString::fromLocal8Bit(argv[2])); });
    return QCoreApplication::exec();
}
