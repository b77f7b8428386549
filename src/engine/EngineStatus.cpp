#include "engine/EngineStatus.h"

using namespace Qt::StringLiterals;

namespace {

QString sentence(EngineError::Kind kind, const QString &text) {
    switch (kind) {
    case EngineError::Kind::missingBinary:
        return u"The inference engine isn't in the app yet. On this Mac, run Scripts/build-llama, then build Ostrelin again."_s;
    case EngineError::Kind::port:
        return u"Ostrelin couldn't open a local port."_s;
    case EngineError::Kind::timeout:
        return u"Ostrelin took too long to wake up."_s;
    case EngineError::Kind::exited:
        break;
    }
    return text.isEmpty() ? u"Ostrelin couldn't start."_s : text;
}

} // namespace

EngineError::EngineError(Kind kind, const QString &text)
    : m_kind(kind),
      m_description(sentence(kind, text)),
      m_utf8(m_description.toUtf8()) {}
