#pragma once

#include <QString>

/// A chat's title as a window shows it: on one line, and never so that there is nothing to see, to read
/// aloud or to click.
QString shownTitle(const QString &title);
