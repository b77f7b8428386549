#pragma once

#include <QAccessible>
#include <QRectF>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

/// What a person can press in a figure.
struct Target {
    enum class Kind {
        link, ///< leads to `address`
        copy, ///< a button that puts `copied` on the clipboard
    };

    Kind kind = Kind::link;
    QString name; ///< as a screen reader says it
    QUrl address;
    QString copied;
    QList<QRectF> areas; ///< never empty; a link may go over several lines

    bool operator==(const Target &) const = default;
};

/// The same where it stands somewhere else.
inline Target moved(Target target, const QPointF &by) {
    for (QRectF &area : target.areas)
        area.translate(by);
    return target;
}

/// A part of what a screen reader finds in a figure.
struct SpokenPart {
    QAccessible::Role role = QAccessible::StaticText;
    QString name;
    QRectF area;
    std::vector<SpokenPart> parts;
    std::optional<Target> target; ///< what happens when it is pressed
};
