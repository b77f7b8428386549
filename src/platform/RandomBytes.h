#pragma once

#include <QByteArray>

/// Bytes from the system's own generator for secrets. Any thread.
QByteArray randomBytes(qsizetype count);
