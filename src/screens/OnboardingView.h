#pragma once

#include "screens/OnboardingModel.h"

#include <QWidget>

class AppState;
class Label;
class Look;
class Spinner;
class TextBox;

/// The one centred screen that stands wherever the chat isn't ready: the program's name, and under it
/// what goes on or what went wrong.
class OnboardingView : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive this object.
    OnboardingView(AppState &app, const Look &look, QWidget *parent = nullptr);

    /// Shows that state.
    void setModel(const OnboardingModel &model);

private:
    QWidget *makeHelp();
    void copyDiagnostics() const;

    AppState &m_app;
    const Look &m_look;
    Spinner *m_spinner;
    Label *m_callout;
    TextBox *m_message;
    QWidget *m_help;
};
