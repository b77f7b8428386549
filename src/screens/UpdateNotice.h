#pragma once

#include "core/UpdateInfo.h"

/// The sentence that tells of a newer release.
inline QString updateNotice(const UpdateInfo &info) {
    return QStringLiteral("Ostrelin ") + info.version + QStringLiteral(" is available.");
}
