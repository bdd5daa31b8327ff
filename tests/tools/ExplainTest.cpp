#include "PrefsProgram.h"

#include "PR_PrefItem.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <random>

using namespace Qt::StringLiterals;

namespace {
class ExplainTest : public HostTest { };
} // namespace

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
        define(categories(3), u"preferenceSets/norvelle/team.xml"_s);
        define(categories(2), u"prefs_override.xml"_s);
        QByteArray user = pick({ "", "<string id='PREFERENCE_SET' value='team'/>" });
        for (int i = 0; i < 40; ++i)
            user += element({});
        writeFile(u"user-pref.xml"_s, "<preferences>" + user + "</preferences>");

        TestStore const store(path(u"user.pref"_s));
        QStringList keys;
        for (PR_PrefItem const *item : store)
            keys += item->getKey();
        EXPECT_GT(keys.size(), 20);
        QByteArray const json =
            outputOfPrefs(QStringList{ u"--install"_s, path(u"install"_s), u"--user"_s, path(u"user.pref"_s),
                              u"--feature"_s, u"rig"_s, u"explain"_s, u"--json"_s }
                + keys)
                .toUtf8();
        for (QJsonValue const &value : QJsonDocument::fromJson(json).array()) {
            QString const key = keys.takeFirst();
            EXPECT_EQ(value[u"key"_s].toString(), key);
            QStringList winners;
            for (QJsonValue const &layer : value[u"layers"_s].toArray()) {
                if (layer[u"outcome"_s].toString() == u"won")
                    winners += layer[u"value"_s].toString();
            }
            EXPECT_EQ(winners.join(u'|'), store.find(key)->valueAsString()) << key;
        }
        EXPECT_TRUE(keys.empty()); // all were explained
    }
}
