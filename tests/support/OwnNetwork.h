#pragma once

#include <QByteArray>
#include <QList>

/// Gives this process, and all that it starts from now on, a network of its own with these IPv4 addresses
/// and no way out, in which names are looked up in `names` alone, written as in hosts(5). Only before the
/// process has a second thread. False if the system doesn't let it.
bool enterOwnNetwork(const QList<QByteArray> &addresses, const QByteArray &names);
