#include "TestSupport.h"

#include "PR_PrefItem.h"

#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
QString schema(char const *name)
{
    return QStringLiteral(BRIVANT_RESOURCES "/schema/") + QLatin1String(name);
}

// Those of the files that are valid; what xmllint says of the others goes to the messages.
QStringList validOf(char const *schemaName, QStringList const &files, QString *messages)
{
    QProcess xmllint;
    xmllint.start(u"xmllint"_s, QStringList{ u"--noout"_s, u"--relaxng"_s, schema(schemaName) } + files);
    EXPECT_TRUE(xmllint.waitForFinished()) << xmllint.errorString();
    *messages = QString::fromUtf8(xmllint.readAllStandardError());
    QStringList valid = messages->split(u'\n').filter(QRegularExpression(u" validates$"_s));
    return valid.replaceInStrings(u" validates"_s, QString());
}

using SchemaTest = HostTest;
} // namespace

TEST_F(SchemaTest, ShippedFilesNameTheirSchemaAndAreValid)
{
    int count = 0;
    QDir const resources(QStringLiteral(BRIVANT_RESOURCES));
    QDirIterator files(resources.path(), { u"*.xml"_s }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        SCOPED_TRACE(testing::PrintToString(file.fileName()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QRegularExpression const model(
            u"^<\\?xml-model href=\"(.*)\" schematypens=\"(.*)\"\\?>$"_s, QRegularExpression::MultilineOption);
        QRegularExpressionMatch const match = model.match(QString::fromUtf8(file.readAll()));
        EXPECT_EQ(match.captured(2), u"http://relaxng.org/ns/structure/1.0"_s);
        // An example stands for its copy beside the main files.
        QDir const place = file.fileName().contains(u"/examples/"_s) ? resources : QFileInfo(file).dir();
        QString messages;
        EXPECT_TRUE(QFileInfo::exists(place.absoluteFilePath(match.captured(1)))) << match.captured(1);
        EXPECT_EQ(validOf("definitions.rng", { file.fileName() }, &messages).size(), 1) << messages;
        ++count;
    }
    EXPECT_GE(count, 8);
}

// Of the files with faults that "prefs check" is tested with: a schema refuses what a load would lose or misread.
TEST_F(SchemaTest, FilesWithFaultsAreRefused)
{
    struct {
        char const *schema;
        char const *folder;
        QString valid;
    } const rows[] = {
        { "definitions.rng", "definitions",
            u"cached-key duplicate font good locked never-holds range shadowed shortcut"_s },
        { "user-file.rng", "users", u"good set unknown-key unusable"_s },
    };
    for (auto const &row : rows) {
        QDir const folder(QStringLiteral(BRIVANT_TEST_DATA "/check/") + QLatin1String(row.folder));
        QStringList files;
        for (QString const &name : folder.entryList({ u"*.xml"_s }))
            files.append(folder.filePath(name));
        QString messages;
        QStringList valid = validOf(row.schema, files, &messages);
        valid.replaceInStrings(folder.path() + u'/', QString()).replaceInStrings(u".xml"_s, QString());
        EXPECT_EQ(valid.join(u' '), row.valid) << messages;
    }
}

TEST_F(SchemaTest, ValidValuesAreReadAsTheyStand)
{
    std::pair<QByteArray, QString> const rows[] = {
        { "<bool value='false' id='K'></bool>", u"No"_s },
        { "<int id='K' value='+5'/>", u"5"_s },
        { "<int id='K' value=' -2147483648 ' min='-2147483648' max='2147483647'/>", u"-2147483648"_s },
        { "<double id='K' value='-2.5e-3' percentage='true'/>", u"-0.002500"_s },
        { "<double id='K' value='.5'/>", u"0.500000"_s },
        { "<double id='K' value='5.'/>", u"5.000000"_s },
        { "<color id='K' red='0' green='255' blue='007'/>", u"(  0 255   7 255)"_s },
        { "<string id='K' value='a &lt;b&gt; &#10;c'/>", u"a <b> \nc"_s },
        { "<font id='K' value='Courier'/>", u"courier"_s },
        { "<shortcut id='K' value='Ctrl+Shift+S' mode='full'/>", u"Ctrl+Shift+S"_s },
    };
    for (auto const &[element, value] : rows) {
        define(category(element));
        QString messages;
        EXPECT_EQ(validOf("definitions.rng", { path(u"install/resources/prefs.xml"_s) }, &messages).size(), 1)
            << messages;
        EXPECT_EQ(TestStore(QString()).find(u"K"_s)->valueAsString(), value);
        takeReports();
    }
}

TEST_F(SchemaTest, WhatASaveWritesIsValid)
{
    define(category("<font id='FONT'/><shortcut id='KEY' value='Ctrl+S'/>"));
    writeFile(u"user-pref.xml"_s,
        "<preferences><font id='FONT' value='times'/><shortcut id='KEY' value='Alt'/></preferences>");
    TestStore store(path(u"user.pref"_s));
    takeReports();
    store.setBoolValue(u"BOOL"_s, true);
    store.setIntValue(u"INT"_s, -1);
    store.setDoubleValue(u"DOUBLE"_s, 1e300);
    store.setDoubleValue(u"NO_NUMBER"_s, qQNaN());
    store.setDoubleValue(u"INFINITE"_s, -qInf());
    store.setEnumValue(u"ENUM"_s, 2);
    store.setRgbaValue(u"COLOR"_s, 0x01020304U);
    store.setStringValue(u"EMPTY"_s, QString());
    store.setStringValue(u"LINES"_s, u"a\nb"_s);
    store.setStringValue(u"CARRIAGE_RETURN"_s, u"a\r\nb"_s);
    store.setStringValue(u"a/key/<\""_s, u"]]>"_s);
    store.save();
    EXPECT_EQ(readFile(u"user-pref.xml"_s).count(" id="), 13);
    QString messages;
    EXPECT_EQ(validOf("user-file.rng", { path(u"user-pref.xml"_s) }, &messages).size(), 1) << messages;
}
