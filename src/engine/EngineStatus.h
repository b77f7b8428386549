#pragma once

#include <QString>

#include <exception>

/// What is known of the inference server.
struct EngineStatus {
    enum class State {
        stopped,  ///< no server
        starting, ///< a child was made, and nothing is known of it yet
        loading,  ///< the server is up and reads the model
        ready,    ///< the server takes requests
        failed,   ///< a server that was ready has died unexpectedly
    };

    State state = State::stopped;
    QString failure; ///< with `failed`: the text to show

    static EngineStatus failed(const QString &text) { return {State::failed, text}; }

    bool operator==(const EngineStatus &) const = default;
};

/// Why the engine couldn't be started, with the sentence that a person reads.
class EngineError : public std::exception {
public:
    enum class Kind { missingBinary, port, timeout, exited };

    /// `text` counts with `exited` only: what the system or the server said of it.
    explicit EngineError(Kind kind, const QString &text = {});

    Kind kind() const { return m_kind; }
    QString description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    Kind m_kind;
    QString m_description;
    QByteArray m_utf8;
};
