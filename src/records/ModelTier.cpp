#include "records/ModelTier.h"

#include "records/ConversationCoding.h"
#include "records/JsonFields.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr auto modelTierFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("displayName"_L1, value.displayName);
    record.required("filename"_L1, value.filename);
    record.required("url"_L1, value.url);
    record.optional("mirrorURL"_L1, value.mirrorURL);
    record.required("sha256"_L1, value.sha256);
    record.required("sizeBytes"_L1, value.sizeBytes);
    record.required("requiredGPUBytes"_L1, value.requiredGPUBytes);
    record.required("minRAMBytes"_L1, value.minRAMBytes);
    record.required("contextLength"_L1, value.contextLength);
    record.required("sampling"_L1, value.sampling);
    record.required("thinkingSampling"_L1, value.thinkingSampling);
    record.required("supportsTools"_L1, value.supportsTools);
    record.required("license"_L1, value.license);
    record.optional("gpuBytesProvisional"_L1, value.gpuBytesProvisional);
};

constexpr auto catalogFields = [](auto &record, auto &value) {
    record.required("version"_L1, value.version);
    record.required("tiers"_L1, value.tiers);
};

constexpr auto installedModelFields = [](auto &record, auto &value) {
    record.required("tierId"_L1, value.tierId);
    record.required("displayName"_L1, value.displayName);
    record.required("filename"_L1, value.filename);
    record.required("contextLength"_L1, value.contextLength);
    record.required("sampling"_L1, value.sampling);
    record.required("thinkingSampling"_L1, value.thinkingSampling);
    record.required("supportsTools"_L1, value.supportsTools);
    record.required("license"_L1, value.license);
    record.required("sizeBytes"_L1, value.sizeBytes);
};

} // namespace

QJsonValue encode(const ModelTier &value) {
    return encodeFields(value, modelTierFields);
}

QJsonValue encode(const Catalog &value) {
    return encodeFields(value, catalogFields);
}

QJsonValue encode(const InstalledModel &value) {
    return encodeFields(value, installedModelFields);
}

void decode(const QJsonValue &json, ModelTier &value) {
    decodeFields(json, value, modelTierFields);
}

void decode(const QJsonValue &json, Catalog &value) {
    decodeFields(json, value, catalogFields);
}

void decode(const QJsonValue &json, InstalledModel &value) {
    decodeFields(json, value, installedModelFields);
}

bool isModelFilename(const QString &name) {
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/') &&
           !name.contains(QChar::Null) && !name.endsWith(u".partial"_s) && name != u"CACHEDIR.TAG"_s;
}

std::optional<ModelTier> tierWithId(const QString &id, const Catalog &catalog) {
    const auto found = std::find_if(catalog.tiers.begin(), catalog.tiers.end(),
                                    [&](const ModelTier &tier) { return tier.id == id; });
    return found == catalog.tiers.end() ? std::nullopt : std::optional(*found);
}

ModelTier tierOf(const InstalledModel &model, const QString &path) {
    return {.id = model.tierId,
            .displayName = model.displayName,
            .filename = model.filename,
            .url = QUrl::fromLocalFile(path),
            .mirrorURL = {},
            .sha256 = {},
            .sizeBytes = model.sizeBytes,
            .requiredGPUBytes = 0,
            .minRAMBytes = 0,
            .contextLength = model.contextLength,
            .sampling = model.sampling,
            .thinkingSampling = model.thinkingSampling,
            .supportsTools = model.supportsTools,
            .license = model.license,
            .gpuBytesProvisional = {}};
}
