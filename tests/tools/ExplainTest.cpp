#include "ProgramTest.h"

#include "PR_PrefItem.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
    struct Row {
        char const *name;
        QByteArray main; // the whole category
        QByteArray user;
        char const *lines; // of definitions and of the user's file, without place
    };
    auto const one = [](QByteArray const &attributes) -> QByteArray {
        return category("<int id='K' " + attributes + "/>");
    };
    char const *const noSuch = "No such preference under these conditions\n";
    std::string const notInUserFile = "user file|absent||user-pref.xml|the key is not in it\n";
    Row const rows[] = {
        { "no value", one("value='1'"), "<int id='K' value='x'/>",
            "definitions|won|1|prefs.xml:1|\nuser file|left out|x|user-pref.xml:2|no value of the type int\n" },
        { "lock", one("value='1' facilityOverride='true'"), "<int id='K' value='2'/>",
            "definitions|won|1|prefs.xml:1|locks the key\n"
            "user file|left out|2|user-pref.xml:2|the key is locked by prefs.xml:1\n" },
        { "lock before", one("value='1' facilityOverride='true'") + one("value='2'"), "",
            "definitions|won|1|prefs.xml:1|locks the key\n"
            "definitions|left out|2|prefs.xml:1|the key is locked by prefs.xml:1\n" },
        { "platform", one("value='1'") + one("value='2' platform='beos'"), "",
            "definitions|won|1|prefs.xml:1|\n"
            "definitions|left out|2|prefs.xml:1|platform=\"beos\"; the condition on the platform does not hold\n" },
        { "feature", one("value='1' feature='not rig'") + one("value='2' feature='rig'"), "",
            "definitions|won|1|prefs.xml:1|feature=\"not rig\"\n"
            "definitions|left out|2|prefs.xml:1|feature=\"rig\"; the condition on the feature does not hold\n" },
        { "feature of the category",
            "<category id='Sound' feature='rig'><int id='K' value='2' mode='scan'/></category>" + one("value='1'"), "",
            "definitions|left out|2|prefs.xml:1|mode=\"scan\" category feature=\"rig\"; the condition on the feature "
            "does not hold\ndefinitions|won|1|prefs.xml:1|\n" },
        { "type", one("value='1'") + category("<enum id='K' value='a'/>"), "",
            "definitions|won|1|prefs.xml:1|\ndefinitions|left out|a|prefs.xml:1|there is no type \"enum\"\n" },
        { "twice in the user's file", one("value='1'"),
            "<int id='K' value='2'/>\n<string id='K' value='3'/>\n<int id='K' value='x'/>",
            "definitions|lost|1|prefs.xml:1|replaced by user-pref.xml:2\n"
            "user file|lost|2|user-pref.xml:2|replaced by user-pref.xml:3\nuser file|won|3|user-pref.xml:3|\n"
            "user file|left out|x|user-pref.xml:4|no value of the type int\n" },
        { "undefined number", category(""), "<int id='K' value='7'/>",
            "definitions|absent||prefs.xml|the key is not in it\n"
            "user file|won|7|user-pref.xml:2|no definition has the key\n" },
        { "excluded", one("value='1' mode='scan'"), "",
            "definitions|left out|1|prefs.xml:1|mode=\"scan\"; the condition on the mode does not hold\n" },
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.name);
        define(row.main);
        userFile(row.user);
        std::string expected = std::string("Key: K\n") + row.lines;
        size_t const user = expected.find("user file|");
        expected.insert(user == std::string::npos ? expected.size() : user,
            "preference set|absent|||no set is chosen\n"
            "override|absent||prefs_override.xml|cannot be opened: No such file or directory\n");
        std::string const found = explain(u"K"_s);
        EXPECT_EQ(found.substr(0, found.find(row.name == std::string("excluded") ? noSuch : "Value: ")),
            user == std::string::npos ? expected + notInUserFile : expected);
    }

    define(category("<int id='MORPH_K' value='1'/>"));
    EXPECT_NE(explain(u"MORPH_K"_s).find("left out|1|prefs.xml:1|the product has no morphing\n"), std::string::npos);
    EXPECT_NE(explain(u"MORPH_K"_s, { u"--morphing"_s }).find("won|1|prefs.xml:1|\n"), std::string::npos);
    define({});
    expect({ { "explain|MORHP_K", 1, "", "prefs: There is no preference MORHP_K.\n" } });
    define(category("<int id='K'/>"));
    expect({ { "explain|K|NOPE", 1, "", "prefs: There is no preference NOPE.\n" } });
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
    has("INT", "user file|won|2|user-pref.xml:2|\nValue: 2\n");

    // Of a damaged file the backup's values count. Its set does so once the backup is in its place.
    define(category("<int id='INT' value='7'/>"), m_set);
    writeFile(u"user-pref.xml~"_s,
        "<preferences><string id='PREFERENCE_SET' value='team'/><int id='INT' value='3'/></preferences>");
    writeFile(u"user-pref.xml"_s, "<preferences");
    has("INT", "preference set|absent|||no set is chosen\n");
    has("INT", "user file|won|3|user-pref.xml~:1|\nValue: 3\n");

    QFile::remove(path(u"user-pref.xml~"_s));
    EXPECT_EQ(run({ u"explain"_s, u"INT"_s }).messages, run({ u"get"_s, u"INT"_s }).messages);
    has("INT",
        "user file|absent||user-pref.xml|cannot be parsed: Premature end of document. (line 1)\n"
        "text file|won|4|user.pref|\nValue: 4\n");
}

TEST_F(ExplainTest, NamesTheNearestKey)
{
    define(category("<int id='XSHEET_LINE_HOLD' value='1'/>"));
    userFile("<int id='OLD_KEY' value='1'/>");
    expect({
        { "explain|XSHEET_LINE_HLOD", 1, "", " XSHEET_LINE_HLOD. Did you mean XSHEET_LINE_HOLD?\n" },
        { "explain|xsheet_line_hold", 1, "", " Did you mean XSHEET_LINE_HOLD?\n" },
        { "explain|OLDKEY", 1, "", " Did you mean OLD_KEY?\n" },
        { "explain|SOMETHING", 1, "", " SOMETHING.\n" },
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
        Run const result = run(arguments);
        ASSERT_EQ(result.status, 0) << result.messages;
        QJsonArray const array = QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).array();
        ASSERT_EQ(array.size(), std::distance(store.begin(), store.end()));
        ASSERT_GT(array.size(), 20);
        for (QJsonValue const &value : array) {
            QString const key = value[u"key"_s].toString();
            PR_PrefItem const &item = *store.find(key);
            SCOPED_TRACE(QJsonDocument(value.toObject()).toJson().toStdString());
            QString winner, origin;
            int winners = 0;
            for (QJsonValue const &layer : value[u"layers"_s].toArray()) {
                if (layer[u"outcome"_s].toString() != u"won")
                    continue;
                ++winners;
                winner = layer[u"value"_s].toString();
                bool const isUser = layer[u"layer"_s].toString() == u"user file";
                bool const isInternal = item.getCategory() == PR_PrefItem::Internal;
                origin = layer[u"locked"_s].toBool() ? u"facility"_s : isUser || isInternal ? u"user"_s : u"default"_s;
            }
            EXPECT_EQ(winners, 1);
            EXPECT_EQ(winner, item.valueAsString());
            EXPECT_EQ(value[u"value"_s].toString(), item.valueAsString());
            bool const isDefined = item.getCategory() != PR_PrefItem::Internal;
            EXPECT_EQ(value[u"default"_s].toString(), isDefined ? item.defaultValueAsString() : QString());
            EXPECT_EQ(value[u"origin"_s].toString(), origin);
        }
    }
}
