#pragma once

#include "records/Conversation.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

/// Repairs a reply into whose text the model wrote its tool calls, between <tool_call> tags. One pass,
/// however many tags there are and whether or not they are closed. Any thread.

struct ExtractedToolCalls {
    QString text;          ///< what the tags left
    QList<ToolCall> calls; ///< in the order in which they were written

    bool operator==(const ExtractedToolCalls &) const = default;
};

/// Takes the calls out of a finished reply, whose thinking has been taken out before. A block that holds
/// no call goes as well. The text comes without white space at its ends, or as it is if no "<tool_call>"
/// stands in it, in this exact case; one without its end stays.
ExtractedToolCalls extractToolCalls(const QString &text);

/// The call that stands in the tags at place `ordinal`, counted from 0, whose number its id carries:
/// either a JSON object with `name` and `arguments`, or <function=name> followed by pairs of
/// <parameter=key>value</parameter>, whose values are all strings. Nothing if it is neither.
std::optional<ToolCall> parseToolCallBody(QStringView body, qsizetype ordinal);
