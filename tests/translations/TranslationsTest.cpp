#include "TestSupport.h"

#include "PR_PrefItem.h"
#include "oswUtil.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// One message of a translation file.
struct Entry {
    QString context;
    QString source;
    QString translation;
    QString state; // empty when it is finished

    friend bool operator==(Entry const &a, Entry const &b)
    {
        return a.context == b.context && a.source == b.source && a.translation == b.translation && a.state == b.state;
    }
    friend std::ostream &operator<<(std::ostream &stream, Entry const &entry)
    {
        return stream << entry.context << ' ' << entry.source << " -> " << entry.translation << ' ' << entry.state;
    }
};

std::vector<Entry> entriesOf(QString const &path)
{
    QFile file(path);
    QDomDocument document;
    EXPECT_TRUE(file.open(QIODevice::ReadOnly) && document.setContent(&file)) << path;
    std::vector<Entry> entries;
    QDomNodeList const messages = document.elementsByTagName(u"message"_s);
    for (int i = 0; i < messages.size(); ++i) {
        QDomElement const message = messages.at(i).toElement();
        QDomElement const translation = message.firstChildElement(u"translation"_s);
        entries.push_back({ message.parentNode().firstChildElement(u"name"_s).text(),
            message.firstChildElement(u"source"_s).text(), translation.text(), translation.attribute(u"type"_s) });
    }
    return entries;
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

class TranslationsTest : public HostTest {
protected:
    ~TranslationsTest() override { QCoreApplication::removeTranslator(&m_translator); }

    // The languages that have a translation file.
    static QStringList languages()
    {
        QStringList names = QDir(QStringLiteral(BRIVANT_TRANSLATIONS)).entryList({ u"brivantpreference_*.ts"_s });
        EXPECT_GE(names.size(), 2);
        return names.replaceInStrings(QRegularExpression(u"^brivantpreference_|\\.ts$"_s), QString());
    }

    static QString sourceFile(QString const &language)
    {
        return QStringLiteral(BRIVANT_TRANSLATIONS "/brivantpreference_") + language + u".ts"_s;
    }

    static QString translated(QString const &language, QString const &source)
    {
        for (Entry const &entry : entriesOf(sourceFile(language))) {
            if (entry.source == source)
                return entry.translation;
        }
        ADD_FAILURE() << source << " has no translation";
        return {};
    }

    // What a host does, with the file that lies beside the shipped resources.
    void install(QString const &language)
    {
        QString const installFolder = std::exchange(host.installFolder, QString());
        QString const folder = oswUtil::ZeltDir(false) + u"/translations"_s;
        host.installFolder = installFolder;
        ASSERT_TRUE(m_translator.load(u"brivantpreference_"_s + language, folder)) << folder;
        ASSERT_TRUE(QCoreApplication::installTranslator(&m_translator));
    }

    // The error stream of the program prefs under variables such as "LANG=de LANGUAGE=de:fr".
    QString messagesOfProgram(char const *variables, QStringList const &arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (char const *name : { "LANG", "LANGUAGE", "LC_ALL", "LC_MESSAGES" })
            environment.remove(QLatin1String(name));
        for (QString const &variable : QString::fromLatin1(variables).split(u' ', Qt::SkipEmptyParts))
            environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(PREFS_PROGRAM),
            QStringList{ u"--install"_s, path(u"install"_s), u"--user"_s, path(u"user.pref"_s) } + arguments);
        EXPECT_TRUE(process.waitForFinished()) << process.errorString();
        return QString::fromUtf8(process.readAllStandardError());
    }

    QString const lock =
        u"This preference has been locked at the facility-wide level.\n Please see your system administrator "
        "for details."_s;

private:
    QTranslator m_translator;
};
} // namespace

TEST_F(TranslationsTest, EachMessageIsTranslatedInFull)
{
    for (QString const &language : languages()) {
        for (Entry const &entry : entriesOf(sourceFile(language))) {
            SCOPED_TRACE(testing::PrintToString(entry));
            EXPECT_EQ(entry.state, QString());
            EXPECT_FALSE(entry.translation.trimmed().isEmpty());
            for (char const *kept : { "%[0-9]+", "\n", "^\\s+", "\\s+$" })
                EXPECT_EQ(partsOf(entry.source, kept), partsOf(entry.translation, kept)) << kept;
            // No blank at which a line may break, no apostrophe of a typewriter.
            char const *const bad = language == "fr"_L1 ? " [:;!?\xBB]|\xAB |'" : "(?!)";
            EXPECT_EQ(partsOf(entry.translation, bad), QStringList());
        }
    }
}

TEST_F(TranslationsTest, SourcesAndTranslationsHaveTheSameMessages)
{
    for (QString const &language : languages()) {
        QString const copy = path(language + u".ts"_s);
        ASSERT_TRUE(QFile::copy(sourceFile(language), copy));
        QProcess lupdate;
        lupdate.start(QStringLiteral(LUPDATE_PROGRAM),
            { u"-locations"_s, u"none"_s, QStringLiteral(BRIVANT_SOURCES), u"-ts"_s, copy });
        ASSERT_TRUE(lupdate.waitForFinished()) << lupdate.errorString();
        ASSERT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().constData();
        EXPECT_EQ(entriesOf(copy), entriesOf(sourceFile(language)))
            << "build the target update_translations, then translate " << sourceFile(language);
    }
}

TEST_F(TranslationsTest, ReportsAreInTheLanguageOfTheHost)
{
    for (QString const &language : languages()) {
        SCOPED_TRACE(testing::PrintToString(language));
        ASSERT_NO_FATAL_FAILURE(install(language));
        writeFile(u"install/resources/prefs.xml"_s, "<preferences");
        TestStore failed({});
        QString const source = u"Unable to parse prefereces file (%1)"_s;
        EXPECT_EQ(reports.at(0).source, source);
        EXPECT_EQ(reports.at(0).text, translated(language, source).arg(path(u"install/resources/prefs.xml"_s)));
        reports.clear();
        failed.save();
        EXPECT_EQ(failed.saveStatus().reason, translated(language, u"The store has no preference file."_s));

        define(category("<int id='LOCKED' value='1' facilityOverride='true'/>"));
        TestStore store({});
        reports.clear();
        store.setIntValue(u"LOCKED"_s, 2);
        EXPECT_EQ(reports.at(0).text, translated(language, lock));
        reports.clear();
    }
}

TEST_F(TranslationsTest, ProgramSpeaksTheLanguageOfItsUser)
{
    define(category("<int id='LOCKED' value='1' facilityOverride='true'/>"));
    std::pair<char const *, char const *> const sessions[] = {
        { "LC_ALL=fr_FR.UTF-8", "fr" }, { "LANG=de_DE.UTF-8 LC_MESSAGES=ja_JP.UTF-8", "ja" },
        { "LANG=de_DE.UTF-8 LANGUAGE=de:ja:fr", "ja" },
        { "LANG=en_GB.UTF-8 LANGUAGE=en_GB:fr", "" }, // needs none, and comes first
        { "LC_ALL=C LANG=fr_FR.UTF-8 LANGUAGE=fr", "" }, // what a script asks for
    };
    for (auto const &[variables, language] : sessions) {
        QString const messages = messagesOfProgram(variables, { u"set"_s, u"LOCKED"_s, u"2"_s });
        QString const text = *language ? translated(QLatin1String(language), lock) : lock;
        EXPECT_TRUE(messages.startsWith(u"prefs: "_s + text)) << variables << ": " << messages;
    }
}
