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

// The outcome for each file, in their order; what xmllint says goes to the trace of a failure.
std::vector<bool> validate(QString const &schema, QStringList const &files, QString *messages)
{
    QProcess xmllint;
    xmllint.start(u"xmllint"_s, QStringList{ u"--noout"_s, u"--relaxng"_s, schema } + files);
    EXPECT_TRUE(xmllint.waitForFinished()) << xmllint.errorString();
    *messages = QString::fromUtf8(xmllint.readAllStandardError());
    QStringList const lines = messages->split(u'\n');
    std::vector<bool> outcome;
    for (QString const &file : files) {
        bool const isValid = lines.contains(QString(file + u" validates"_s));
        EXPECT_NE(isValid, lines.contains(QString(file + u" fails to validate"_s))) << file << *messages;
        outcome.push_back(isValid);
    }
    return outcome;
}

// A document, and the text of the value of its key K for a store that loaded it; null: the schema refuses it.
struct Document {
    QByteArray content;
    char const *value = nullptr;
};

class SchemaTest : public HostTest {
protected:
    // Validates each document with one run, and lets a function load those that are valid.
    template <class Load> void check(char const *schemaName, std::vector<Document> const &documents, Load const &load)
    {
        QStringList files;
        for (Document const &document : documents)
            files.append(writeFile(QString::number(files.size()) + u".xml"_s, document.content));
        QString messages;
        std::vector<bool> const outcome = validate(schema(schemaName), files, &messages);
        SCOPED_TRACE(testing::PrintToString(messages));
        for (size_t i = 0; i < documents.size(); ++i) {
            Document const &document = documents[i];
            SCOPED_TRACE(document.content.constData());
            EXPECT_EQ(outcome[i], document.value != nullptr) << i;
            if (!document.value)
                continue;
            std::unique_ptr<TestStore> const store = load(document.content);
            takeReports();
            PR_PrefItem const *const item = store->find(u"K"_s);
            EXPECT_EQ(item ? item->valueAsString() : u"no item"_s, QLatin1String(document.value));
        }
    }
};
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
        EXPECT_TRUE(validate(place.absoluteFilePath(match.captured(1)), { file.fileName() }, &messages)[0]) << messages;
        ++count;
    }
    EXPECT_GE(count, 8);
}

TEST_F(SchemaTest, DefinitionsAreRefusedWhereTheLoaderWouldMisreadThem)
{
    auto const item = [](QByteArray const &element) -> QByteArray {
        return "<preferences>" + category(element) + "</preferences>";
    };
    auto const root = [](QByteArray const &content) -> QByteArray {
        return "<preferences>" + content + "</preferences>";
    };
    QByteArray const flag = "<bool id='K' value='true'/>";
    QByteArray const model =
        "<?xml version='1.0'?><?xml-model href='definitions.rng'?><!-- note --><preferences feature='not x'><!-- a -->";
    std::vector<Document> documents{
        { model + category(flag) + "<!-- b --></preferences><?end?>", "Yes" },
        { root("<category id='General'/>" + category("<int id='K' value='1'/>", "Sound") + category(flag)), "Yes" },
        { item("<bool value='false' id='K'></bool>"), "No" },
        { item("<bool id='K' value='true' shortDesc='' longDesc='&#xE9;&#10;' facilityOverride='TRUE'/>"), "Yes" },
        { item("<bool id='K' value='true' platform='not windows' mode='not scan' feature='not x'/>"), "Yes" },
        { item("<int id='K' value='+5'/>"), "5" },
        { item("<int id='K' value=' -2147483648 ' min='-2147483648' max='2147483647'/>"), "-2147483648" },
        { item("<double id='K' value='-2.5e-3' percentage='true'/>"), "-0.002500" },
        { item("<double id='K' value='.5' percentage='false'/>"), "0.500000" },
        { item("<double id='K' value='5.'/>"), "5.000000" },
        { item("<double id='K' value='7'/>"), "7.000000" },
        { item("<color id='K' red='0' green='255' blue='007'/>"), "(  0 255   7 255)" },
        { item("<color id='K' alpha='0' blue='1' green='2' red='3'/>"), "(  3   2   1   0)" },
        { item("<string id='K'/>"), "" },
        { item("<string id='K' value='a &lt;b&gt; &#10;c'/>"), "a <b> \nc" },
        { item("<font id='K' value='Courier'/>"), "courier" },
        { item("<font id='K'/>"), "arial" },
        { item("<shortcut id='K' value=''/>"), "" },
        { item("<shortcut id='K' value='Ctrl+Shift+S' mode='full'/>"), "Ctrl+Shift+S" },

        { "<prefs/>" },
        { "<preferences platform='linux'/>" },
        { root(flag) },
        { root("<category>" + flag + "</category>") },
        { root("<category id='Genral'>" + flag + "</category>") },
        { root("<category id='general'>" + flag + "</category>") },
        { root("<category id='Node  View'>" + flag + "</category>") },
        { root("<category id='General' name='x'>" + flag + "</category>") },
        { root("<category id='General'>" + category(flag) + "</category>") },
        { root("<group id='General'>" + flag + "</group>") },
        { item("text") },
        { item("<enum id='K' value='1'/>") },
        { item("<boolean id='K' value='true'/>") },
        { item("<Bool id='K' value='true'/>") },
        { item("<bool value='true'/>") },
        { item("<bool id='' value='true'/>") },
        { item("<bool id='xsheet line' value='true'/>") },
        { item("<bool id='K'/>") },
        { item("<bool id='K' default='true'/>") },
        { item("<bool id='K' value='true' max='1'/>") },
        { item("<bool id='K' value='true' shortdesc='x'/>") },
        { item("<bool id='K' value='true'>true</bool>") },
        { item("<bool id='K' value='True'/>") },
        { item("<bool id='K' value='Y'/>") },
        { item("<bool id='K' value='1'/>") },
        { item("<bool id='K' value=' true'/>") },
        { item("<bool id='K' value='true' facilityOverride='yes'/>") },
        { item("<bool id='K' value='true' facilityOverride=''/>") },
        { item("<bool id='K' value='true' platform='unix'/>") },
        { item("<bool id='K' value='true' platform='Linux'/>") },
        { item("<bool id='K' value='true' platform='not  windows'/>") },
        { item("<bool id='K' value='true' platform='notwindows'/>") },
        { item("<bool id='K' value='true' platform='windows linux'/>") },
        { item("<bool id='K' value='true' mode='Paint'/>") },
        { item("<bool id='K' value='true' mode='not'/>") },
        { item("<bool id='K' value='true' mode='not full '/>") },
        { item("<bool id='K' value='true' feature=''/>") },
        { item("<bool id='K' value='true' feature='not'/>") },
        { item("<bool id='K' value='true' feature='not  x'/>") },
        { item("<bool id='K' value='true' feature='x y'/>") },
        { item("<int id='K' value=''/>") },
        { item("<int id='K' value='1.0'/>") },
        { item("<int id='K' value='0x10'/>") },
        { item("<int id='K' value='2147483648'/>") },
        { item("<int id='K' value='1' min='none'/>") },
        { item("<double id='K' value='0,5'/>") },
        { item("<double id='K' value='NaN'/>") },
        { item("<double id='K' value='50%'/>") },
        { item("<double id='K' value='0.5' percentage='yes'/>") },
        { item("<color id='K' red='1' green='2'/>") },
        { item("<color id='K' red='256' green='2' blue='3'/>") },
        { item("<color id='K' red='1' green='-1' blue='3'/>") },
        { item("<color id='K' red='1' green='2' blue='3' alpha='0.5'/>") },
        { item("<color id='K' red='ff' green='2' blue='3'/>") },
        { item("<color id='K' value='#010203'/>") },
        { item("<string id='K' cdata='true'><![CDATA[a]]></string>") },
    };
    for (int number = 0; number <= PR_PrefItem::Panovia; ++number) {
        auto const name = PR_PrefItem::getCategoryString(PR_PrefItem::Category(number));
        documents.push_back({ root(category(flag, name.toUtf8())), "Yes" });
    }
    documents.push_back({ root(category(flag, "Panovia")), "Yes" });

    check("definitions.rng", documents, [this](QByteArray const &content) {
        writeFile(u"install/resources/prefs.xml"_s, content);
        return std::make_unique<TestStore>(QString());
    });
}

TEST_F(SchemaTest, UserFilesAreRefusedWhereALoadWouldMisreadThem)
{
    define({});
    std::vector<Document> documents{
        { "<bool id='K' value='N'/>", "No" },
        { "<int id='e/s/other' value='1'/><int value='-7' id='K'/>", "-7" },
        { "<double id='K' value='1e-05'/>", "0.000010" },
        { "<double id='K' value='-inf'/>", "-inf" },
        { "<color id='K' alpha='255' blue='3' green='2' red='1'/>", "(  1   2   3 255)" },
        { "<string id='K' value='a&#xa;b'/>", "a\nb" },
        { "<string id='K' cdata='true'><![CDATA[a\n<b>]]></string>", "a\n<b>" },
        { "<font id='K' value='Arial'/><enum id='E' value='2'/>", "Arial" },
        { "<shortcut id='K' value='Num+4'/>", "Num+4" },
        { "<curve id='K' value='x' steps='2'><point x='1'>t</point></curve>", "x" },

        { "<bool id='K' value='true'/>" },
        { "<bool value='Y'/>" },
        { "<int id='' value='1'/>" },
        { "<int id='K' value='1' min='0'/>" },
        { "<int id='K' value='1.5'/>" },
        { "<double id='K' value='0,5'/>" },
        { "<color id='K' blue='3' green='2' red='1'/>" },
        { "<color id='K' alpha='255' blue='3' green='2' red='300'/>" },
        { "<string id='K'/>" },
        { "<string id='K'>text</string>" },
        { "<string id='K' value='a' cdata='true'>b</string>" },
        { "<category id='General'><bool id='K' value='Y'/></category><curve/>" },
        { "text" },
    };
    for (Document &document : documents)
        document.content = "<preferences>" + document.content + "</preferences>";
    check("user-file.rng", documents, [this](QByteArray const &content) {
        writeFile(u"user-pref.xml"_s, content);
        return std::make_unique<TestStore>(path(u"user.pref"_s));
    });
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
    EXPECT_TRUE(validate(schema("user-file.rng"), { path(u"user-pref.xml"_s) }, &messages)[0]) << messages;
}

TEST_F(SchemaTest, EditorsFindHelpForEachElementAndAttribute)
{
    for (char const *name : { "definitions.rng", "user-file.rng" }) {
        QFile file(schema(name));
        QDomDocument document;
        ASSERT_TRUE(file.open(QIODevice::ReadOnly) && document.setContent(&file));
        for (char const *kind : { "element", "attribute" }) {
            QDomNodeList const patterns = document.elementsByTagName(QLatin1String(kind));
            EXPECT_GT(patterns.size(), 5);
            for (int i = 0; i < patterns.size(); ++i) {
                QDomElement const pattern = patterns.at(i).toElement();
                bool const hasHelp = !pattern.firstChildElement(u"a:documentation"_s).text().isEmpty();
                EXPECT_TRUE(hasHelp || !pattern.hasAttribute(u"name"_s)) << name << ' ' << pattern.attribute(u"name"_s);
            }
        }
    }
}
