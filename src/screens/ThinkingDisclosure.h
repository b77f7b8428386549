#pragma once

#include "screens/Glide.h"
#include "screens/ThinkingStage.h"

#include <QWidget>

class LookButton;
class ThinkingBox;
class ThinkingHead;

/// What a model thought before its reply, below a head that hides and shows it: five lines in a box, all of
/// it after a press on the box. The widget is wider than what it draws by style::rowOutset on both sides.
class ThinkingDisclosure : public QWidget {
    Q_OBJECT

public:
    using Stage = ThinkingStage;

    /// `look` must outlive this object.
    explicit ThinkingDisclosure(const Look &look, QWidget *parent = nullptr);

    /// Shows that text. While it is streaming, the box keeps its newest line in sight.
    void setReasoning(const QString &reasoning, bool isStreaming);

    Stage stage() const { return m_stage; }

    /// Arranges the parts in that width, and gives the height that they take now.
    int layIn(int width);

    /// The height at the end of a change of stage that is under way.
    int settledHeight() const;

    /// The height before anybody has pressed anything.
    static int initialHeight(const Look &look);

    /// What can be pressed, in order.
    QList<LookButton *> buttons() const;

Q_SIGNALS:
    /// layIn() gives another height than before.
    void heightChanged();
    /// The focus has come to one of the buttons, or gone.
    void focusChanged();

private:
    void setStage(Stage stage);
    int bodyHeight() const;
    int settledBodyHeight() const;

    const Look &m_look;
    Stage m_stage = Stage::box;
    ThinkingHead *m_head;
    ThinkingBox *m_box;
    Glide m_fold;
    int m_wholeHeight = 0; ///< of a box that shows all
};
