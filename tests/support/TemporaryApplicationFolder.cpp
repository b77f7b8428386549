#include "support/TemporaryApplicationFolder.h"

#include <QtGlobal>

TemporaryApplicationFolder::TemporaryApplicationFolder() : m_before(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", m_directory.path().toLocal8Bit());
}

TemporaryApplicationFolder::~TemporaryApplicationFolder() {
    if (m_before.isNull())
        qunsetenv("XDG_DATA_HOME");
    else
        qputenv("XDG_DATA_HOME", m_before);
}
