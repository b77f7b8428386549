#include "screens/OnboardingView.h"

#include "core/AppState.h"
#include "screens/ApplicationIcon.h"
#include "screens/Label.h"
#include "screens/LoadingWordmark.h"
#include "screens/Look.h"
#include "screens/OnboardingButtons.h"
#include "screens/ProgressBar.h"
#include "screens/Sheet.h"
#include "screens/Spinner.h"
#include "screens/Style.h"
#include "screens/TextBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QVBoxLayout *columnOf(QWidget *widget) {
    auto *column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::spaceLarge);
    return column;
}

void showText(Label *label, const QString &text) {
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

} // namespace

OnboardingView::OnboardingView(AppState &app, const Look &look, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_icon(new ApplicationIcon(this)),
      m_name(new LoadingWordmark(look, this)),
      m_spinner(new Spinner(look, this)),
      m_tagline(new Label(look, TextStyle::tagline, Label::Ink::main, Label::Fit::natural, this)),
      m_callout(new Label(look, TextStyle::callout, Label::Ink::secondary, Label::Fit::natural, this)),
      m_message(new TextBox(
          look, {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignHCenter},
          style::onboardingTextHeight, this)),
      m_headline(new Label(look, TextStyle::headline, Label::Ink::main, Label::Fit::natural)),
      m_progress(new ProgressBar(look, u"Model download"_s)),
      m_status(new Label(look, TextStyle::callout, Label::Ink::secondary, Label::Fit::natural)),
      m_note(new Label(look, TextStyle::caption, Label::Ink::secondary, Label::Fit::wrapped)),
      m_download(makeDownload()),
      m_buttons(new OnboardingButtons(look, this)),
      m_whySize(makeWhySize(look)) {
    m_message->setFixedWidth(style::onboardingTextWidth);
    auto *page = new QVBoxLayout(this);
    page->setSpacing(style::spaceLarge);
    page->addStretch();
    page->addWidget(makeTop());
    page->addWidget(makeRoom());
    page->addStretch();
    observe();
    refresh();
    followWhySize();
}

QWidget *OnboardingView::makeTop() {
    // As high as the icon in every phase, with the name on its floor.
    auto *top = new QWidget(this);
    top->setFixedHeight(style::applicationIcon);
    auto *column = columnOf(top);
    column->addWidget(m_icon, 0, Qt::AlignHCenter | Qt::AlignBottom);
    column->addWidget(m_name, 0, Qt::AlignHCenter | Qt::AlignBottom);
    return top;
}

QWidget *OnboardingView::makeDownload() {
    auto *download = new QWidget(this);
    auto *column = columnOf(download);
    column->addWidget(m_headline, 0, Qt::AlignHCenter);
    column->addWidget(m_progress, 0, Qt::AlignHCenter);
    m_note->setFixedWidth(style::progressWidth);
    m_note->setAlignment(Qt::AlignHCenter);
    auto *words = new QVBoxLayout;
    words->setSpacing(style::spaceSmall);
    words->addWidget(m_status, 0, Qt::AlignHCenter);
    words->addWidget(m_note, 0, Qt::AlignHCenter);
    column->addLayout(words);
    return download;
}

QWidget *OnboardingView::makeRoom() {
    auto *room = new QWidget(this);
    room->setFixedHeight(style::onboardingRoom);
    auto *column = columnOf(room);
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    column->addWidget(m_tagline, 0, Qt::AlignHCenter);
    column->addWidget(m_callout, 0, Qt::AlignHCenter);
    column->addWidget(m_message, 0, Qt::AlignHCenter);
    column->addWidget(m_download, 0, Qt::AlignHCenter);
    column->addWidget(m_buttons, 0, Qt::AlignHCenter);
    column->addStretch();
    return room;
}

Sheet *OnboardingView::makeWhySize(const Look &look) {
    const QString question = nameOf(OnboardingModel::Button::whySize);
    auto *sheet = new Sheet(look, question, this);
    sheet->addHeading(question);
    sheet->addParagraph(u"Ostrelin picked a local AI model that fits this Mac's memory, so it can run on the "
                        "GPU instead of swapping to disk."_s);
    sheet->addParagraph(u"Local AI models are small models that do all of the AI computation directly on "
                        "your device. It's completely free and totally private."_s);
    const auto close = [this] { m_app.setShowsWhySize(false); };
    connect(sheet->addButton(u"Close"_s), &WordButton::clicked, this, close);
    connect(sheet, &Sheet::escaped, this, close);
    return sheet;
}

void OnboardingView::observe() {
    for (const auto change :
         {&AppState::phaseChanged, &AppState::activeTierChanged, &AppState::downloadProgressChanged,
          &AppState::downloadPausedChanged, &AppState::diskNoteChanged})
        connect(&m_app, change, this, &OnboardingView::refresh);
    connect(&m_app, &AppState::showWhySizeChanged, this, &OnboardingView::followWhySize);
    connect(m_buttons, &OnboardingButtons::pressed, this, &OnboardingView::act);
}

void OnboardingView::refresh() {
    setModel(onboardingModel({.phase = m_app.phase(),
                              .activeTier = m_app.activeTier(),
                              .pendingTier = m_app.pendingTier(),
                              .downloadProgress = m_app.downloadProgress(),
                              .isDownloadPaused = m_app.isDownloadPaused(),
                              .diskNote = m_app.diskNote()}));
    // Whoever chats has stopped to wonder; the next download begins without the sheet.
    if (isIn<phase::Ready>(m_app.phase()))
        m_app.setShowsWhySize(false);
}

void OnboardingView::setModel(const OnboardingModel &model) {
    m_model = model;
    m_icon->setVisible(model.top == OnboardingModel::Top::icon);
    m_name->setVisible(model.top != OnboardingModel::Top::icon);
    m_name->setFilling(model.filling);
    m_name->setWaking(model.isWaking);
    m_spinner->setVisible(model.showsSpinner);
    showText(m_tagline, model.tagline);
    showText(m_callout, model.callout);
    m_message->setText(model.message);
    m_message->setVisible(!model.message.isEmpty());
    const auto download = model.download.value_or(OnboardingModel::Download());
    m_headline->setText(download.headline);
    m_progress->setFraction(download.fraction);
    m_status->setText(download.status);
    showText(m_note, download.note);
    m_download->setVisible(model.download.has_value());
    if (m_buttons->setButtons(model.buttons))
        giveFocus();
}

void OnboardingView::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    giveFocus();
}

void OnboardingView::giveFocus() {
    if (m_whySize->isShown() || !isVisible())
        return;
    // Without a button that leads on, nobody has the focus, and Tab begins at the first control.
    QWidget *loud = m_buttons->loudButton();
    (loud ? loud : this)->setFocus(Qt::OtherFocusReason);
}

void OnboardingView::followWhySize() {
    m_whySize->setShown(m_app.showsWhySize());
    // Whoever had the focus before the sheet may be gone.
    if (hasFocus())
        giveFocus();
}

void OnboardingView::act(OnboardingModel::Button button) {
    switch (button) {
    case OnboardingModel::Button::getStarted:
    case OnboardingModel::Button::start:
        return m_app.finishWelcome();
    case OnboardingModel::Button::tryAgain:
        return m_app.resolveModel();
    case OnboardingModel::Button::copyDiagnostics:
        return copyDiagnostics();
    case OnboardingModel::Button::tryLighter:
        return m_app.tryLighter();
    case OnboardingModel::Button::whySize:
        return m_app.setShowsWhySize(true);
    case OnboardingModel::Button::pause:
    case OnboardingModel::Button::resume:
        return m_app.togglePause();
    }
}

void OnboardingView::copyDiagnostics() const {
    QGuiApplication::clipboard()->setText(m_app.engine().logs()->snapshot().join(u'\n'));
}
