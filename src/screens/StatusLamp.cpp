#include "screens/StatusLamp.h"

using namespace Qt::StringLiterals;

namespace {

StatusLamp lamp(StatusLamp::Color color, StatusLamp::Light light, const QString &word) {
    return {color, light, u"Ostrelin status: "_s + word};
}

} // namespace

StatusLamp statusLamp(const EngineStatus &status) {
    using Color = StatusLamp::Color;
    using Light = StatusLamp::Light;
    switch (status.state) {
    case EngineStatus::State::stopped:
        return lamp(Color::quiet, Light::steady, u"Stopped"_s);
    case EngineStatus::State::starting:
    case EngineStatus::State::loading:
        return lamp(Color::waking, Light::pulsing, u"Waking up"_s);
    case EngineStatus::State::ready:
        return lamp(Color::good, Light::steady, u"Ready"_s);
    case EngineStatus::State::failed:
        return lamp(Color::bad, Light::steady, u"Engine error"_s);
    }
    Q_UNREACHABLE();
}
