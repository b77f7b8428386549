#include "conversation/TextRepairPoints.h"

#include "client/TextRepair.h"
#include "client/WrittenToolCalls.h"

TurnPoints textRepairPoints() {
    TurnPoints points;
    points.extractThinking = [](const QString &content) {
        const ExtractedThinking found = extractThinking(content);
        return TurnPoints::RecoveredThinking{found.thinking, found.text};
    };
    points.extractToolCalls = [](const QString &content) {
        const ExtractedToolCalls found = extractToolCalls(content);
        return TurnPoints::RecoveredCalls{found.calls, found.text};
    };
    return points;
}
