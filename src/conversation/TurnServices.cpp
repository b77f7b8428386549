#include "conversation/TurnServices.h"

#include "client/PacedStream.h"
#include "conversation/ChatTitle.h"
#include "conversation/PageReply.h"
#include "conversation/SearchHint.h"
#include "conversation/ToolList.h"

TurnPoints turnServices(Clock &clock, const WebAccess &web) {
    TurnPoints points;
    points.extractThinking = extractThinking;
    points.extractToolCalls = extractToolCalls;
    points.pacedStream = [&clock](const LLMClient &client, const StreamRequest &request,
                                  ResponseSpeed speed) -> std::unique_ptr<ChunkStream> {
        const std::optional<Pace> pace = paceOf(speed);
        if (!pace)
            return client.stream(request);
        return std::make_unique<PacedStream>(client, request, *pace, clock);
    };
    points.toolList = toolList;
    points.runTool = [web](const ToolCall &call, const TurnPoints::ToolContext &context,
                           std::stop_token stop) { return runTool(web, call, context, stop); };
    points.makeTitle = makeTitle;
    points.pageCorrection = correctionOf;
    points.finishPage = finishPage;
    points.suggestsSearch = suggestsSearch;
    return points;
}
