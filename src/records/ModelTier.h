#pragma once

#include "records/Conversation.h"

#include <QJsonValue>
#include <QUrl>

/// One entry of the catalog: one model that the program can download and run.
struct ModelTier {
    QString id;
    QString displayName;
    QString filename; ///< inside the models folder
    QUrl url;
    std::optional<QUrl> mirrorURL;
    QString sha256; ///< of the file, hexadecimal
    qint64 sizeBytes = 0;
    qint64 requiredGPUBytes = 0;
    qint64 minRAMBytes = 0;
    qint64 contextLength = 0; ///< tokens
    Sampling sampling;
    Sampling thinkingSampling;
    bool supportsTools = false;
    QString license;
    std::optional<bool> gpuBytesProvisional;

    bool operator==(const ModelTier &) const = default;
};

/// True for a name that a model's file may have inside the models folder: a plain name, and none that means
/// something else there.
bool isModelFilename(const QString &name);

/// The models on offer, from the heaviest and best to the lightest.
struct Catalog {
    qint64 version = 0;
    QList<ModelTier> tiers;

    bool operator==(const Catalog &) const = default;
};

/// What the settings remember of the model on disk, so that the program starts without the catalog.
struct InstalledModel {
    QString tierId;
    QString displayName;
    QString filename;
    qint64 contextLength = 0;
    Sampling sampling;
    Sampling thinkingSampling;
    bool supportsTools = false;
    QString license;
    qint64 sizeBytes = 0;

    bool operator==(const InstalledModel &) const = default;
};

/// The catalog's tier of that id; nothing if it has none.
std::optional<ModelTier> tierWithId(const QString &id, const Catalog &catalog);

/// A tier for an installed model that is in no catalog; its file lies at `path`.
ModelTier tierOf(const InstalledModel &model, const QString &path);

/// Strict JSON forms, as in ConversationCoding.h; the optional fields are written only when present.
QJsonValue encode(const ModelTier &value);
QJsonValue encode(const Catalog &value);
QJsonValue encode(const InstalledModel &value);
void decode(const QJsonValue &json, ModelTier &value);
void decode(const QJsonValue &json, Catalog &value);
void decode(const QJsonValue &json, InstalledModel &value);
