#pragma once

#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

/// The files of the project as these tests read them. Any failure to read one fails the test.

/// The rooms from the top of the house to the bottom. A room may include from itself and from below.
extern const QStringList rooms;

/// The room in which a path below src/ lies; empty if it lies in none.
QString roomOf(const QString &path);

/// One room that includes from another.
struct Edge {
    QString from;
    QString to;

    bool operator==(const Edge &) const = default;
};

inline size_t qHash(const Edge &edge, size_t seed = 0) {
    return qHashMulti(seed, edge.from, edge.to);
}

struct Include {
    QString file; ///< from src/ on
    QString room;
    QString header;
};

/// What the first group of a pattern catches in each file of src/.
QList<Include> allIncludes(const QRegularExpression &directive);

extern const QRegularExpression ownInclude;
extern const QRegularExpression systemInclude;

/// The edges between different rooms.
QSet<Edge> edgesOfTheSource();

/// The text of a file whose path begins at the top of the project.
QString textOf(const QString &path);

/// The paths from the top of the project of the files below a folder whose names fit.
QStringList filesBelow(const QString &folder, const QStringList &names);
