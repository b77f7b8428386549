#include "screens/OnboardingView.h"

#include "core/AppState.h"
#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Spinner.h"
#include "screens/Style.h"
#include "screens/TextBox.h"
#include "screens/WordButton.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

OnboardingView::OnboardingView(AppState &app, const Look &look, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_look(look),
      m_spinner(new Spinner(look, this)),
      m_callout(new Label(look, TextStyle::callout, Label::Ink::secondary, Label::Fit::natural, this)),
      m_message(new TextBox(
          look, {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignHCenter},
          style::onboardingTextHeight, this)),
      m_help(makeHelp()) {
    auto *wordmark = new Label(look, TextStyle::wordmark, Label::Ink::main, Label::Fit::natural, this);
    wordmark->setText(u"Ostrelin"_s);
    m_message->setFixedWidth(style::onboardingTextWidth);

    // The name stands at the same height in every state; what comes under it has its own room.
    auto *below = new QWidget(this);
    below->setFixedHeight(style::onboardingRoom);
    auto *column = new QVBoxLayout(below);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::spaceLarge);
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    column->addWidget(m_callout, 0, Qt::AlignHCenter);
    column->addWidget(m_message, 0, Qt::AlignHCenter);
    column->addWidget(m_help, 0, Qt::AlignHCenter);
    column->addStretch();

    auto *page = new QVBoxLayout(this);
    page->setSpacing(style::spaceLarge);
    page->addStretch();
    page->addWidget(wordmark, 0, Qt::AlignHCenter);
    page->addWidget(below);
    page->addStretch();
    setModel(onboardingModel(app.phase()));
}

void OnboardingView::setModel(const OnboardingModel &model) {
    m_spinner->setVisible(model.showsSpinner);
    m_callout->setText(model.callout);
    m_callout->setVisible(!model.callout.isEmpty());
    m_message->setText(model.message);
    m_message->setVisible(!model.message.isEmpty());
    m_help->setVisible(model.help == OnboardingModel::Help::tryAgain);
}

QWidget *OnboardingView::makeHelp() {
    auto *help = new QWidget(this);
    auto *again = new WordButton(m_look, u"Try again"_s, WordButton::Tone::loud, help);
    auto *copy = new WordButton(m_look, u"Copy diagnostic info"_s, WordButton::Tone::quiet, help);
    auto *row = new QHBoxLayout(help);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::rowSpacing);
    row->addWidget(again);
    row->addWidget(copy);
    connect(again, &WordButton::clicked, &m_app, &AppState::resolveModel);
    connect(copy, &WordButton::clicked, this, &OnboardingView::copyDiagnostics);
    return help;
}

void OnboardingView::copyDiagnostics() const {
    QGuiApplication::clipboard()->setText(m_app.engine().logs()->snapshot().join(u'\n'));
}
