#include "conversation/DisplayText.h"

#include "client/TextRepair.h"
#include "pages/PageAnalysis.h"

QString displayText(const QString &text) {
    const QString shown = hideTags(text);
    const QStringView view = hidePageWhileStreaming(shown).trimmed();
    return view.size() == shown.size() ? shown : view.toString();
}
