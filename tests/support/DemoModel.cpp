#include "support/DemoModel.h"

#include "platform/AtomicFile.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "records/Settings.h"

#include <QFile>

using namespace Qt::StringLiterals;

QString demoModelPath() {
    return QStringLiteral(RESOURCES_FOLDER "/demo/sprout.gguf");
}

ModelTier demoTier(const QUrl &url) {
    auto tier = decodeRecord<ModelTier>(readFile(QStringLiteral(RESOURCES_FOLDER "/demo/tier.json")).value());
    tier.url = url;
    return tier;
}

void installDemoModel() {
    const ModelTier tier = demoTier();
    ensureFolders();
    QFile::link(demoModelPath(), modelsFolder() + u'/' + tier.filename);
    Settings settings;
    settings.didFinishWelcome = true;
    settings.installed = InstalledModel{.tierId = tier.id,
                                        .displayName = tier.displayName,
                                        .filename = tier.filename,
                                        .contextLength = tier.contextLength,
                                        .sampling = tier.sampling,
                                        .thinkingSampling = tier.thinkingSampling,
                                        .supportsTools = tier.supportsTools,
                                        .license = tier.license,
                                        .sizeBytes = tier.sizeBytes};
    saveSettings(settings);
}
