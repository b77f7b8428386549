#include "screens/OnboardingButtons.h"

#include "screens/Style.h"
#include "screens/WordButton.h"

#include <QHBoxLayout>

#include <algorithm>

namespace {

using Button = OnboardingModel::Button;

constexpr std::array places = {Button::getStarted, Button::start,   Button::tryAgain, Button::copyDiagnostics,
                               Button::tryLighter, Button::whySize, Button::pause};

Button placeOf(Button button) {
    return button == Button::resume ? Button::pause : button;
}

} // namespace

OnboardingButtons::OnboardingButtons(const Look &look, QWidget *parent) : QWidget(parent) {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::rowSpacing);
    for (const Button place : places) {
        const auto tone = isLoud(place) ? WordButton::Tone::loud : WordButton::Tone::quiet;
        auto *widget = new WordButton(look, nameOf(place), tone, this);
        row->addWidget(widget);
        m_widgets[place] = widget;
        connect(widget, &WordButton::clicked, this, [this, place] { Q_EMIT pressed(place); });
    }
    setButtons({});
}

bool OnboardingButtons::setButtons(const QList<Button> &buttons) {
    QList<Button> shown;
    for (const Button button : buttons) {
        m_widgets.at(placeOf(button))->setName(nameOf(button));
        shown.append(placeOf(button));
    }
    for (const auto &[place, widget] : m_widgets)
        widget->setVisible(shown.contains(place));
    setVisible(!shown.isEmpty());
    return std::exchange(m_places, shown) != shown;
}

WordButton *OnboardingButtons::loudButton() const {
    const auto loud = std::find_if(m_places.begin(), m_places.end(), isLoud);
    return loud == m_places.end() ? nullptr : m_widgets.at(*loud);
}
