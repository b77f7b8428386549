#include "engine/EngineBuild.h"

#include "platform/AtomicFile.h"

using namespace Qt::StringLiterals;

QString engineBuild(const QString &resourcesFolder) {
    constexpr qint64 longest = 100;
    const auto text = readFile(resourcesFolder + u"/engine-build.txt"_s, longest);
    return QString::fromUtf8(text.value_or(QByteArray())).simplified();
}
