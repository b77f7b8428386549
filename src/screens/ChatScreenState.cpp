#include "screens/ChatScreenState.h"

#include "core/AppState.h"

ChatScreenState chatScreenState(AppState &app) {
    const ChatController &chat = app.chat();
    const Consent &consent = app.chat().consent();
    return {.conversation = chat.conversation(),
            .streamingID = chat.streamingID(),
            .isGenerating = chat.isGenerating(),
            .pendingPermission = consent.pendingPermission(),
            .pendingPageOffer = consent.pendingPageOffer(),
            .pendingMemory = consent.pendingMemory(),
            .generatingID = chat.generatingID(),
            .showSearchHint = chat.showSearchHint(),
            .searchMode = app.settings().searchMode,
            .engine = app.engine().status(),
            .activeTier = app.activeTier(),
            .needsMoveToApplications = app.needsMoveToApplications(),
            .upgradeBanner = chat.upgradeBanner(),
            .availableUpdate = app.availableUpdate(),
            .memoryWarning = chat.memoryWarning(),
            .responseSpeed = app.settings().responseSpeed};
}

void observeChatScreenState(AppState &app, QObject *receiver, const std::function<void()> &changed) {
    const ChatController &chat = app.chat();
    QObject::connect(&chat, &ChatController::conversationChanged, receiver, changed);
    QObject::connect(&chat, &ChatController::isGeneratingChanged, receiver, changed);
    QObject::connect(&chat, &ChatController::streamingIDChanged, receiver, changed);
    QObject::connect(&chat, &ChatController::upgradeBannerChanged, receiver, changed);
    QObject::connect(&chat, &ChatController::memoryWarningChanged, receiver, changed);
    QObject::connect(&chat, &ChatController::showSearchHintChanged, receiver, changed);
    const Consent &consent = app.chat().consent();
    QObject::connect(&consent, &Consent::pendingPermissionChanged, receiver, changed);
    QObject::connect(&consent, &Consent::pendingPageOfferChanged, receiver, changed);
    QObject::connect(&consent, &Consent::pendingMemoryChanged, receiver, changed);
    QObject::connect(&app.engine(), &EngineManager::statusChanged, receiver, changed);
    QObject::connect(&app, &AppState::activeTierChanged, receiver, changed);
    QObject::connect(&app, &AppState::needsMoveToApplicationsChanged, receiver, changed);
    QObject::connect(&app, &AppState::settingsChanged, receiver, changed);
    QObject::connect(&app.updates(), &UpdateChecker::statusChanged, receiver, changed);
}
