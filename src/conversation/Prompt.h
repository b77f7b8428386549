#pragma once

#include "records/Settings.h"

#include <QDate>
#include <QJsonArray>
#include <QLocale>
#include <QString>

#include <optional>

/// What the model is told before the conversation. Pure functions.

struct PromptInputs {
    SearchMode searchMode = SearchMode::off;
    bool memoryEnabled = false;
    bool supportsTools = false; ///< of the active model; false without one
    bool allowTools = false;    ///< tools may be offered in this request
    QString memory;
    std::optional<QString> nudge; ///< an instruction for this request alone
    QDate today;
    QLocale locale;
};

/// The system prompt of one request of a turn.
QString systemPrompt(const PromptInputs &inputs);

/// The messages of a request as the wire wants them: the system prompt first, then all messages but
/// those of the system role. Earlier thinking, search events and pages aren't sent.
QJsonArray wireMessages(const QList<Message> &messages, const QString &systemPrompt);
