#pragma once

#include <QObject>

#include <memory>

/// Whether the person asked the desktop for less motion, kept up to date while the program runs. Off
/// until the desktop has answered, and for good where there is none that answers. Main thread only.
class ReducedMotion : public QObject {
    Q_OBJECT

public:
    explicit ReducedMotion(QObject *parent = nullptr);
    ~ReducedMotion() override;

    bool isOn() const { return m_isOn; }

    /// Begins to ask the desktop. Returns at once; a second call does nothing.
    void watch();

Q_SIGNALS:
    void isOnChanged();

private:
    class Desktop;

    void setIsOn(bool isOn);

    bool m_isOn = false;
    std::unique_ptr<Desktop> m_desktop;
};
