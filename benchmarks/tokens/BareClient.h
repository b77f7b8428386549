#pragma once

#include <QByteArray>

/// The least that a client can do: a blocking socket that sends a request and reads until the answer's
/// end, looking at nothing.
class BareClient {
public:
    explicit BareClient(quint16 port) : m_port(port) {}

    /// The bytes of the answer to a POST with this body, head and chunk sizes included. Throws
    /// std::system_error if the socket fails.
    QByteArray post(const QByteArray &path, const QByteArray &key, const QByteArray &body) const;

private:
    quint16 m_port;
};
