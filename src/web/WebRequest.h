#pragma once

#include "platform/Http.h"

/// A request such as a browser would make: redirects are followed, and the body may come compressed.
/// `idleTimeout` is how long the server may be silent.
HttpRequest webRequest(const QUrl &url, std::chrono::milliseconds idleTimeout);
