#pragma once

#include "screens/OnboardingModel.h"

#include <QWidget>

class AppState;
class ApplicationIcon;
class Label;
class LoadingWordmark;
class Look;
class OnboardingButtons;
class ProgressBar;
class Sheet;
class Spinner;
class TextBox;

/// The one centred screen that stands wherever the chat isn't ready: the program's name or icon, and under
/// it what goes on, what went wrong, and what to do. The name stands at the same height in every phase.
class OnboardingView : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive this object.
    OnboardingView(AppState &app, const Look &look, QWidget *parent = nullptr);

    /// Shows that state.
    void setModel(const OnboardingModel &model);
    const OnboardingModel &model() const { return m_model; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makeTop();
    QWidget *makeDownload();
    QWidget *makeRoom();
    Sheet *makeWhySize(const Look &look);
    void observe();
    void refresh();
    void followWhySize();
    void giveFocus();
    void act(OnboardingModel::Button button);
    void copyDiagnostics() const;

    AppState &m_app;
    OnboardingModel m_model;
    ApplicationIcon *m_icon;
    LoadingWordmark *m_name;
    Spinner *m_spinner;
    Label *m_tagline;
    Label *m_callout;
    TextBox *m_message;
    Label *m_headline;
    ProgressBar *m_progress;
    Label *m_status;
    Label *m_note;
    QWidget *m_download;
    OnboardingButtons *m_buttons;
    Sheet *m_whySize;
};
