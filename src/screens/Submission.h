#pragma once

#include "records/Conversation.h"

/// What the pressing of "send" comes to.
struct Submission {
    enum class Kind {
        send,   ///< `text` goes to the assistant as it was written
        refuse, ///< nothing is sent, and the person reads `text`
    };

    Kind kind = Kind::refuse;
    QString text;

    bool operator==(const Submission &) const = default;
};

/// The rule of sending: not while a reply is written, and not without a word or a file.
Submission submission(const QString &text, const QList<Attachment> &attachments, bool isGenerating);
