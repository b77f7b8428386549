#pragma once

#include <QByteArray>
#include <QtGlobal>

/// Sets an environment variable for as long as it lives, then puts the old state back.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char *name, const QByteArray &value)
        : m_name(name),
          m_wasSet(qEnvironmentVariableIsSet(name)),
          m_before(qgetenv(name)) {
        qputenv(name, value);
    }
    ~EnvironmentVariable() {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    EnvironmentVariable(const EnvironmentVariable &) = delete;
    EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

private:
    const char *m_name;
    bool m_wasSet;
    QByteArray m_before;
};
