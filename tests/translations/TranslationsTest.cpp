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
    struct Texts {
        QString language;
        char const *parseFailure;
        char const *lock;
        QString noFile;
        QString noDefinitions;
        QString category;
    };
    Texts const tables[] = {
        { u"fr"_s, "2 Impossible d’analyser le fichier de préférences ($/install/resources/prefs.xml)",
            "4 Cette préférence a été verrouillée pour l’ensemble du studio.\n"
            "Pour plus de détails, adressez-vous à votre administrateur système.",
            u"Aucun fichier n’est prévu pour ces préférences."_s,
            u"Fichier des préférences par défaut introuvable\u00A0: %1 "_s, u"Mode dessin"_s },
        { u"ja"_s, "2 環境設定ファイルを解析できません（$/install/resources/prefs.xml）",
            "4 この環境設定は、施設全体でロックされています。\n詳しくは、システム管理者にお問い合わせください。",
            u"この環境設定には保存先のファイルがありません。"_s, u"既定の環境設定ファイルが見つかりません: %1 "_s,
            u"描画モード"_s },
    };
    for (Texts const &texts : tables) {
        SCOPED_TRACE(testing::PrintToString(texts.language));
        ASSERT_NO_FATAL_FAILURE(install(texts.language));

        writeFile(u"install/resources/prefs.xml"_s, "<preferences");
        TestStore failed({});
        EXPECT_EQ(reports.at(0).source, u"Unable to parse prefereces file (%1)"_s);
        EXPECT_EQ(takeReports(), std::vector<std::string>{ texts.parseFailure });
        EXPECT_EQ(failed.getErrorMessage().getText(), texts.noDefinitions.arg(path(u"install/resources/prefs.xml"_s)));
        failed.save();
        EXPECT_EQ(failed.saveStatus().reason, texts.noFile);

        define(category("<int id='LOCKED' value='1' facilityOverride='true'/>", "Drawing Mode"));
        TestStore store({});
        takeReports();
        store.setIntValue(u"LOCKED"_s, 2);
        EXPECT_EQ(takeReports(), std::vector<std::string>{ texts.lock });
        QString const name = PR_PrefItem::getCategoryString(store.find(u"LOCKED"_s)->getCategory());
        EXPECT_EQ(name, u"Drawing Mode"_s);
        EXPECT_EQ(QCoreApplication::translate("PR_PrefItem", name.toUtf8().constData()), texts.category);
    }
}

TEST_F(TranslationsTest, ProgramSpeaksTheLanguageOfItsUser)
{
    define(category("<int id='LOCKED' value='1' facilityOverride='true'/>"));
    QString const english = u"This preference has been locked at the facility-wide level.\n Please see"_s;
    QString const french = u"Cette préférence a été verrouillée pour l’ensemble du studio.\nPour plus"_s;
    QString const japanese = u"この環境設定は、施設全体でロックされています。\n詳しくは"_s;
    struct Session {
        char const *variables;
        QString message;
    };
    Session const sessions[] = {
        { "LC_ALL=fr_FR.UTF-8", french },
        { "LANG=fr_CA.UTF-8", french },
        { "LANG=de_DE.UTF-8 LC_MESSAGES=ja_JP.UTF-8", japanese },
        { "LANG=de_DE.UTF-8 LANGUAGE=de:ja:fr", japanese },
        { "LANG=de_DE.UTF-8", english }, // there is no translation
        { "LANG=en_GB.UTF-8 LANGUAGE=en_GB:fr", english }, // needs none, and comes first
        { "LC_ALL=C LANG=fr_FR.UTF-8 LANGUAGE=fr", english }, // what a script asks for
        { "", english },
    };
    for (Session const &session : sessions) {
        QString const messages = messagesOfProgram(session.variables, { u"set"_s, u"LOCKED"_s, u"2"_s });
        EXPECT_TRUE(messages.startsWith(u"prefs: "_s + session.message)) << session.variables << ": " << messages;
    }
}
