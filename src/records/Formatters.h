#pragma once

#include <QString>

/// A byte count in decimal units: "10 GB", "9.9 GB", "640 MB".
QString formatBytes(qint64 bytes);

/// The rest of a wait: "about 5 min left", "about a minute left", or "calculating time left" when
/// `seconds` isn't finite or isn't above zero.
QString formatTimeLeft(double seconds);
