#include "pages/PageDocument.h"

#include "records/JsonFields.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto documentFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("title"_L1, value.title);
    record.required("markdown"_L1, value.markdown);
    record.required("createdAt"_L1, value.createdAt);
    record.required("updatedAt"_L1, value.updatedAt);
};

} // namespace

QJsonValue encode(const PageDocument &value) {
    return encodeFields(value, documentFields);
}

void decode(const QJsonValue &json, PageDocument &value) {
    decodeFields(json, value, documentFields);
}
