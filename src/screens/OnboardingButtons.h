#pragma once

#include "screens/OnboardingModel.h"

#include <QWidget>

#include <map>

class Look;
class WordButton;

/// The onboarding screen's row of buttons. Pausing and going on are one button that changes its word, so
/// that it keeps its place and the focus.
class OnboardingButtons : public QWidget {
    Q_OBJECT

public:
    using Button = OnboardingModel::Button;

    /// `look` must outlive this object.
    explicit OnboardingButtons(const Look &look, QWidget *parent = nullptr);

    /// Shows these buttons, and tells whether other ones than before; they come in the order of Button.
    bool setButtons(const QList<Button> &buttons);

    /// The button that leads on; null if none is shown.
    WordButton *loudButton() const;

Q_SIGNALS:
    void pressed(OnboardingModel::Button button);

private:
    std::map<Button, WordButton *> m_widgets;
    QList<Button> m_places;
};
