#include "screens/Windows.h"

#include "screens/Front.h"

Windows::~Windows() {
    for (const auto &window : m_windows)
        delete window.data();
}

void Windows::add(QStringView id, const Maker &maker) {
    m_makers.insert(id.toString(), maker);
}

void Windows::open(QStringView id) {
    const Maker maker = m_makers.value(id.toString());
    if (!maker)
        return;
    QPointer<QWidget> &window = m_windows[id.toString()];
    if (!window) {
        window = maker().release();
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    bringToFront(*window);
}

QWidget *Windows::window(QStringView id) const {
    return m_windows.value(id.toString());
}
