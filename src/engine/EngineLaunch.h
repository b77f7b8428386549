#pragma once

#include "platform/Task.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>

/// What the engine is started with: pure functions, but for the look at the disk in findServerBinary().

/// The server's executable: the file that OSTRELIN_LLAMA_SERVER names in `environment` if it can be
/// executed, else Contents/Helpers/llama-server below `bundle`, else nothing.
std::optional<QString> findServerBinary(const QProcessEnvironment &environment, const QString &bundle);

/// How many tokens the model may think: the text as a decimal integer with an optional sign; 256 if it
/// is absent or no such number. A negative number is passed on.
qint64 reasoningBudget(const std::optional<QString> &text);

/// 64 hexadecimal digits from the system's generator.
QString randomAPIKey();

/// The server's 29 command-line arguments.
QStringList serverArguments(const QString &modelPath, quint16 port, const QString &apiKey,
                            qint64 contextLength, qint64 reasoningBudget);

/// This process's environment as the server gets it: told to stay offline, without a credential for a
/// model hub.
QProcessEnvironment serverEnvironment(QProcessEnvironment environment);

#ifndef Q_MOC_RUN
/// The status of GET /health on the server at that port, with the key as bearer token unless it is
/// empty; -1 if none comes, or the server is silent for two seconds. The body is not read. Main thread.
Task<int> healthStatus(quint16 port, QString key, std::stop_token stop);
#endif
