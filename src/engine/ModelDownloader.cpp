#include "engine/ModelDownloader.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

struct ModelDownloader::Shared {
    World world;
};

ModelDownloader::ModelDownloader() : ModelDownloader(World()) {}

ModelDownloader::ModelDownloader(World world) : m_shared(std::make_shared<Shared>()) {
    m_shared->world = std::move(world);
}

ModelDownloader::~ModelDownloader() = default;

Task<QString> ModelDownloader::download(ModelTier tier, QString modelsFolder, std::stop_token) {
    const QString path = modelsFolder + u'/' + tier.filename;
    if (QFileInfo(path).isFile())
        co_return path;
    throw DownloadError::message(u"The download could not be saved."_s);
}

void ModelDownloader::pause() {}
