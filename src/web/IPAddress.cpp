#include "web/IPAddress.h"

#include "platform/HostAddresses.h"

namespace {

constexpr qsizetype bytesOfV4 = 4;

quint8 byteAt(QByteArrayView bytes, qsizetype place) {
    return static_cast<quint8>(bytes[place]);
}

bool isBlockedV4(QByteArrayView bytes) {
    const quint8 first = byteAt(bytes, 0);
    const quint8 second = byteAt(bytes, 1);
    switch (first) {
    case 0:
    case 10:
    case 127:
        return true;
    case 169:
        return second == 254;
    case 172:
        return (second & 0xF0) == 0x10;
    case 192:
        return second == 168;
    default:
        return false;
    }
}

bool isBlockedV6(QByteArrayView bytes) {
    static const QByteArray loopback = QByteArray(15, '\0') + '\1';
    static const QByteArray mapped = QByteArray(10, '\0') + QByteArray(2, '\xFF');
    switch (byteAt(bytes, 0)) {
    case 0:
        return bytes == loopback || (bytes.startsWith(mapped) && isBlockedV4(bytes.sliced(mapped.size())));
    case 0xFC:
    case 0xFD:
        return true;
    case 0xFE:
        return (byteAt(bytes, 1) & 0xC0) == 0x80;
    default:
        return false;
    }
}

} // namespace

std::optional<IPAddress> IPAddress::parse(const QString &text) {
    const std::optional<QByteArray> bytes = addressSpelledOut(text);
    return bytes ? std::optional(IPAddress(*bytes)) : std::nullopt;
}

bool IPAddress::isBlocked() const {
    return m_bytes.size() == bytesOfV4 ? isBlockedV4(m_bytes) : isBlockedV6(m_bytes);
}
