#pragma once

#include "records/Conversation.h"

/// A title of a chat or a page as a window shows it: on one line, and `otherwise` where there would be
/// nothing to see, to read aloud or to click.
QString shownTitle(const QString &title, QStringView otherwise = defaultTitle);
