#include "records/Options.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QProcessEnvironment environment(const QString &name = QString(), const QString &value = QString()) {
    QProcessEnvironment made;
    if (!name.isEmpty())
        made.insert(name, value);
    return made;
}

} // namespace

TEST(Options, anArgumentInAnyOfThreeFormsIsFollowedByItsValue) {
    for (const QString &form : {u"tier"_s, u"-tier"_s, u"--tier"_s})
        EXPECT_EQ(optionValue(u"tier"_s, {u"ostrelin"_s, form, u"oak"_s}, environment()), u"oak"_s);
}

TEST(Options, noOtherFormCounts) {
    for (const QString &form : {u"---tier"_s, u"--tier=oak"_s, u"--Tier"_s, u"--tiers"_s})
        EXPECT_EQ(optionValue(u"tier"_s, {u"ostrelin"_s, form, u"oak"_s}, environment()), std::nullopt);
}

TEST(Options, theFirstOfTwoWins) {
    EXPECT_EQ(optionValue(u"totalRAM"_s,
                          {u"ostrelin"_s, u"--totalRAM"_s, u"8000000000"_s, u"--totalRAM"_s, u"9"_s},
                          environment()),
              u"8000000000"_s);
    EXPECT_EQ(optionValue(u"tier"_s, {u"ostrelin"_s, u"--tier"_s, u"-tier"_s, u"oak"_s}, environment()),
              u"-tier"_s);
}

TEST(Options, theProgramsOwnPathIsAnArgumentToo) {
    EXPECT_EQ(optionValue(u"tier"_s, {u"tier"_s, u"oak"_s}, environment()), u"oak"_s);
}

TEST(Options, theArgumentsComeBeforeTheEnvironment) {
    EXPECT_EQ(optionValue(u"tier"_s, {u"ostrelin"_s, u"--tier"_s, u"oak"_s},
                          environment(u"OSTRELIN_TIER"_s, u"elm"_s)),
              u"oak"_s);
}

TEST(Options, asTheLastArgumentItYieldsNothingAndTheVariableIsConsulted) {
    const QStringList arguments{u"ostrelin"_s, u"--tier"_s};
    EXPECT_EQ(optionValue(u"tier"_s, arguments, environment()), std::nullopt);
    EXPECT_EQ(optionValue(u"tier"_s, arguments, environment(u"OSTRELIN_TIER"_s, u"elm"_s)), u"elm"_s);
}

TEST(Options, theVariableHasTheNameInUpperCase) {
    EXPECT_EQ(optionValue(u"gpuBudget"_s, {u"ostrelin"_s}, environment(u"OSTRELIN_GPUBUDGET"_s, u"7"_s)),
              u"7"_s);
    EXPECT_EQ(optionValue(u"gpuBudget"_s, {u"ostrelin"_s}, environment(u"OSTRELIN_gpuBudget"_s, u"7"_s)),
              std::nullopt);
}

TEST(Options, anEmptyVariableIsAValue) {
    EXPECT_EQ(optionValue(u"tier"_s, {}, environment(u"OSTRELIN_TIER"_s, u""_s)), u""_s);
}

TEST(Options, theProcessesOwnEnvironmentIsRead) {
    EXPECT_EQ(optionValue(u"recordsTestOption"_s), std::nullopt);
    qputenv("OSTRELIN_RECORDSTESTOPTION", "yes");
    EXPECT_EQ(optionValue(u"recordsTestOption"_s), u"yes"_s);
    qunsetenv("OSTRELIN_RECORDSTESTOPTION");
}
