#include "TestSupport.h"

#include "oswUtil.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {
class TranslationsTest : public HostTest { };

// The translation files of all languages.
QFileInfoList translationFiles()
{
    QFileInfoList files = QDir(QStringLiteral(BRIVANT_TRANSLATIONS)).entryInfoList({ u"brivantpreference_*.ts"_s });
    EXPECT_GE(files.size(), 2);
    return files;
}

// Every part of a text that a pattern matches, in ascending order.
QStringList partsOf(QString const &text, char const *pattern)
{
    QStringList parts;
    for (QRegularExpressionMatch const &match : QRegularExpression(QLatin1String(pattern)).globalMatch(text))
        parts.append(match.captured());
    parts.sort();
    return parts;
}
} // namespace

TEST_F(TranslationsTest, EachMessageOfTheLibraryIsTranslatedInFull)
{
    for (QFileInfo const &file : translationFiles()) {
        // What the sources do not have, and what only they have, becomes unfinished or obsolete in a copy.
        QString const copy = path(file.fileName());
        ASSERT_TRUE(QFile::copy(file.filePath(), copy));
        QProcess lupdate;
        bool const isEnglish = file.fileName().contains(u"_en"_s); // whose plurals alone are translated
        lupdate.start(QStringLiteral(LUPDATE_PROGRAM),
            QStringList{ QStringLiteral(BRIVANT_SOURCES), u"-ts"_s, copy }
                + (isEnglish ? QStringList{ u"-pluralonly"_s } : QStringList()));
        ASSERT_TRUE(lupdate.waitForFinished() && lupdate.exitCode() == 0) << lupdate.readAllStandardError().constData();

        QDomNodeList const messages = xmlElement(readFile(file.fileName())).elementsByTagName(u"message"_s);
        EXPECT_GT(messages.size(), isEnglish ? 0 : 10);
        for (int i = 0; i < messages.size(); ++i) {
            QDomElement const translation = messages.at(i).firstChildElement(u"translation"_s);
            QString const source = messages.at(i).firstChildElement(u"source"_s).text();
            SCOPED_TRACE(testing::PrintToString(QString(file.fileName() + u": "_s + source)));
            EXPECT_EQ(translation.attribute(u"type"_s), QString()) << "build update_translations, then translate";
            EXPECT_FALSE(translation.text().trimmed().isEmpty());
            for (char const *kept : { "%[0-9]+", "\n", "^\\s+", "\\s+$" })
                EXPECT_EQ(partsOf(source, kept), partsOf(translation.text(), kept)) << kept;
            // No blank at which a line may break, no apostrophe of a typewriter.
            char const *const bad = file.fileName().contains(u"_fr"_s) ? " [:;!?\xBB]|\xAB |'" : "(?!)";
            EXPECT_EQ(partsOf(translation.text(), bad), QStringList());
        }
    }
}

TEST_F(TranslationsTest, ReportsAreInTheLanguageOfTheHost)
{
    writeFile(u"install/resources/prefs.xml"_s, "<preferences");
    QString const installFolder = std::exchange(host.installFolder, QString());
    QString const shipped = oswUtil::ZeltDir(false) + u"/translations"_s;
    host.installFolder = installFolder;
    QStringList texts{ u"Unable to parse prefereces file (%1)"_s.arg(path(u"install/resources/prefs.xml"_s)) };
    for (QFileInfo const &file : translationFiles()) {
        if (file.fileName().contains(u"_en"_s)) // has plurals alone
            continue;
        QTranslator translator;
        ASSERT_TRUE(translator.load(file.completeBaseName(), shipped)) << shipped;
        QCoreApplication::installTranslator(&translator); // removed by its destructor
        TestStore const store({});
        texts += reports.at(0).text;
        EXPECT_TRUE(texts.constLast().contains(path(u"install/resources/prefs.xml"_s))) << texts.constLast();
        EXPECT_EQ(reports.at(0).source, u"Unable to parse prefereces file (%1)"_s);
        takeReports();
    }
    EXPECT_EQ(texts.removeDuplicates(), 0) << texts.join(u'\n');
}
