#pragma once

#include <QByteArray>
#include <QTemporaryDir>

/// While it lives, the application folder lies in an empty temporary folder; afterwards that is gone
/// and the old place stands again.
class TemporaryApplicationFolder {
public:
    TemporaryApplicationFolder();
    ~TemporaryApplicationFolder();
    TemporaryApplicationFolder(const TemporaryApplicationFolder &) = delete;
    TemporaryApplicationFolder &operator=(const TemporaryApplicationFolder &) = delete;

    /// The folder that stands for the person's application data; "Ostrelin" is made inside it.
    QString dataHome() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
    QByteArray m_before;
};
