#include "FaultyFiles.h"
#include "StoreTest.h"

#include "PR_IntItem.h"
#include "PR_UserFileMerge_p.h"
#include "PR_XmlReader_p.h"

#include <QFile>

#include <map>
#include <random>

using namespace Qt::StringLiterals;

namespace {
using Groups = std::map<QString, QString>; // the elements of each key, as one text

QByteArray fileOf(QByteArray const &elements)
{
    return "<preferences>" + elements + "</preferences>";
}

QString textOf(PR_Element const &element)
{
    return u"%1 %2=%3;"_s.arg(element.name, element.id(), element.value());
}

Groups groupsOf(PR_Element const *root)
{
    Groups groups;
    for (PR_Element const &element : PR_Elements(root))
        groups[element.id().toString()] += textOf(element);
    return groups;
}

class SharedTest : public StoreTest {
protected:
    SharedTest()
    {
        define(category("<int id='A' value='0'/><int id='B' value='0'/><double id='D' value='0.5'/>"
                        "<int id='LOCK' value='1' facilityOverride='true'/><string id='S' value=''/>"));
        writeFile(u"user.pref"_s, "");
    }

    std::unique_ptr<TestStore> load(bool isShared = true)
    {
        auto store = std::make_unique<TestStore>(name);
        takeReports();
        store->setShared(isShared);
        return store;
    }

    void save(PR_Preference &store)
    {
        store.save();
        EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Saved);
        EXPECT_EQ(store.saveStatus().reason, u""_s);
        EXPECT_FALSE(QFile::exists(path(xmlName + u".lock"_s)));
    }

    // The elements of the file, in its order.
    std::string saved()
    {
        PR_XmlFile const file = PR_XmlFile::read(path(xmlName));
        QString text;
        for (PR_Element const &element : PR_Elements(file.tree.root()))
            text += textOf(element);
        return text.toStdString();
    }
};
} // namespace

// Against a literal model: which side each key comes from.
TEST_F(SharedTest, TheMergeTakesEachKeyFromOneSide)
{
    std::mt19937 random(7);
    auto const oneIn = [&random](unsigned int count) { return random() % count == 0; };
    auto const elements = [&](QByteArray const &from) {
        QByteArray all;
        for (char key = 'a'; key < 'h'; ++key) {
            QByteArray const before = [&] { // what the other side has of the key
                qsizetype const at = from.indexOf(QByteArray("<int id='").append(key));
                return at < 0 ? QByteArray() : from.mid(at, from.indexOf("/>", at) + 2 - at);
            }();
            if (!oneIn(3))
                all += before;
            else if (!oneIn(3))
                all +=
                    QByteArray("<int id='").append(key) + "' value='" + QByteArray::number(int(random() % 3)) + "'/>";
        }
        return all;
    };
    for (int round = 0; round < 4000 && !HasFailure(); ++round) {
        QByteArray const base = elements({}), theirs = elements(base), ownBase = elements(base),
                         own = elements(ownBase);
        PR_XmlFile const files[] = { PR_XmlFile::parse(fileOf(base)), PR_XmlFile::parse(fileOf(theirs)),
            PR_XmlFile::parse(fileOf(ownBase)), PR_XmlFile::parse(fileOf(own)) };
        bool const isGone = oneIn(8), isBackup = !isGone && oneIn(8);
        PR_UserFileMerge const merge({ files[0].tree.root(), isGone ? nullptr : files[1].tree.root(),
            files[2].tree.root(), files[3].tree.root(), isBackup });
        Groups const inBase = groupsOf(files[0].tree.root()), inFile = isGone ? inBase : groupsOf(files[1].tree.root());
        Groups const before = groupsOf(files[2].tree.root()), now = groupsOf(files[3].tree.root());
        Groups expected;
        QStringList foreign;
        auto const at = [](Groups const &groups, QString const &key) {
            auto const found = groups.find(key);
            return found == groups.end() ? QString() : found->second;
        };
        for (char letter = 'a'; letter < 'h'; ++letter) {
            QString const key = QChar::fromLatin1(letter);
            bool const isOwn =
                at(now, key) != at(before, key) || (isGone && at(inBase, key).isEmpty() && !at(now, key).isEmpty());
            bool const isLacking = isBackup && at(inFile, key).isEmpty();
            QString const result = isOwn ? at(now, key) : isLacking ? at(inBase, key) : at(inFile, key);
            if (!result.isEmpty())
                expected[key] = result;
            if (!isOwn && !isLacking && at(inFile, key) != at(inBase, key))
                foreign.append(key);
        }
        Groups found;
        QString order;
        for (PR_Element const *element : merge.merged()) {
            found[element->id().toString()] += textOf(*element);
            order += element->id();
        }
        QStringList changes = merge.foreignChanges();
        changes.sort();
        EXPECT_EQ(found, expected) << QByteArray(base + '|' + theirs + '|' + ownBase + '|' + own).toStdString();
        EXPECT_EQ(changes, foreign) << QByteArray(base + '|' + theirs + '|' + ownBase + '|' + own).toStdString();
        QString sorted = order;
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(order, sorted);
    }
}

TEST_F(SharedTest, WhatEachSavedIsInTheFileAndReachesTheOther)
{
    auto const first = load(), second = load();
    SignalCounter firstSignals(*first), secondSignals(*second);
    int const &a = second->getInt(u"A"_s);
    first->setIntValue(u"A"_s, 5);
    firstSignals.take();
    save(*first);
    EXPECT_EQ(firstSignals.take(), 0);
    second->setIntValue(u"B"_s, 6);
    second->setStringValue(u"NEW"_s, u"x"_s);
    secondSignals.take();
    save(*second);
    EXPECT_EQ(saved(), "int A=5;int B=6;string NEW=x;");
    EXPECT_EQ(a, 5) << "by the reference that was there before";
    EXPECT_EQ(secondSignals.take(), 1);

    EXPECT_TRUE(first->reloadShared());
    EXPECT_EQ(text(*first, true), "int A=5 user, int B=6 user, string NEW=x internal");
    EXPECT_EQ(firstSignals.take(), 1);
    EXPECT_FALSE(first->reloadShared());

    // A reset is a change like any other, and so is a removal.
    first->restoreDefault(u"A"_s);
    first->deleteAllKeyBeginingWith(u"NE"_s);
    save(*first);
    second->setIntValue(u"B"_s, 7);
    EXPECT_TRUE(second->reloadShared());
    EXPECT_EQ(text(*second, true), "int B=7 user") << "what is not saved yet stays";
    EXPECT_NE(second->find(u"NEW"_s), nullptr);
    save(*second);
    EXPECT_EQ(saved(), "int B=7;");
    // Of one key that both changed, the later save counts.
    first->setIntValue(u"B"_s, 8);
    save(*first);
    EXPECT_EQ(saved(), "int B=8;");
    EXPECT_TRUE(second->reloadShared());
    EXPECT_EQ(second->getInt(u"B"_s), 8);
    // What was removed comes back when it is set again, to whatever value.
    second->setStringValue(u"NEW"_s, second->getString(u"NEW"_s));
    save(*second);
    EXPECT_EQ(saved(), "int B=8;string NEW=x;");
}

TEST_F(SharedTest, WhatTheStoreDidNotChangeStaysAsItIs)
{
    QByteArray const odd = "<int id='A' value='05'/><double id='D' value='0.123456789'/><int id='LOCK' value='7'/>"
                           "<int id='S' value='x'/><string id='X'><![CDATA[y]]><z/></string><enum id='B' value='no'/>";
    writeFile(xmlName, fileOf(odd));
    auto const store = load();
    store->setIntValue(u"K"_s, 1);
    save(*store);
    EXPECT_EQ(saved(), "int A=05;double D=0.123456789;int K=1;int LOCK=7;int S=x;string X=;enum B=no;");
    EXPECT_TRUE(readFile(xmlName).contains("<z/>"));

    // A run without definitions carries all of it over, and so does one that cannot read the file.
    QFile::rename(path(u"install/resources/prefs.xml"_s), path(u"away"_s));
    auto const poor = load();
    EXPECT_EQ(poor->getErrorCode(), PR_Preference::DefaultFileNotFound);
    poor->setIntValue(u"OWN"_s, 3);
    save(*poor);
    save(*poor);
    QFile::rename(path(u"away"_s), path(u"install/resources/prefs.xml"_s));
    EXPECT_EQ(saved(), "int A=05;double D=0.123456789;int K=1;int LOCK=7;int OWN=3;int S=x;string X=;enum B=no;");
    EXPECT_FALSE(poor->reloadShared());

    // A value that another store saved for a locked key stays in the file, not in memory.
    writeFile(xmlName, fileOf("<int id='A' value='1'/><int id='LOCK' value='9'/>"));
    EXPECT_TRUE(store->reloadShared());
    EXPECT_EQ(store->getInt(u"LOCK"_s), 1);
    EXPECT_EQ(text(*store, true), "int A=1 user") << "all else is gone from the file";
}

TEST_F(SharedTest, FilesThatAreGoneOldOrDamagedLoseNothing)
{
    // Values of the old text file go into a new file, or beside what is there by then.
    writeFile(u"user.pref"_s, "A 4\nB 5\n");
    auto store = load();
    save(*store);
    EXPECT_EQ(saved(), "int A=4;int B=5;");
    QFile::remove(path(xmlName));
    store = load();
    writeFile(xmlName, fileOf("<int id='A' value='9'/>"));
    store->setStringValue(u"S"_s, u"s"_s);
    save(*store);
    EXPECT_EQ(saved(), "int A=9;string S=s;");
    EXPECT_EQ(store->getInt(u"A"_s), 9);

    // A file that is gone has changed nothing.
    QFile::remove(path(xmlName));
    EXPECT_FALSE(store->reloadShared());
    store->setIntValue(u"B"_s, 2);
    save(*store);
    EXPECT_EQ(saved(), "int A=9;int B=2;string S=s;");

    // A damaged one is kept; its backup stands for it.
    writeFile(xmlName + u'~', fileOf("<int id='A' value='8'/>"));
    writeFile(xmlName, "damaged");
    store->setIntValue(u"B"_s, 3);
    save(*store);
    EXPECT_EQ(saved(), "int A=8;int B=3;");
    EXPECT_EQ(readFile(xmlName + u".bad"_s), "damaged");

    // A copy is a store of its own.
    EXPECT_FALSE(TestStore(*store).isShared());
}

// Wherever a save fails, the next one writes what others saved before.
TEST_F(SharedTest, AFailedSaveForgetsNothing)
{
    auto const store = load();
    auto const other = load();
    for (int call = 0, isLast = 0; isLast == 0; ++call) {
        store->setIntValue(u"A"_s, 2 * call + 1);
        save(*store);
        other->setIntValue(u"B"_s, call + 1);
        save(*other);
        {
            FaultyFiles faults(call);
            store->setIntValue(u"A"_s, 2 * call + 2);
            store->save();
            isLast = !faults.hasHappened;
        }
        takeReports();
        save(*store);
        EXPECT_EQ(saved(), u"int A=%1;int B=%2;"_s.arg(2 * call + 2).arg(call + 1).toStdString()) << call;
        EXPECT_EQ(store->getInt(u"B"_s), call + 1);
    }
}
