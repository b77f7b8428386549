#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// An address of the Internet protocol, version 4 or 6. Any thread.
class IPAddress {
public:
    /// `bytes` stand in network order: four of IPv4, or sixteen of IPv6.
    explicit IPAddress(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    /// The address that `text` spells out: four decimal numbers, or IPv6 with no brackets and no zone.
    /// Nothing for anything else, the short, octal and hexadecimal forms of IPv4 included.
    static std::optional<IPAddress> parse(const QString &text);

    const QByteArray &bytes() const { return m_bytes; }

    /// True if the address leads into this machine or the networks around it: 0.0.0.0/8, 10.0.0.0/8,
    /// 127.0.0.0/8, 169.254.0.0/16, 172.16.0.0/12, 192.168.0.0/16, each also as an IPv6 address of
    /// ::ffff:0:0/96; ::1, fc00::/7, fe80::/10. That is all: no other range is.
    bool isBlocked() const;

    bool operator==(const IPAddress &) const = default;

private:
    QByteArray m_bytes;
};
