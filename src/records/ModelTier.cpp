#include "records/ModelTier.h"

#include "records/ConversationCoding.h"
#include "records/JsonFields.h"

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
