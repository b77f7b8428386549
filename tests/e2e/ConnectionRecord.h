#pragma once

#include "support/EnvironmentVariable.h"

#include <QFile>
#include <QTemporaryDir>

/// While it lives, each program that is started, and whatever that starts, has its connections written down.
class ConnectionRecord {
public:
    /// To where connections were opened, such as "127.0.0.1:8080", and which names were looked up; each once.
    QStringList destinations() const {
        QFile file(m_path);
        QStringList all;
        if (!file.open(QIODevice::ReadOnly))
            return all;
        for (const QByteArray &line : file.readAll().trimmed().split('\n'))
            all.append(QString::fromUtf8(line.mid(line.indexOf(' ') + 1)));
        all.removeDuplicates();
        return all;
    }

private:
    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("connections"));
    const EnvironmentVariable m_record{"CONNECTION_RECORD", m_path.toLocal8Bit()};
    const EnvironmentVariable m_recorder{"LD_PRELOAD", CONNECTION_RECORDER};
    /// A program with a sanitizer wants that to come first.
    const EnvironmentVariable m_sanitizer{"ASAN_OPTIONS",
                                          qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0"};
};
