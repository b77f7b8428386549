#include "screens/ComposerTextView.h"
#include "screens/ComposerView.h"
#include "screens/RoundButton.h"
#include "screens/Screen.h"
#include "screens/SymbolButton.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The field, with the ways in which text comes from outside made public.
class Field : public ComposerTextView {
public:
    using ComposerTextView::canInsertFromMimeData;
    using ComposerTextView::ComposerTextView;
    using ComposerTextView::insertFromMimeData;
};

class ComposerTextViewTest : public testing::Test {
protected:
    ComposerTextViewTest() : field(look), submitted(&field, &ComposerTextView::submitted) {
        field.resize(300, 100);
        present(field);
        field.setFocus();
    }

    void compose(const QString &preedit, const QString &commit = {}) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(&field, &event);
    }

    StillLook look;
    Field field;
    QSignalSpy submitted;
};

class ComposerViewTest : public testing::Test {
protected:
    ComposerViewTest() {
        auto *column = new QVBoxLayout(&window);
        column->addStretch();
        column->addWidget(composer = new ComposerView(look));
        composer->setMaximumTextHeight(200);
        field = composer->findChild<ComposerTextView *>();
        window.resize(700, 600);
        present(window);
    }

    StillLook look;
    QWidget window;
    ComposerView *composer = nullptr;
    ComposerTextView *field = nullptr;
};

} // namespace

TEST_F(ComposerTextViewTest, returnSendsAndShiftReturnBreaksTheLine) {
    QTest::keyClicks(&field, u"one"_s);
    QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(&field, u"two"_s);
    EXPECT_EQ(field.writtenText(), u"one\ntwo"_s);
    EXPECT_EQ(submitted.count(), 0);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(submitted.count(), 1);
    QTest::keyClick(&field, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(submitted.count(), 2);
    EXPECT_EQ(field.writtenText(), u"one\ntwo"_s);
}

TEST_F(ComposerTextViewTest, returnDoesNotSendWhileAnInputMethodComposes) {
    compose(u"にほ"_s);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(submitted.count(), 0);
    EXPECT_FALSE(field.writtenText().contains(u'\n'));
    compose({}, u"日本"_s);
    EXPECT_EQ(field.writtenText(), u"日本"_s);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(submitted.count(), 1);
}

TEST_F(ComposerTextViewTest, whatAnInputMethodLeavesUnfinishedStays) {
    QTest::keyClicks(&field, u"a"_s);
    compose(u"にほ"_s);
    field.clearFocus();
    EXPECT_EQ(field.writtenText(), u"aにほ"_s);
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(submitted.count(), 1);
}

TEST_F(ComposerTextViewTest, aHeldReturnSendsOnce) {
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
    QCoreApplication::sendEvent(&field, &repeated);
    EXPECT_EQ(submitted.count(), 0);
}

TEST_F(ComposerTextViewTest, onlyPlainTextComesIn) {
    QMimeData rich;
    rich.setHtml(u"<b>bold</b><img src='x'>"_s);
    rich.setText(u"bold"_s);
    EXPECT_TRUE(field.canInsertFromMimeData(&rich));
    field.insertFromMimeData(&rich);
    EXPECT_EQ(field.writtenText(), u"bold"_s);
    EXPECT_FALSE(field.toHtml().contains(u"font-weight:700"_s));
    QMimeData picture;
    picture.setImageData(QImage(2, 2, QImage::Format_RGB32));
    EXPECT_FALSE(field.canInsertFromMimeData(&picture));
}

TEST_F(ComposerTextViewTest, pastedFilesAreToldOfAndAddNoText) {
    QSignalSpy pasted(&field, &ComposerTextView::filesPasted);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(u"/a/b.txt"_s), QUrl::fromLocalFile(u"/a/c d.md"_s)});
    files.setText(u"/a/b.txt\n/a/c d.md"_s);
    EXPECT_TRUE(field.canInsertFromMimeData(&files));
    field.insertFromMimeData(&files);
    ASSERT_EQ(pasted.count(), 1);
    EXPECT_EQ(pasted.first().at(0).toStringList(), (QStringList{u"/a/b.txt"_s, u"/a/c d.md"_s}));
    EXPECT_EQ(field.writtenText(), QString());
}

TEST_F(ComposerTextViewTest, aPastedAddressIsText) {
    QSignalSpy pasted(&field, &ComposerTextView::filesPasted);
    QMimeData address;
    address.setUrls({QUrl(u"https://example.org/a.txt"_s)});
    field.insertFromMimeData(&address);
    EXPECT_EQ(pasted.count(), 0);
    EXPECT_EQ(field.writtenText(), u"https://example.org/a.txt"_s);
}

TEST_F(ComposerTextViewTest, whatWasTypedCanBeUndone) {
    QTest::keyClicks(&field, u"one"_s);
    QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field.writtenText(), u"one"_s);
    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field.writtenText(), QString());
    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(field.writtenText(), u"one"_s);
}

TEST_F(ComposerTextViewTest, whatIsWrittenStaysUnchanged) {
    const QString text = u"a\u00A0b\t c\nd "_s;
    field.setWrittenText(text);
    EXPECT_EQ(field.writtenText(), text);
}

TEST_F(ComposerTextViewTest, theSameTextFromOutsideLeavesTheCursor) {
    field.setWrittenText(u"hello"_s);
    QTest::keyClick(&field, Qt::Key_End);
    field.setWrittenText(u"hello"_s);
    EXPECT_EQ(field.textCursor().position(), 5);
    field.setWrittenText({});
    EXPECT_EQ(field.textCursor().position(), 0);
}

TEST_F(ComposerTextViewTest, itIsNamedByItsPlaceholder) {
    EXPECT_EQ(field.placeholderText(), u"Message Ostrelin"_s);
    EXPECT_EQ(spokenName(&field), u"Message Ostrelin"_s);
    EXPECT_EQ(spokenRole(&field), QAccessible::EditableText);
}

TEST_F(ComposerViewTest, theButtonSendsOrStops) {
    QSignalSpy send(composer, &ComposerView::sendRequested);
    QSignalSpy stop(composer, &ComposerView::stopRequested);
    ASSERT_TRUE(buttonNamed(*composer, u"Send message"_s));
    EXPECT_FALSE(buttonNamed(*composer, u"Stop generating"_s));
    click(buttonNamed(*composer, u"Send message"_s));
    EXPECT_EQ(send.count(), 1);
    composer->setAction(ComposerView::Action::stop);
    EXPECT_FALSE(buttonNamed(*composer, u"Send message"_s));
    click(buttonNamed(*composer, u"Stop generating"_s));
    EXPECT_EQ(stop.count(), 1);
    EXPECT_EQ(send.count(), 1);
}

TEST_F(ComposerViewTest, everyButtonHasItsSymbol) {
    const auto round = [this](const QString &name) {
        return static_cast<RoundButton *>(buttonNamed(*composer, name))->symbol();
    };
    EXPECT_EQ(round(u"Send message"_s), Icon::arrowUp);
    composer->setAction(ComposerView::Action::stop);
    EXPECT_EQ(round(u"Stop generating"_s), Icon::stop);
    EXPECT_EQ(static_cast<SymbolButton *>(buttonNamed(*composer, u"Attach a file"_s))->symbol(),
              Icon::paperclip);
}

TEST_F(ComposerViewTest, theFieldFollowsTheLook) {
    for (const Theme theme : themes) {
        for (const TextSize size : {TextSize::small, TextSize::extraLarge}) {
            Settings settings;
            settings.theme = theme;
            settings.textSize = size;
            settings.typeFace = TypeFace::serif;
            look.follow(settings);
            EXPECT_EQ(field->font().pixelSize(), look.font(TextStyle::body).pixelSize());
            EXPECT_EQ(field->font().family(), look.font(TextStyle::body).family());
            EXPECT_EQ(field->document()->defaultFont().pixelSize(), look.font(TextStyle::body).pixelSize());
            EXPECT_EQ(field->palette().color(QPalette::Text), look.palette().ink);
            EXPECT_EQ(field->palette().color(QPalette::PlaceholderText), look.palette().secondaryInk());
        }
    }
}

TEST_F(ComposerViewTest, theButtonIsNeverDisabled) {
    EXPECT_TRUE(buttonNamed(*composer, u"Send message"_s)->isEnabled());
}

TEST_F(ComposerViewTest, theFocusStaysOnTheButtonThatTakesTheOthersPlace) {
    buttonNamed(*composer, u"Send message"_s)->setFocus(Qt::TabFocusReason);
    composer->setAction(ComposerView::Action::stop);
    EXPECT_EQ(window.focusWidget(), buttonNamed(*composer, u"Stop generating"_s));
    EXPECT_TRUE(static_cast<RoundButton *>(window.focusWidget())->showsFocus());
}

TEST_F(ComposerViewTest, tabLeadsFromTheFieldOverTheChipsToTheButtons) {
    composer->setAttachments({{QUuid::createUuid(), u"a.txt"_s, u"text"_s}});
    composer->focusText();
    for (const QString &name :
         {u"Response speed"_s, u"Think longer"_s, u"Attach a file"_s, u"Send message"_s}) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(window.focusWidget(), buttonNamed(*composer, name)) << name.toStdString();
        EXPECT_TRUE(static_cast<LookButton *>(window.focusWidget())->showsFocus());
    }
    composer->focusText();
    QTest::keyClick(field, Qt::Key_Backtab);
    EXPECT_EQ(window.focusWidget(), buttonNamed(*composer, u"Remove"_s));
    EXPECT_EQ(field->writtenText(), QString());
}

TEST_F(ComposerViewTest, theMouseLeavesTheKeyboardInTheField) {
    composer->setAttachments({{QUuid::createUuid(), u"a.txt"_s, u"text"_s}});
    QCoreApplication::processEvents();
    composer->focusText();
    for (const QString &name : {u"Response speed"_s, u"Think longer"_s, u"Attach a file"_s, u"Remove"_s}) {
        click(buttonNamed(*composer, name));
        EXPECT_EQ(window.focusWidget(), field) << name.toStdString();
    }
}

TEST_F(ComposerViewTest, everyPressIsTold) {
    QSignalSpy speed(composer, &ComposerView::speedChosen);
    QSignalSpy think(composer, &ComposerView::thinkModeChosen);
    QSignalSpy attach(composer, &ComposerView::attachRequested);
    click(buttonNamed(*composer, u"Response speed"_s));
    click(buttonNamed(*composer, u"Think longer"_s));
    click(buttonNamed(*composer, u"Attach a file"_s));
    EXPECT_EQ(speed.count(), 1);
    EXPECT_EQ(think.count(), 1);
    EXPECT_EQ(attach.count(), 1);
}

TEST_F(ComposerViewTest, theLastFileThatGoesGivesTheFocusToTheField) {
    composer->setAttachments({{QUuid::createUuid(), u"a.txt"_s, u"text"_s}});
    buttonNamed(*composer, u"Remove"_s)->setFocus(Qt::TabFocusReason);
    composer->setAttachments({});
    EXPECT_EQ(window.focusWidget(), field);
}

TEST_F(ComposerViewTest, theFieldGrowsWithTheTextUpToItsLimit) {
    const int one = field->height();
    EXPECT_LT(one, 30);
    field->setWrittenText(u"a\nb\nc"_s);
    EXPECT_NEAR(field->height(), 3 * one, 3);
    field->setWrittenText(u"a\n"_s.repeated(100));
    EXPECT_EQ(field->height(), 200);
    EXPECT_EQ(field->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    field->setWrittenText({});
    EXPECT_EQ(field->height(), one);
}

TEST_F(ComposerViewTest, whatIsTypedIsTold) {
    QSignalSpy changed(composer, &ComposerView::textChanged);
    composer->focusText();
    QTest::keyClicks(field, u"Hi"_s);
    ASSERT_EQ(changed.count(), 2);
    EXPECT_EQ(changed.last().at(0).toString(), u"Hi"_s);
}

TEST_F(ComposerViewTest, aClickIntoTheBoxMeansTheField) {
    composer->setFocus();
    QTest::mouseClick(composer, Qt::LeftButton, {}, QPoint(composer->width() / 2, composer->height() - 24));
    EXPECT_EQ(window.focusWidget(), field);
}
