#include "records/CaseNames.h"

#include "records/Settings.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

template<typename E>
QStringList namesOf() {
    QStringList names;
    for (const QStringView name : caseNames(E{}))
        names.append(name.toString());
    return names;
}

} // namespace

TEST(CaseNames, theNamesStandInTheOrderOfDeclaration) {
    EXPECT_EQ(namesOf<Role>(), (QStringList{u"system"_s, u"user"_s, u"assistant"_s, u"tool"_s}));
    EXPECT_EQ(namesOf<SearchStatus>(), (QStringList{u"asked"_s, u"allowed"_s, u"denied"_s}));
    EXPECT_EQ(namesOf<SearchMode>(), (QStringList{u"off"_s, u"ask"_s, u"always"_s}));
    EXPECT_EQ(namesOf<ResponseSpeed>(), (QStringList{u"full"_s, u"calm"_s, u"slowYourRoll"_s}));
    EXPECT_EQ(namesOf<Theme>(), (QStringList{u"lightBlue"_s, u"pink"_s, u"crispWhite"_s, u"gray"_s,
                                             u"nearBlack"_s, u"softGreen"_s}));
    EXPECT_EQ(namesOf<TextSize>(), (QStringList{u"small"_s, u"medium"_s, u"large"_s, u"extraLarge"_s}));
    EXPECT_EQ(namesOf<TypeFace>(), (QStringList{u"sans"_s, u"serif"_s}));
}

TEST(CaseNames, aCaseAndItsNameLeadToEachOther) {
    EXPECT_EQ(nameOf(Role::tool), u"tool"_s);
    EXPECT_EQ(nameOf(Theme::softGreen), u"softGreen"_s);
    EXPECT_EQ(caseNamed<Role>(u"assistant"), Role::assistant);
    EXPECT_EQ(caseNamed<ResponseSpeed>(u"slowYourRoll"), ResponseSpeed::slowYourRoll);
}

TEST(CaseNames, anUnknownNameOrAnotherCaseOfLettersIsNoCase) {
    EXPECT_EQ(caseNamed<Role>(u"developer"), std::nullopt);
    EXPECT_EQ(caseNamed<Role>(u"User"), std::nullopt);
    EXPECT_EQ(caseNamed<Role>(u""), std::nullopt);
}
