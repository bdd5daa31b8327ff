#include "ProgramTest.h"

#include "PR_PrefItem.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <random>

using namespace Qt::StringLiterals;

namespace {
class ExplainTest : public ProgramTest {
protected:
    // The explanation of a key as text, its paths shortened.
    std::string explain(QString const &key, QStringList const &options = {}) const
    {
        Run const result = run(options + QStringList{ u"explain"_s, key });
        EXPECT_EQ(result.status, 0) << result.messages;
        QString out = QString::fromStdString(result.out);
        out.replace(u"$/install/resources/"_s, QString()).replace(u"$/"_s, QString());
        return out.replace(u'\t', u'|').toStdString();
    }

    QString const m_set = u"preferenceSets/norvelle/team.xml"_s;
    QString const m_override = u"prefs_override.xml"_s;
};
} // namespace

TEST_F(ExplainTest, ShowsTheLayersInTheOrderOfTheLoad)
{
    define(category("\n<int id='K' value='1'/>"));
    define(category("\n\n<int id='K'\n value='2'/>"), m_set);
    define(category("<int id='K' value='3'/>"), m_override);
    userFile("<string id='PREFERENCE_SET' value='team'/>\n<int id='K' value='4'/>\n");
    EXPECT_EQ(explain(u"K"_s),
        "Key: K\n"
        "definitions|lost|1|prefs.xml:2|replaced by preferenceSets/norvelle/team.xml:3\n"
        "preference set|lost|2|preferenceSets/norvelle/team.xml:3|replaced by prefs_override.xml:1\n"
        "override|lost|3|prefs_override.xml:1|replaced by user-pref.xml:3\n"
        "user file|won|4|user-pref.xml:3|\n"
        "Value: 4\nDefault: 3\nOrigin: user\n");

    Run const result = run({ u"explain"_s, u"--json"_s, u"K"_s, u"PREFERENCE_SET"_s });
    QJsonArray const array = QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).array();
    ASSERT_EQ(array.size(), 2);
    QJsonObject first = array[0].toObject();
    QJsonObject const set = first.take(u"layers"_s).toArray()[1].toObject();
    EXPECT_EQ(QJsonDocument(first).toJson(QJsonDocument::Compact).toStdString(),
        R"({"default":"3","key":"K","origin":"user","type":"int","value":"4"})");
    EXPECT_EQ(QJsonDocument(set).toJson(QJsonDocument::Compact).toStdString(),
        R"({"column":1,"condition":"","file":"$/install/resources/preferenceSets/norvelle/team.xml","layer":)"
        R"("preference set","line":3,"locked":false,"outcome":"lost","reason":"replaced by )"
        R"($/install/resources/prefs_override.xml:1","value":"2"})");
}

TEST_F(ExplainTest, GivesTheReasons)
{
    struct {
        char const *name;
        QByteArray main; // the whole category
        QByteArray user;
        char const *steps; // those of other layers left out
    } const rows[] = {
        { "no value of the type", category("<int id='K' value='1'/>"), "<int id='K' value='x'/>",
            "definitions|won|1|prefs.xml:1|\nuser file|left out|x|user-pref.xml:2|no value of the type int\n" },
        { "lock", category("<int id='K' value='1' facilityOverride='true'/>\n<int id='K' value='2'/>"),
            "<int id='K' value='3'/>",
            "definitions|won|1|prefs.xml:1|locks the key\n"
            "definitions|left out|2|prefs.xml:2|the key is locked by prefs.xml:1\n"
            "user file|left out|3|user-pref.xml:2|the key is locked by prefs.xml:1\n" },
        { "platform, feature",
            category("<int id='K' value='1' feature='not rig'/>\n<int id='K' value='2' platform='beos'/>\n"
                     "<int id='K' value='3' feature='rig'/>"),
            "",
            "definitions|won|1|prefs.xml:1|feature=\"not rig\"\n"
            "definitions|left out|2|prefs.xml:2|platform=\"beos\"; the condition on the platform does not hold\n"
            "definitions|left out|3|prefs.xml:3|feature=\"rig\"; the condition on the feature does not hold\n" },
        { "feature of the category",
            "<category id='Sound' feature='rig'><int id='K' value='2' mode='scan'/></category>", "",
            "definitions|left out|2|prefs.xml:1|mode=\"scan\" category feature=\"rig\"; the condition on the feature "
            "does not hold\nNo such preference under these conditions\n" },
        { "unknown type", category("<int id='K' value='1'/>\n<enum id='K' value='a'/>"), "",
            "definitions|won|1|prefs.xml:1|\ndefinitions|left out|a|prefs.xml:2|there is no type \"enum\"\n" },
        { "twice in the user's file", category("<int id='K' value='1'/>"),
            "<int id='K' value='2'/>\n<string id='K' value='3'/>\n<int id='K' value='x'/>",
            "definitions|lost|1|prefs.xml:1|replaced by user-pref.xml:2\n"
            "user file|lost|2|user-pref.xml:2|replaced by user-pref.xml:3\nuser file|won|3|user-pref.xml:3|\n"
            "user file|left out|x|user-pref.xml:4|no value of the type int\n" },
        { "without definition", "", "<int id='K' value='7'/>",
            "user file|won|7|user-pref.xml:2|no definition has the key\n" },
    };
    static QRegularExpression const others(
        u"^((Key|Value|Default|Origin): |[^|]+\\|absent\\|).*\n"_s, QRegularExpression::MultilineOption);
    for (auto const &row : rows) {
        define(row.main);
        userFile(row.user);
        EXPECT_EQ(QString::fromStdString(explain(u"K"_s)).remove(others), QString::fromUtf8(row.steps)) << row.name;
    }

    define(category("<int id='MORPH_K' value='1'/>"));
    EXPECT_NE(explain(u"MORPH_K"_s).find("left out|1|prefs.xml:1|the product has no morphing\n"), std::string::npos);
    EXPECT_NE(explain(u"MORPH_K"_s, { u"--morphing"_s }).find("won|1|prefs.xml:1|\n"), std::string::npos);
}

TEST_F(ExplainTest, TellsOfFilesThatAreNotRead)
{
    define(category("<int id='INT' value='1'/><int id='LOCKED' value='1' facilityOverride='true'/><int id='TEXT'/>"));
    auto const has = [this](char const *key, char const *line) {
        std::string const found = explain(QLatin1String(key));
        EXPECT_NE(found.find(line), std::string::npos) << found;
    };
    has("INT",
        "user file|absent||user-pref.xml|cannot be opened: No such file or directory\n"
        "text file|absent||user.pref|there is no such file\nValue: 1\n");

    writeFile(u"user.pref"_s, "INT 4\nLOCKED 5\nTEXT x\nOTHER 6\n");
    has("INT", "definitions|lost|1|prefs.xml:1|replaced by user.pref\n");
    has("INT", "text file|won|4|user.pref|\nValue: 4\n");
    has("LOCKED", "text file|left out|5|user.pref|the key is locked by prefs.xml:1\n");
    has("TEXT", "text file|left out|x|user.pref|no value of the type\n");
    has("OTHER", "text file|won|6|user.pref|\nValue: 6\nOrigin: user\n");

    writeFile(u"install/resources/prefs_override.xml"_s, "<preferences>\n<category>");
    has("INT", "override|absent||prefs_override.xml|cannot be parsed: Premature end of document. (line 2)\n");
    userFile("<int id='INT' value='2'/><string id='PREFERENCE_SET' value='none'/>");
    has("INT", "preference set|absent||preferenceSets/norvelle/none.xml|cannot be opened: No such file or directory\n");

    writeFile(u"user-pref.xml"_s, "<preferences");
    has("INT",
        "user file|absent||user-pref.xml|cannot be parsed: Premature end of document. (line 1)\n"
        "text file|won|4|user.pref|\nValue: 4\n");
    EXPECT_EQ(run({ u"explain"_s, u"INT"_s }).messages, run({ u"get"_s, u"INT"_s }).messages);

    // The preference set is looked for in the user's file alone.
    define(category("<int id='INT' value='7'/>"), m_set);
    writeFile(u"user-pref.xml~"_s,
        "<preferences><string id='PREFERENCE_SET' value='team'/><int id='INT' value='8'/></preferences>");
    has("INT", "preference set|absent|||no set is chosen\n");
    has("INT", "user file|won|8|user-pref.xml~:1|\nValue: 8\nDefault: 1\n");
}

TEST_F(ExplainTest, NamesTheNearestKey)
{
    define(category("<int id='XSHEET_LINE_HOLD' value='1'/>"));
    userFile("<int id='OLD_KEY' value='1'/>");
    expect({
        { "explain|XSHEET_LINE_HLOD", 1, "", " XSHEET_LINE_HLOD. Did you mean XSHEET_LINE_HOLD?\n" },
        { "explain|xsheet_line_hold", 1, "", " Did you mean XSHEET_LINE_HOLD?\n" },
        { "explain|OLDKEY", 1, "", " Did you mean OLD_KEY?\n" },
        { "explain|OLD_KEY|SOMETHING", 1, "", " SOMETHING.\n" },
        { "explain|LINE", 1, "", " LINE.\n" },
    });
}

// Random layers: what the explanation says must be what a store gives.
TEST_F(ExplainTest, AgreesWithTheStore)
{
    std::mt19937 random(20240607);
    auto const pick = [&random](std::vector<QByteArray> const &choices) { return choices[random() % choices.size()]; };
    int const keyCount = 60;
    auto const element = [&](QByteArray const &conditions) -> QByteArray {
        QByteArray const type = pick({ "bool", "int", "double", "string", "color", "shortcut", "enum" });
        return "<" + type + " id='" + pick({ "K", "MORPH" }) + QByteArray::number(random() % keyCount) + "' value='"
            + pick({ "1", "7", "Y", "true", "x", "2.5", "F1", "" }) + "' red='" + pick({ "1", "300", "x" }) + "' "
            + conditions + "/>\n";
    };
    auto const conditions = [&]() -> QByteArray {
        return pick({ "", "", "", "platform='linux'", "platform='beos'", "platform='not linux'" }) + ' '
            + pick({ "", "", "", "mode='full'", "mode='not scan'", "mode='scan'" }) + ' '
            + pick({ "", "", "", "feature='rig'", "feature='not rig'", "feature='sound'" }) + ' '
            + pick({ "", "", "", "", "facilityOverride='true'", "facilityOverride='yes'" });
    };
    auto const categories = [&](int count) {
        QByteArray text;
        for (int i = 0; i < count; ++i) {
            text += "<category id='" + pick({ "Sound", "Internal", "Nothing" }) + "' " + conditions() + ">\n";
            for (int j = 0; j < 12; ++j)
                text += element(conditions());
            text += "</category>\n";
        }
        return text;
    };
    host.featureKeywords = QStringList{ u"rig"_s };
    for (int round = 0; round < 12; ++round) {
        define(categories(8));
        define(categories(3), m_set);
        define(categories(2), m_override);
        QByteArray user = pick({ "", "<string id='PREFERENCE_SET' value='team'/>" });
        for (int i = 0; i < 40; ++i)
            user += element({});
        userFile(user);

        TestStore const store(path(u"user.pref"_s));
        QStringList arguments{ u"--feature"_s, u"rig"_s, u"explain"_s, u"--json"_s };
        for (PR_PrefItem const *item : store)
            arguments += item->getKey();
        EXPECT_GT(arguments.size(), 24);
        std::string const out = run(arguments).out;
        for (QJsonValue const &value : QJsonDocument::fromJson(QByteArray::fromStdString(out)).array()) {
            QString const key = value[u"key"_s].toString();
            QStringList winners;
            for (QJsonValue const &layer : value[u"layers"_s].toArray()) {
                if (layer[u"outcome"_s].toString() == u"won")
                    winners += layer[u"value"_s].toString();
            }
            EXPECT_EQ(winners.join(u'|'), store.find(key)->valueAsString()) << key;
            arguments.removeOne(key);
        }
        EXPECT_EQ(arguments.size(), 4); // all were explained
    }
}
