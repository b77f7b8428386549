#pragma once

#include <QString>

#include <exception>

/// A failure of the model client, with the sentence that a person may read.
class OstrelinError : public std::exception {
public:
    /// The one kind of it: a message that is the description.
    static OstrelinError message(const QString &text) { return OstrelinError(text); }

    QString description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

    bool operator==(const OstrelinError &other) const { return m_description == other.m_description; }

private:
    explicit OstrelinError(const QString &text) : m_description(text), m_utf8(text.toUtf8()) {}

    QString m_description;
    QByteArray m_utf8;
};
