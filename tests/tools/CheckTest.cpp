#include "TestSupport.h"

#include <QDirIterator>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {
// What the program prefs prints on its standard output. Whole sessions, with what a person types, stand in
// tests/data/sessions.
QString outputOfPrefs(QStringList const &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C"_s); // messages in English
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PREFS_PROGRAM), arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitStatus() == QProcess::NormalExit);
    return QString::fromUtf8(process.readAllStandardOutput());
}

// What is found in the files of tests/data/check stands in a file NAME.expected beside each. With the environment
// variable PREFS_UPDATE_EXPECTED these are written anew.
void expectFindings(QString const &folder, QStringList const &options)
{
    QString const data = QStringLiteral(BRIVANT_TEST_DATA "/check/");
    QStringList files;
    for (QDirIterator xml(data + folder, { u"*.xml"_s }, QDir::Files, QDirIterator::Subdirectories); xml.hasNext();)
        files.append(xml.next());
    EXPECT_FALSE(files.empty()) << folder;

    QStringList const arguments = QStringList{ u"check"_s, u"--install"_s, data + u"installation"_s } + options + files;
    QStringList const lines = outputOfPrefs(arguments).remove(data).split(u'\n');
    for (QString const &file : std::as_const(files)) {
        QString const begin = file.mid(data.size()) + u':';
        QString found;
        for (QString const &line : lines) {
            if (line.startsWith(begin))
                found += line.mid(begin.size()) + u'\n';
        }
        QFile expected(file.chopped(4) + u".expected"_s);
        if (qEnvironmentVariableIsSet("PREFS_UPDATE_EXPECTED") && expected.open(QIODevice::WriteOnly)) {
            expected.write(found.toUtf8());
            expected.close();
        }
        EXPECT_TRUE(expected.open(QIODevice::ReadOnly)) << file << expected.errorString();
        EXPECT_EQ(found.toStdString(), expected.readAll().toStdString()) << file;
    }
}
} // namespace

TEST(CheckTest, FindsTheFaultsOfTheDataFiles)
{
    // The files would be full of what these two rules find.
    expectFindings(u"definitions"_s, { u"--ignore"_s, u"missing-texts"_s, u"--ignore"_s, u"two-types"_s });
    for (QString const &folder : { u"overrides"_s, u"preferenceSets"_s, u"user-files"_s })
        expectFindings(folder, {});
    expectFindings(u"user-files-of-machine"_s, { u"--local"_s });
}
