#include "screens/ThinkingDisclosure.h"

#include "screens/Style.h"
#include "screens/ThinkingBox.h"
#include "screens/ThinkingHead.h"

ThinkingDisclosure::ThinkingDisclosure(const Look &look, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_head(new ThinkingHead(look, this)),
      m_box(new ThinkingBox(look, this)),
      m_fold(style::thinkingFold) {
    connect(m_head, &LookButton::clicked, this,
            [this] { setStage(m_stage == Stage::box ? Stage::hidden : Stage::box); });
    connect(m_box, &LookButton::clicked, this,
            [this] { setStage(m_stage == Stage::box ? Stage::expanded : Stage::box); });
    for (LookButton *button : std::initializer_list<LookButton *>{m_head, m_box})
        connect(button, &LookButton::focusChanged, this, &ThinkingDisclosure::focusChanged);
    connect(&m_fold, &Glide::moved, this, &ThinkingDisclosure::heightChanged);
    connect(&m_fold, &Glide::arrived, this, &ThinkingDisclosure::heightChanged);
}

void ThinkingDisclosure::setReasoning(const QString &reasoning, bool isStreaming) {
    m_box->setFollowsTail(isStreaming);
    m_box->setReasoning(reasoning);
}

void ThinkingDisclosure::setStage(Stage stage) {
    const int before = bodyHeight();
    m_stage = stage;
    m_head->setStage(stage);
    m_box->setStage(stage);
    m_fold.go(before, settledBodyHeight(), m_look.motion());
}

int ThinkingDisclosure::layIn(int width) {
    m_head->setGeometry({{0, 0}, m_head->sizeHint()});
    const int boxWidth = width - 2 * style::rowOutset;
    m_wholeHeight = m_box->layIn(boxWidth);
    const int body = bodyHeight();
    const int boxHeight = std::max(0, body - style::thinkingGap);
    m_box->setGeometry(style::rowOutset, m_head->height() + style::thinkingGap, boxWidth, boxHeight);
    m_box->setVisible(boxHeight > 0);
    return m_head->height() + body;
}

int ThinkingDisclosure::settledHeight() const {
    return m_head->height() + settledBodyHeight();
}

int ThinkingDisclosure::initialHeight(const Look &look) {
    return style::footHeight + style::thinkingGap + ThinkingBox::heightOfFiveLines(look);
}

QList<LookButton *> ThinkingDisclosure::buttons() const {
    return m_box->isHidden() ? QList<LookButton *>{m_head} : QList<LookButton *>{m_head, m_box};
}

int ThinkingDisclosure::bodyHeight() const {
    return m_fold.isUnderWay() ? qRound(m_fold.value()) : settledBodyHeight();
}

int ThinkingDisclosure::settledBodyHeight() const {
    switch (m_stage) {
    case Stage::hidden:
        return 0;
    case Stage::box:
        return style::thinkingGap + ThinkingBox::heightOfFiveLines(m_look);
    case Stage::expanded:
        return style::thinkingGap + m_wholeHeight;
    }
    Q_UNREACHABLE();
}
