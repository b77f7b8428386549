#pragma once

#include "pages/drawing/TextFlow.h"
#include "screens/RowButton.h"
#include "screens/ThinkingStage.h"

class QScrollBar;

/// What a model thought, in a frame: five lines of it that scroll, or all of it. A press asks for the
/// other of the two. Whoever owns the box gives it its height.
class ThinkingBox : public RowButton {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ThinkingBox(const Look &look, QWidget *parent = nullptr);

    void setReasoning(const QString &reasoning);
    void setStage(ThinkingStage stage);

    /// Whether the newest line comes into sight when the text grows.
    void setFollowsTail(bool followsTail);

    /// Lays the text for a box of that width, and gives the height of a box that shows all of it.
    int layIn(int width);

    /// The height of a box that shows five lines.
    static int heightOfFiveLines(const Look &look);

    QString spokenName() const override;
    QString spokenDescription() const override { return m_flow.text(); }
    Fold spokenFold() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void takeLook();
    void updateRange();
    QRect textArea() const;

    TextFlow m_flow;
    QScrollBar *m_bar;
    ThinkingStage m_stage = ThinkingStage::box;
    bool m_followsTail = false;
};
