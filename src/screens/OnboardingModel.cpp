#include "screens/OnboardingModel.h"

#include "records/Formatters.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Button = OnboardingModel::Button;
using Top = OnboardingModel::Top;

double fractionOf(const std::optional<DownloadProgress> &progress) {
    if (!progress || progress->total < 1)
        return 0;
    return std::clamp(double(progress->received) / double(progress->total), 0.0, 1.0);
}

QString timeLeft(const DownloadProgress &progress) {
    if (progress.bytesPerSecond > 1)
        return formatTimeLeft(double(progress.total - progress.received) / progress.bytesPerSecond);
    return u"calculating time left"_s;
}

QString statusOf(const std::optional<DownloadProgress> &progress) {
    if (!progress)
        return u"This happens once."_s;
    if (progress->isCheckingPartial)
        return u"Checking the download…"_s;
    return formatBytes(progress->received) + u" of "_s + formatBytes(progress->total) + u" · "_s +
           timeLeft(*progress);
}

/// Shows what belongs to a phase, one function for each.
class PhaseReader {
public:
    PhaseReader(const OnboardingState &state, OnboardingModel &model) : m_state(state), m_model(model) {}

    void operator()(const phase::Checking &) { m_model.showsSpinner = true; }

    void operator()(const phase::Welcome &) {
        m_model.tagline = u"Free. Private. Works offline."_s;
        m_model.buttons = {Button::getStarted};
    }

    void operator()(const phase::NeedsInitialization &) {
        m_model.top = Top::icon;
        m_model.tagline = u"To get started, initialize Ostrelin."_s;
        m_model.buttons = {Button::start};
    }

    void operator()(const phase::Downloading &) {
        const auto &tier = m_state.activeTier ? m_state.activeTier : m_state.pendingTier;
        m_model.top = Top::fillingName;
        m_model.filling = fractionOf(m_state.downloadProgress);
        m_model.download = {.headline = u"Setting up Ostrelin for your Mac · "_s +
                                        formatBytes(tier ? tier->sizeBytes : 0),
                            .fraction = m_model.filling,
                            .status = statusOf(m_state.downloadProgress),
                            .note = m_state.diskNote.value_or(QString())};
        m_model.buttons = {Button::whySize, m_state.isDownloadPaused ? Button::resume : Button::pause};
    }

    void operator()(const phase::Starting &) {
        m_model.top = Top::fillingName;
        m_model.filling = fractionOf(m_state.downloadProgress);
        m_model.isWaking = true;
        m_model.callout = u"Waking up Ostrelin…"_s;
    }

    void operator()(const phase::Error &error) {
        m_model.message = error.message;
        m_model.buttons = {Button::tryAgain, Button::copyDiagnostics};
        if (error.canTryLighter)
            m_model.buttons.append(Button::tryLighter);
    }

    void operator()(const phase::Unsupported &unsupported) { m_model.message = unsupported.reason; }

    void operator()(const phase::NeedsDownload &) {}
    void operator()(const phase::Ready &) {}

private:
    const OnboardingState &m_state;
    OnboardingModel &m_model;
};

} // namespace

OnboardingModel onboardingModel(const OnboardingState &state) {
    OnboardingModel model;
    std::visit(PhaseReader(state, model), state.phase);
    return model;
}

QString nameOf(Button button) {
    switch (button) {
    case Button::getStarted:
        return u"Get started"_s;
    case Button::start:
        return u"Start"_s;
    case Button::tryAgain:
        return u"Try again"_s;
    case Button::copyDiagnostics:
        return u"Copy diagnostic info"_s;
    case Button::tryLighter:
        return u"Switch to a lighter model"_s;
    case Button::whySize:
        return u"Why this size?"_s;
    case Button::pause:
        return u"Pause"_s;
    case Button::resume:
        return u"Resume"_s;
    }
    Q_UNREACHABLE();
}

bool isLoud(Button button) {
    return button == Button::getStarted || button == Button::start || button == Button::tryAgain;
}
