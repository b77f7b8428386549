#pragma once

#include "conversation/ChatController.h"
#include "conversation/ChatHost.h"
#include "core/AppPhase.h"
#include "engine/EngineManager.h"

#include <QObject>

#include <optional>

class Clock;
class EngineProcessBox;

/// The root of the interactive program: it owns the engine and the chat, holds the phase that the main
/// window shows, and leads from a cold start to a ready chat. Main thread only.
class AppState : public ChatHost {
    Q_OBJECT

public:
    /// `box` and `clock` must outlive this object.
    AppState(EngineProcessBox &box, Clock &clock, QObject *parent = nullptr);
    ~AppState() override;

    const AppPhase &phase() const { return m_phase; }
    const Settings &settings() const override { return m_settings; }
    std::optional<ModelTier> activeTier() const override { return m_activeTier; }
    QString memory() const override { return m_memory; }
    std::optional<QUrl> engineURL() const override { return m_engine.baseURL(); }
    QString engineKey() const override { return m_engine.apiKey(); }

    EngineManager &engine() { return m_engine; }
    ChatController &chat() { return m_chat; }

    /// Prepares folders, memory and settings, ends a server that an earlier run left behind, and starts
    /// the engine. Returns at once; the phase tells how far it is. A second call does nothing.
    void bootstrap();

    /// Looks for a model and starts the engine with it: the file that OSTRELIN_MODEL_PATH names if it
    /// exists, else the installed model, else the demo model that comes with the program.
    void resolveModel();

    /// Ends the running turn and the engine, and waits for the engine's end. For the end of the program.
    void shutDown();

Q_SIGNALS:
    void phaseChanged();
    void settingsChanged();
    void activeTierChanged();

private:
    struct Model {
        QString path;
        std::optional<ModelTier> tier;
    };

    Model findModel() const;
    void setPhase(const AppPhase &phase);
#ifndef Q_MOC_RUN
    Task<> startEngine(Model model, std::stop_token stop);
#endif

    EngineProcessBox &m_box;
    EngineManager m_engine;
    ChatController m_chat;
    AppPhase m_phase;
    Settings m_settings;
    std::optional<ModelTier> m_activeTier;
    QString m_memory;
    bool m_didBootstrap = false;
    TaskHandle m_startTask;
};
