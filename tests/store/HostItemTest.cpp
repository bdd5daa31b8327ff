// Items of classes that a host brings along: the store may rely on nothing but their interface.

#include "StoreTest.h"

#include "PR_CachedPreferences.h"
#include "PR_IntItem.h"
#include "PR_PrefItemFactory.h"
#include "PR_PrefUtil.h"
#include "PR_StringItem.h"
#include "TULex.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {
// A text that tells of each operation on it as the last thing that it does: it may be gone then.
class HostItem : public PR_StringItem {
public:
    using PR_StringItem::PR_StringItem;
    ~HostItem() override { tell("delete"); }

    bool loadXml(QDomElement const &element) override
    {
        elements.append(element.parentNode().toElement().tagName() + u'/' + element.tagName());
        bool const isTaken = takes(element.attribute(u"id"_s));
        if (isTaken)
            setValue(element.attribute(u"value"_s));
        tell("load");
        return isTaken;
    }
    bool load(TULex &lex) override
    {
        if (!takes(lex))
            return false;
        lex.get(false);
        setValue(lex);
        lex.get(false);
        return true;
    }
    void saveXml(QDomDocument *document, bool force) override
    {
        if (add)
            add(*document);
        else
            PR_StringItem::saveXml(document, force);
        tell("save");
    }
    void defaultInUser() override
    {
        PR_StringItem::defaultInUser();
        tell("default");
    }
    PR_PrefItem *clone() override
    {
        auto *const item = new HostItem(*this);
        tell("clone");
        return item;
    }
    QString valueAsString() const override
    {
        QString const text = value();
        tell("text");
        return text;
    }

    inline static std::function<void(QString const &key, std::string const &operation)> tellTo;
    inline static std::function<void(QDomDocument &document)> add;
    inline static QStringList elements; // that were offered, with the names of their parents

private:
    // Its own key, or that key as it was before a preference got a new name.
    bool takes(QString const &key) const { return key == getKey() || key == "OLD_"_L1 + getKey(); }
    void tell(char const *operation) const
    {
        if (tellTo)
            tellTo(getKey(), operation);
    }
};

class HostItemTest : public StoreTest {
protected:
    HostItemTest()
    {
        static PR_ConcretePrefItemFactory<HostItem> factory(u"host"_s);
        factory.registerClass();
        define(category("<int id='A' value='1'/><host id='B' value='b'/><int id='C' value='1'/><host id='D' value='d'/>"
                        "<int id='E' value='1'/>"));
        writeFile(xmlName, "<preferences><int id='A' value='2'/><int id='OTHER' value='2'/></preferences>");
    }
    ~HostItemTest() override
    {
        HostItem::tellTo = nullptr;
        HostItem::add = nullptr;
        HostItem::elements.clear();
    }
};
} // namespace

TEST_F(HostItemTest, MayChangeTheStoreInEachOperation)
{
    TestStore other(name);
    std::pair<char const *, std::function<void(TestStore &)>> const walks[] = {
        { "load", [](TestStore &store) { store.load(); } },
        { "save", [](TestStore &store) { store.save(); } },
        { "clone", [&](TestStore &store) { other.copy(store); } },
        { "clone", [&](TestStore &store) { store.copy(other); } },
        { "default", [](TestStore &store) { store.restoreDefaults(); } },
        { "delete", [](TestStore &store) { store.deleteAllKeyBeginingWith(u""_s); } },
        { "delete", [](TestStore &store) { store.clear(); } },
        { "delete", [](TestStore &store) { store.setIntValue(u"B"_s, 1); } },
        { "delete", [](TestStore &store) { store.deleteKey(u"D"_s); } },
    };
    std::pair<char const *, std::function<void(TestStore &, QString const &key)>> const changes[] = {
        { "remove itself", [](TestStore &store, QString const &key) { store.deleteKey(key); } },
        { "remove the one before",
            [](TestStore &store, QString const &key) { store.deleteKey(QChar(key[0].unicode() - 1)); } },
        { "remove the one behind",
            [](TestStore &store, QString const &key) { store.deleteKey(QChar(key[0].unicode() + 1)); } },
        { "add many",
            [](TestStore &store, QString const &key) {
                for (int i = 0; i < 40; ++i)
                    store.setIntValue(u"%1 %2"_s.arg(QChar(key[0].unicode() + i % 3 - 1)).arg(i), i);
            } },
        { "load", [](TestStore &store, QString const &) { store.load(); } },
    };
    for (auto const &[operation, walk] : walks) {
        for (auto const &[what, change] : changes) {
            SCOPED_TRACE(std::string(operation) + ": " + what);
            auto const store = std::make_unique<TestStore>(name);
            int calls = 0;
            HostItem::tellTo = [&, change = change](QString const &key, std::string const &called) {
                if (called == operation && ++calls <= 2)
                    change(*store, key);
            };
            walk(*store);
            EXPECT_GT(calls, 0);
            HostItem::tellTo = nullptr;
            QString last;
            for (PR_PrefItem const *item : *store) {
                EXPECT_LT(last, item->getKey());
                EXPECT_EQ(store->find(item->getKey()), item);
                last = item->getKey();
            }
        }
    }
}

TEST_F(HostItemTest, MayChangeTheStoreWhileCachedValuesAreRead)
{
    define(category("<host id='CACHE_FOLDER_PATH' value='first'/><int id='XSHEET_LINE_HOLD' value='3'/>"));
    std::unique_ptr<PR_Preference> const store(PR_Preference::createPreference(name));
    EXPECT_EQ(PR_CachedPreferences::getCachePath(), u"first"_s) << "what its own operation gives";
    int calls = 0;
    HostItem::tellTo = [&](QString const &, std::string const &operation) {
        if (operation == "text" && ++calls < 4) {
            store->setIntValue(u"NEW %1"_s.arg(calls), 0);
            store->setStringValue(u"CACHE_FOLDER_PATH"_s, QString::number(calls));
        }
    };
    store->setIntValue(u"XSHEET_LINE_HOLD"_s, 4);
    EXPECT_EQ(PR_CachedPreferences::getCachePath(), u"3"_s);
    EXPECT_EQ(PR_CachedPreferences::getXsheetLineHold(), 4);
}

TEST_F(HostItemTest, IsAskedInTheOrderOfTheKeysWhateverTheKeyOfAnElement)
{
    struct {
        QByteArray elements;
        char const *saved;
        QByteArray text;
        char const *savedOfText;
    } const rows[] = {
        { "<string id='OLD_D' value='7'/>", "string D=7 user", "OLD_D 7", "string D=7 user" },
        { "<string id='OLD_B' value='7'/><int id='D' value='8'/>", "string B=7 user, string D=8 user", "D 8 OLD_B 7",
            "string B=7 user, string D=8 user" },
        { "<int id='C' value='7'/>", "int C=7 user", "C 7 E 8", "int C=7 user, int E=8 user" },
        // An item that cannot read its value has moved on to what the next one is offered.
        { "<int id='C' value='no'/>", "", "C OLD_D 7", "string D=7 user" },
        { "<int id='OTHER' value='7'/>", "int OTHER=7 internal", "OTHER 7", "string OTHER=7 internal" },
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.text.constData());
        writeFile(xmlName, "<preferences>" + row.elements + "</preferences>");
        EXPECT_EQ(text(TestStore(name), true), row.saved);
        QFile::remove(path(xmlName));
        writeFile(u"user.pref"_s, row.text);
        EXPECT_EQ(text(TestStore(name), true), row.savedOfText);
        takeReports();
    }

    QString calls;
    HostItem::tellTo = [&calls](QString const &key, std::string const &) { calls += key; };
    TestStore store(name, false, false);
    store.initPreferences();
    TestStore copy(store);
    copy.restoreDefaults();
    copy.deleteAllKeyBeginingWith(u""_s);
    EXPECT_EQ(calls, u"BDBDBD"_s) << "cloned, restored, deleted";
    takeReports();
}

TEST_F(HostItemTest, SeesOneDocumentAndKeepsWhatItAddsToIt)
{
    QStringList seen;
    HostItem::add = [&seen](QDomDocument &document) {
        QDomElement root = document.documentElement();
        seen.append(root.tagName() + u' ' + root.lastChildElement().attribute(u"id"_s));
        root.setAttribute(u"version"_s, u"2"_s);
        root.appendChild(document.createComment(u" a--b- "_s));
        PR_PrefUtil::addElement(&document, u"größe"_s, u"SIZE"_s, u"1"_s, false);
        PR_PrefUtil::addElement(&document, u"no name"_s, u"LINES"_s, u"a]]>\r\nb"_s, true);
        QDomElement curve = root.appendChild(document.createElement(u"ns:curve"_s)).toElement();
        curve.setAttribute(u"id"_s, u"CURVE"_s);
        curve.setAttribute(u"bad name"_s, u"x"_s);
        curve.appendChild(document.createProcessingInstruction(u"tool"_s, u"a?>b"_s));
        QDomNode point = curve.appendChild(document.createElement(u"point"_s));
        point.appendChild(document.createTextNode(u"1 < 2 ]]>"_s + QChar(1)));
        point.appendChild(document.createCDATASection(u"a]]>b"_s));
        curve.appendChild(document.createElement(u"empty"_s));
        curve.appendChild(document.createEntityReference(u"unknown"_s));
    };
    TestStore store(name);
    store.deleteKey(u"D"_s);
    store.deleteKey(u"OTHER"_s);
    store.setIntValue(u"E"_s, 5);
    store.save();
    EXPECT_EQ(seen, QStringList{ u"preferences A"_s });
    EXPECT_EQ(readFile(xmlName).toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<preferences version="2">
 <int id="A" value="2"/>
 <!-- a- -b- -->
 <größe id="SIZE" value="1"/>
 <string id="LINES" value="a]]&gt;&#xd;&#xa;b"/>
 <ns:curve id="CURVE">
<?tool a? >b?>
  <point>1 &lt; 2 ]]&gt;<![CDATA[a]]]]><![CDATA[>b]]></point>
  <empty/>
 </ns:curve>
 <int id="E" value="5"/>
</preferences>
)");
    HostItem::add = nullptr;
    HostItem::elements.clear();
    TestStore(name).save();
    EXPECT_TRUE(HostItem::elements.contains(u"preferences/ns:curve"_s)) << HostItem::elements.join(u' ');
    EXPECT_TRUE(readFile(xmlName).contains(R"(<string id="LINES" value="a]]&gt;&#xd;&#xa;b"/>)"));

    // What no load would take is left out and told of.
    HostItem::add = [](QDomDocument &document) {
        QDomNode node = document.documentElement();
        for (int depth = 0; depth < 300; ++depth)
            node = node.appendChild(document.createElement(u"deep"_s));
        for (int i = 0; i < 300; ++i)
            node.toElement().setAttribute(u"a%1"_s.arg(i), i);
    };
    store.save();
    EXPECT_TRUE(store.saveStatus().reason.contains(u"nested"_s));
    TestStore const loaded(name);
    EXPECT_EQ(loaded.getInt(u"E"_s), 5);
}
