#pragma once

#include <QStringView>

/// What the chat shows of a reply that is still coming: the lines before the first one that, without the
/// blanks around it, begins with "```page" in exactly these letters; all of it if there is none. This is
/// deliberately coarser than what a finished reply is split by: the page may not be closed yet. A view
/// into `text`, in one pass. Any thread.
QStringView hidePageWhileStreaming(QStringView text);
