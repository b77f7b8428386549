#pragma once

#include <QString>

/// What a tool tip has to be given to show that text as it stands, whatever markup it looks like. A long text
/// is cut; an empty one gives no tip.
QString plainTip(const QString &text);
