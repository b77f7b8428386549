#pragma once

#include "support/EnvironmentVariable.h"

#include <QTemporaryDir>

/// While it lives, the application folder and the desktop's configuration lie in empty temporary folders;
/// afterwards those are gone and the old places stand again.
class TemporaryApplicationFolder {
public:
    /// The folder that stands for the person's application data; "Ostrelin" is made inside it.
    QString dataHome() const { return m_data.path(); }

    /// The folder that stands for the desktop's configuration.
    QString configurationHome() const { return m_configuration.path(); }

private:
    QTemporaryDir m_data;
    QTemporaryDir m_configuration;
    EnvironmentVariable m_dataHome{"XDG_DATA_HOME", m_data.path().toLocal8Bit()};
    EnvironmentVariable m_configurationHome{"XDG_CONFIG_HOME", m_configuration.path().toLocal8Bit()};
};
