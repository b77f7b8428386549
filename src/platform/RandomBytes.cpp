#include "platform/RandomBytes.h"

#include <QRandomGenerator>

QByteArray randomBytes(qsizetype count) {
    QByteArray bytes(count, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(QRandomGenerator::system()->generate());
    return bytes;
}
