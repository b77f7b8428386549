#include "screens/ActionLine.h"

#include "platform/Clock.h"
#include "screens/Style.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

ActionLine::ActionLine(const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_clock(clock),
      m_copy(new BorderlessButton(look, u"Copy"_s, this)),
      m_regenerate(new BorderlessButton(look, u"Regenerate"_s, this)),
      m_opacity(style::actionsAppear, QEasingCurve::InOutQuad) {
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->setSpacing(style::actionGap - 2 * style::rowOutset);
    for (BorderlessButton *button : {m_copy, m_regenerate}) {
        line->addWidget(button);
        connect(button, &LookButton::focusChanged, this, &ActionLine::focusChanged);
        connect(&m_opacity, &Glide::moved, button, [this, button] { button->setOpacity(m_opacity.value()); });
        button->setOpacity(0);
    }
    line->addStretch();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    connect(m_copy, &LookButton::clicked, this, &ActionLine::copyRequested);
    connect(m_regenerate, &LookButton::clicked, this, &ActionLine::regenerateRequested);
    connect(&m_opacity, &Glide::arrived, this, [this] { setVisible(m_isOffered); });
}

void ActionLine::setOffered(bool isOffered) {
    if (std::exchange(m_isOffered, isOffered) == isOffered)
        return;
    if (isOffered) {
        show();
        if (m_isAttended)
            showNow();
    } else {
        m_hideTask.cancel();
        fadeTo(0, style::actionsGiveWay);
    }
}

void ActionLine::setCanRegenerate(bool canRegenerate) {
    if (!canRegenerate && m_regenerate->hasFocus())
        m_copy->setFocus(Qt::TabFocusReason);
    m_regenerate->setVisible(canRegenerate);
}

void ActionLine::setAttended(bool isAttended) {
    if (std::exchange(m_isAttended, isAttended) == isAttended)
        return;
    if (!isAttended)
        m_hideTask.start([this](std::stop_token stop) { return hideLater(stop); });
    else if (m_isOffered)
        showNow();
}

QList<LookButton *> ActionLine::buttons() const {
    if (!m_isOffered)
        return {};
    return m_regenerate->isHidden() ? QList<LookButton *>{m_copy} : QList<LookButton *>{m_copy, m_regenerate};
}

Task<> ActionLine::hideLater(std::stop_token stop) {
    co_await m_clock.sleep(style::actionsStay, stop);
    if (!stop.stop_requested() && !m_isAttended)
        fadeTo(0, style::actionsFade);
}

void ActionLine::showNow() {
    m_hideTask.cancel();
    fadeTo(1, style::actionsAppear);
}

void ActionLine::fadeTo(double opacity, std::chrono::milliseconds time) {
    m_actionsVisible = opacity > 0;
    setAttribute(Qt::WA_TransparentForMouseEvents, !m_actionsVisible);
    m_opacity.setDuration(time);
    m_opacity.go(m_opacity.value(), opacity, m_look.motion());
}
