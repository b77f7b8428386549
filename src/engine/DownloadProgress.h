#pragma once

#include <QtGlobal>

/// How far the download of a model is.
struct DownloadProgress {
    qint64 received = 0; ///< bytes on the disk so far, those of earlier attempts included
    qint64 total = 0;    ///< bytes of the whole file
    double bytesPerSecond = 0;
    bool isCheckingPartial = false; ///< what an earlier attempt has left is being hashed

    bool operator==(const DownloadProgress &) const = default;
};
