#include "conversation/PageReply.h"

#include "conversation/MessagePlaces.h"
#include "pages/PageAnalysis.h"

using namespace Qt::StringLiterals;

QString pageCorrection() {
    return u"Your last reply did not contain a usable page. Reply again with a single ```page fenced block, "
           "close the fence, keep it non-empty, and use only these directive blocks: metric, chart, line, "
           "donut, progress, callout, timeline, sources, flow, compare, cards, spec, subtitle, divider. Put "
           "nothing outside the ```page block."_s;
}

std::optional<QString> correctionOf(const QString &content) {
    return analyzePageReply(content).issue ? std::optional(pageCorrection()) : std::nullopt;
}

std::optional<PageDocument> finishPage(Conversation &conversation, bool isAccepted, const QDateTime &now) {
    const qsizetype place = lastAssistant(conversation.messages);
    if (place < 0)
        return std::nullopt;
    Message &reply = conversation.messages[place];
    const PageAnalysis analysis = analyzePageReply(reply.content);
    if (!analysis.page && !isAccepted)
        return std::nullopt;
    reply.content = analysis.visible;
    if (!analysis.page) {
        reply.pageFailed = true;
        return std::nullopt;
    }
    reply.page = analysis.page;
    return isAccepted ? std::optional(draftOf(*analysis.page, now)) : std::nullopt;
}

PageDocument draftOf(const PageSnapshot &page, const QDateTime &now) {
    return {.id = QUuid::createUuid(),
            .title = page.title,
            .markdown = page.markdown,
            .createdAt = now,
            .updatedAt = now};
}
