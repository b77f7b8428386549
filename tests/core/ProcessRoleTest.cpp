#include "core/ProcessRole.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString option = u"--run-schedule"_s;
const QString idText = u"0F6C2F6E-9F5D-4E3B-8A77-2B1D4C5E6F70"_s;
const QUuid id(idText);

} // namespace

TEST(HeadlessScheduleID, itIsTheArgumentAfterTheOption) {
    EXPECT_EQ(headlessScheduleID({u"ostrelin"_s, option, idText}), id);
    EXPECT_EQ(headlessScheduleID({u"ostrelin"_s, u"-x"_s, option, idText, u"more"_s}), id);
}

TEST(HeadlessScheduleID, bothCasesAreRead) {
    EXPECT_EQ(headlessScheduleID({u"ostrelin"_s, option, idText.toLower()}), id);
}

TEST(HeadlessScheduleID, withoutTheOptionThereIsNone) {
    EXPECT_FALSE(headlessScheduleID(QStringList{}));
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s}));
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, idText}));
}

TEST(HeadlessScheduleID, theOptionIsWrittenExactlySo) {
    for (const QString &text : {u"--run-schedul"_s, u"--run-schedules"_s, u"-run-schedule"_s,
                                u"--Run-Schedule"_s, u" --run-schedule"_s})
        EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, text, idText})) << text.toStdString();
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, option + u'=' + idText}));
}

TEST(HeadlessScheduleID, anOptionAtTheEndHasNoId) {
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, option}));
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, idText, option}));
}

TEST(HeadlessScheduleID, whatIsNoCanonicalUuidIsNone) {
    for (const QString &text :
         {u"abc"_s, u""_s, u'{' + idText + u'}', idText + u' ', u' ' + idText, QString(idText).remove(u'-'),
          idText.chopped(1), idText + u'0', QString(idText).replace(u'F', u'G')})
        EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, option, text})) << text.toStdString();
}

TEST(HeadlessScheduleID, onlyTheFirstOptionCounts) {
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, option, u"abc"_s, option, idText}));
    EXPECT_FALSE(headlessScheduleID({u"ostrelin"_s, option, option, idText}));
    EXPECT_EQ(headlessScheduleID({u"ostrelin"_s, option, idText, option, u"abc"_s}), id);
}

TEST(IsHeadless, aTestIsNot) {
    EXPECT_FALSE(headlessScheduleID());
    EXPECT_FALSE(isHeadless());
}
