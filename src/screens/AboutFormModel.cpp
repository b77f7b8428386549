#include "screens/AboutFormModel.h"

#include "screens/UpdateNotice.h"

using namespace Qt::StringLiterals;

namespace {

QString textOf(const UpdateStatus &status) {
    switch (status.state) {
    case UpdateStatus::State::idle:
        return {};
    case UpdateStatus::State::checking:
        return u"Checking…"_s;
    case UpdateStatus::State::failed:
        return u"Couldn't check for updates."_s;
    case UpdateStatus::State::upToDate:
        return u"Up to date."_s;
    case UpdateStatus::State::available:
        return updateNotice(status.info);
    }
    Q_UNREACHABLE();
}

/// What the installed model says, else the one in use, else `otherwise`.
template<typename Field, typename TierField>
QString ofModel(const AboutState &state, Field field, TierField tierField, const QString &otherwise) {
    if (state.settings.installed)
        return *state.settings.installed.*field;
    return state.activeTier ? *state.activeTier.*tierField : otherwise;
}

} // namespace

AboutFormModel aboutFormModel(const AboutState &state) {
    const QString name = ofModel(state, &InstalledModel::displayName, &ModelTier::displayName, {});
    const QString licence = ofModel(state, &InstalledModel::license, &ModelTier::license, u"Apache-2.0"_s);
    AboutFormModel model{.version = u"%1 (%2)"_s.arg(state.program.version).arg(state.program.build),
                         .poweredBy = u"Powered by "_s + name + u" via llama.cpp"_s,
                         .engine = u"llama.cpp "_s + state.engineBuild,
                         .licences = u"Models: "_s + licence + u". llama.cpp is MIT."_s,
                         .canCheck = state.settings.searchMode != SearchMode::off};
    if (!model.canCheck)
        return model;
    model.updates = textOf(state.updates);
    const UpdateInfo &info = state.updates.info;
    if (state.updates.state == UpdateStatus::State::available && info.downloadURL) {
        model.downloading = u"Download "_s + info.version;
        model.downloadURL = *info.downloadURL;
    }
    return model;
}
