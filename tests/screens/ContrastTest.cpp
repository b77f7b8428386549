#include "screens/ContrastList.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ContrastTest, whatIsNotGivenCanBeReadInEveryTheme) {
    for (const ContrastPair &pair : contrastPairs()) {
        const QString what = pair.front + u" on "_s + pair.back;
        if (pair.origin == ContrastPair::Origin::ours) {
            EXPECT_GE(pair.worst(), pair.least()) << what.toStdString();
        }
    }
}

TEST(ContrastTest, theListInTheDocumentsIsTrue) {
    QFile document(QStringLiteral(DOCUMENTS_FOLDER "/contrast.md"));
    ASSERT_TRUE(document.open(QIODevice::ReadOnly)) << document.fileName().toStdString();
    if (QString::fromUtf8(document.readAll()) == contrastDocument())
        return;
    QFile list(u"contrast.md"_s);
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write(contrastDocument().toUtf8());
    FAIL() << "docs/contrast.md isn't true any more; what is stands in "
           << QFileInfo(list).absoluteFilePath().toStdString();
}
