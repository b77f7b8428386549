#pragma once

#include <QWidget>

/// Holds the panel of an inspector. On its way in and out the panel has its width already and is cut off, so
/// that nothing in it is laid anew for every picture.
class InspectorColumn : public QWidget {
    Q_OBJECT

public:
    /// Takes the panel.
    explicit InspectorColumn(QWidget *panel);

    /// The column is on its way: it may have any width, and the panel has that one.
    void setMoving(int panelWidth);

    /// The column is there: the panel fills it.
    void settle();

    bool isSettled() const { return m_panelWidth == 0; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placePanel();

    QWidget *m_panel;
    int m_panelWidth = 0; ///< while it moves
};
