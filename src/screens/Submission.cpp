#include "screens/Submission.h"

using namespace Qt::StringLiterals;

Submission submission(const QString &text, const QList<Attachment> &attachments, bool isGenerating) {
    using Kind = Submission::Kind;
    if (isGenerating)
        return {Kind::refuse, u"Ostrelin is still answering. Stop that first, or wait for it to finish."_s};
    if (text.trimmed().isEmpty() && attachments.isEmpty())
        return {Kind::refuse, u"Did you forget to type a message to the AI?"_s};
    return {Kind::send, text};
}
