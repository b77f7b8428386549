#pragma once

#include <QtGlobal>

#include <optional>

/// A TCP port of 127.0.0.1 that is free at this moment, chosen by the kernel; nothing holds it
/// afterwards. Nothing if the kernel gives none. Any thread.
std::optional<quint16> freeLoopbackPort();
