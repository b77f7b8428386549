#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

/// The program's windows beside the main one, by the names under which they are opened.
namespace windowid {

inline constexpr QStringView schedules = u"schedules";
inline constexpr QStringView pages = u"pages";
inline constexpr QStringView settings = u"settings";

} // namespace windowid

/// Those windows: there is at most one of each. It is made when somebody wants to see it, and gone once it
/// has been closed, so that the next one begins anew. Main thread only.
class Windows : public QObject {
    Q_OBJECT

public:
    using Maker = std::function<std::unique_ptr<QWidget>()>;

    using QObject::QObject;
    ~Windows() override;

    /// Tells how the window of that id is made.
    void add(QStringView id, const Maker &maker);

    /// Shows the window, or brings the one that is there to the front. An unknown id opens nothing.
    void open(QStringView id);

    /// The window; null while there is none.
    QWidget *window(QStringView id) const;

private:
    QHash<QString, Maker> m_makers;
    QHash<QString, QPointer<QWidget>> m_windows;
};
