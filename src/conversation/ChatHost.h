#pragma once

#include "records/Settings.h"

#include <QObject>
#include <QUrl>

#include <optional>

/// What a conversation asks of the application around it. Whoever owns the chat implements it; the
/// chat holds it weakly. Main thread only.
class ChatHost : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    virtual const Settings &settings() const = 0;

    /// Takes over changed settings and writes them.
    virtual void saveSettings(const Settings &settings) = 0;

    /// The model that runs; nothing while there is none.
    virtual std::optional<ModelTier> activeTier() const = 0;

    /// The text of the person's memory file.
    virtual QString memory() const = 0;

    /// Adds a line for a fact to the memory file.
    virtual void rememberFact(const QString &fact) = 0;

    /// Where the engine answers, and its key; nothing while there is no engine.
    virtual std::optional<QUrl> engineURL() const = 0;
    virtual QString engineKey() const = 0;
};
