#pragma once

#include <QString>

/// What of an assistant message's text is shown, finished or still coming: no tags of thinking and of
/// tool calls with what stands in them, no page that streams, no white space at the ends. One pass. Any
/// thread.
QString displayText(const QString &text);
