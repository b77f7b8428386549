#include "download/FileSender.h"
#include "download/MeasuredProcess.h"
#include "figures/Figure.h"
#include "figures/Median.h"
#include "platform/GrowingFile.h"
#include "records/IncrementalHasher.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

// A model's file of 1 GB over the loopback: the download and the check of what an earlier one has left,
// each beside what a shell would do. Where the folder lies in memory, the disk's own pace isn't measured.

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 size = 1'000'000'000;
constexpr int rounds = 5;

/// Makes the file, and gives its SHA-256.
std::string makeFile(const QString &path) {
    IncrementalHasher hasher;
    GrowingFile file(path);
    QByteArray piece(10'000'000, Qt::Uninitialized);
    QRandomGenerator random(1);
    for (qint64 written = 0; written < size; written += piece.size()) {
        random.fillRange(reinterpret_cast<quint32 *>(piece.data()), piece.size() / 4);
        file.append({piece});
        hasher.update(piece);
    }
    file.flush();
    return hasher.hexDigest().toStdString();
}

/// The program and its peer, in turn; what lies in the folder is removed before each, and `prepare` puts
/// there what they begin with.
void measure(const std::string &name, double mostRatio, const QString &folder,
             const std::vector<std::string> &ours, const std::vector<std::string> &peer,
             const std::function<void()> &prepare, const std::string &filter) {
    const std::string memoryName = name + ", peak memory";
    if (!isWanted(memoryName, filter))
        return;
    const auto run = [&](const std::vector<std::string> &commandLine) {
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        prepare();
        return runMeasured(commandLine);
    };
    std::vector<double> seconds;
    std::vector<double> peerSeconds;
    std::vector<double> megabytes;
    for (int round = 0; round < rounds; ++round) {
        peerSeconds.push_back(run(peer).seconds);
        const Needed needed = run(ours);
        seconds.push_back(needed.seconds);
        megabytes.push_back(needed.peakMegabytes);
    }
    print({.name = name,
           .value = median(seconds),
           .unit = "s",
           .peer = median(peerSeconds),
           .budget = {.mostRatio = mostRatio}});
    print({.name = memoryName, .value = median(megabytes), .unit = "MB"});
}

void measureAll(const std::string &filter) {
    const QTemporaryDir onDisk;
    const QTemporaryDir inMemory(u"/dev/shm/ostrelin-XXXXXX"_s);
    if (!onDisk.isValid() || !inMemory.isValid())
        throw std::runtime_error("there is no room for temporary files");
    const QString source = onDisk.filePath(u"source"_s);
    const std::string digest = makeFile(source);
    const FileSender server(source.toStdString());
    const auto ours = [&](const QString &folder) {
        return std::vector<std::string>{BENCH_DOWNLOADING, server.url(), folder.toStdString(),
                                        std::to_string(size), digest};
    };
    const auto shell = [](const std::string &line) { return std::vector<std::string>{"sh", "-c", line}; };
    const auto nothing = [] {};

    const QString memory = inMemory.filePath(u"models"_s);
    const std::string curl = "curl -s " + server.url();
    measure("1 GB downloaded, verified (peer: curl | sha256sum)", 1.25, memory, ours(memory),
            shell(curl + " | sha256sum"), nothing, filter);

    const QString disk = onDisk.filePath(u"models"_s);
    const std::string copy = disk.toStdString() + "/copy";
    measure("onto the disk (peer: curl | tee | sha256sum; sync)", 1.25, disk, ours(disk),
            shell(curl + " | tee " + copy + " | sha256sum; sync " + copy), nothing, filter);

    const QString partial = memory + u"/model.gguf.partial"_s;
    measure(
        "1 GB partial file checked (peer: openssl dgst)", 1.1, memory, ours(memory),
        {"openssl", "dgst", "-sha256", partial.toStdString()}, [&] { QFile::copy(source, partial); }, filter);
}

} // namespace

int main(int argc, char **argv) {
    try {
        measureAll(argc > 1 ? argv[1] : "");
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
