#pragma once

#include "client/OstrelinError.h"

#include <optional>

/// What an HTTP status other than 200 to 299 means to the caller; nothing for those. The answer's own
/// text is never looked at.
inline std::optional<OstrelinError> refusalOf(int status) {
    if (status == 401)
        return OstrelinError::message(QStringLiteral("The engine rejected the request."));
    if (status < 200 || status > 299)
        return OstrelinError::message(QStringLiteral("Ostrelin couldn't complete that reply."));
    return std::nullopt;
}
