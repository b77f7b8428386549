#include "records/Settings.h"

#include "platform/AtomicFile.h"
#include "records/Folders.h"
#include "records/JsonFields.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto settingsFields = [](auto &record, auto &value) {
    record.defaulted("searchMode"_L1, value.searchMode);
    record.defaulted("responseSpeed"_L1, value.responseSpeed);
    record.defaulted("memoryEnabled"_L1, value.memoryEnabled);
    record.optional("installed"_L1, value.installed);
    record.optional("dismissedUpgradeTierId"_L1, value.dismissedUpgradeTierId);
    record.optional("dismissedUpdateVersion"_L1, value.dismissedUpdateVersion);
    record.defaulted("didFinishWelcome"_L1, value.didFinishWelcome);
    record.defaulted("theme"_L1, value.theme);
    record.defaulted("schedulesEnabled"_L1, value.schedulesEnabled);
    record.defaulted("textSize"_L1, value.textSize);
    record.defaulted("typeFace"_L1, value.typeFace);
};

} // namespace

QJsonValue encode(const Settings &value) {
    return encodeFields(value, settingsFields);
}

void decode(const QJsonValue &json, Settings &value) {
    decodeFields(json, value, settingsFields);
}

Settings loadSettings() {
    try {
        return decodeRecord<Settings>(readFile(settingsFile()).value_or(QByteArray()));
    } catch (const DecodingError &) {
        return {};
    }
}

void saveSettings(const Settings &settings) {
    try {
        writeAtomically(settingsFile(), encodeRecord(settings));
    } catch (const EncodingError &) {
    } catch (const FileError &) {
    }
}
