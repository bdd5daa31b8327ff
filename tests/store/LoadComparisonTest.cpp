#include "StoreTest.h"

#include "AC_XML.h"
#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_IntItem.h"
#include "PR_KeyItem.h"
#include "PR_PrefItemFactoryManager.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"

#include <QStringEncoder>

#include <limits>
#include <map>
#include <random>

using namespace Qt::StringLiterals;

namespace {
// A load by documents, as plain as can be: what the library's own is compared with.
class DocumentLoad {
public:
    DocumentLoad(QByteArray const &main, QByteArray const &set, QByteArray const &override, QByteArray const &user)
    {
        QDomDocument const userFile = parse(user);
        QDomDocument definitions = parse(main);
        QDomElement root = definitions.documentElement();
        if (root.isNull()) // such a load fails
            return;
        bool hasSet = false;
        QDomNodeList const texts = userFile.elementsByTagName(u"string"_s);
        for (int i = 0; i < texts.size() && !hasSet; ++i) {
            QDomElement const element = texts.at(i).toElement();
            if (element.attribute(u"id"_s) != u"PREFERENCE_SET")
                continue;
            if (element.attribute(u"value"_s) == u"team")
                append(definitions, set);
            hasSet = true;
        }
        append(definitions, override);
        AC_XML::trimConditions(root, HostPlatform::current().featureKeywords, false);
        for (QDomElement category = root.firstChildElement(u"category"_s); !category.isNull();
             category = category.nextSiblingElement(u"category"_s)) {
            for (QDomElement item = category.firstChildElement(); !item.isNull(); item = item.nextSiblingElement()) {
                if (holds(category) && holds(item))
                    define(category, item);
            }
        }
        for (QDomElement element = userFile.documentElement().firstChildElement(); !element.isNull();
             element = element.nextSiblingElement())
            load(element);
    }

    std::map<QString, std::unique_ptr<PR_PrefItem>> items;

private:
    static bool holds(QDomElement const &element)
    {
        return PR_Preference::isValidOnThisPlatform(element) && PR_Preference::isValidInThisMode(element);
    }

    // A damaged file gives nothing.
    static QDomDocument parse(QByteArray const &bytes)
    {
        QDomDocument document;
        return document.setContent(bytes, false) ? document : QDomDocument();
    }

    static void append(QDomDocument &document, QByteArray const &bytes)
    {
        QDomDocument const layer = parse(bytes);
        for (QDomNode node = layer.documentElement().firstChild(); !node.isNull(); node = node.nextSibling())
            document.documentElement().appendChild(document.importNode(node, true));
    }

    void define(QDomElement const &category, QDomElement const &element)
    {
        QString const key = element.attribute(u"id"_s);
        auto const number = PR_PrefItem::getCategory(category.attribute(u"id"_s));
        std::unique_ptr<PR_PrefItem> item;
        if (element.tagName() == u"shortcut")
            item = std::make_unique<PR_KeyItem>(number, key, element);
        else if (auto const factory = PR_PrefItemFactoryManager::getInstance()->factory(element.tagName()))
            item.reset(factory->create(number, key, element));
        if (!item || !PR_Preference::isValidInThisConfig(item.get()))
            return;
        item->setShortDescription(element.attribute(u"shortDesc"_s));
        item->setLongDescription(element.attribute(u"longDesc"_s));
        if (element.attribute(u"facilityOverride"_s).compare(u"true"_s, Qt::CaseInsensitive) == 0)
            item->setFacilityOverride();
        auto &held = items[key];
        if (!held || !held->hasFacilityOverride(false))
            held = std::move(item);
    }

    void load(QDomElement const &element)
    {
        QString const key = element.attribute(u"id"_s);
        for (auto const &[itsKey, item] : items) {
            if (item->loadXml(element))
                return;
        }
        if (key.isEmpty())
            return;
        auto const held = items.find(key);
        QString const tag = element.tagName();
        int const least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
        std::unique_ptr<PR_PrefItem> item;
        if (tag == u"bool")
            item = std::make_unique<PR_BoolItem>(PR_PrefItem::Internal, key, false);
        else if (tag == u"int")
            item = std::make_unique<PR_IntItem>(PR_PrefItem::Internal, key, 0, least, most);
        else if (tag == u"double")
            item = std::make_unique<PR_DoubleItem>(PR_PrefItem::Internal, key, 0.0);
        else if (tag == u"color")
            item = std::make_unique<PR_RgbaItem>(PR_PrefItem::Internal, key, 0xFFFF0000U);
        if (!item || !item->loadXml(element)) {
            QDomNode const first = element.firstChild();
            bool const isSection = element.hasAttribute(u"cdata"_s) && first.isCDATASection();
            QString const text = isSection ? first.nodeValue() : element.attribute(u"value"_s);
            item = std::make_unique<PR_StringItem>(PR_PrefItem::Internal, key, text);
            if (held != items.end()) {
                if (auto *const string = dynamic_cast<PR_StringItem *>(held->second.get()))
                    string->setValue(text);
                return;
            }
        }
        if (held == items.end())
            items[key] = std::move(item);
    }
};

// Files as people, programs and bad luck write them.
class Writer {
public:
    explicit Writer(unsigned int seed)
        : m_random(seed)
    {
    }

    int below(int count) { return int(m_random() % unsigned(count)); }
    bool oneIn(int count) { return below(count) == 0; }
    template <size_t count> QString pick(char const *const (&choices)[count])
    {
        return QString::fromUtf8(choices[below(int(count))]);
    }

    QByteArray definitions()
    {
        QString categories;
        for (int i = below(5); i > 0; --i) {
            QString items;
            for (int j = below(6); j > 0; --j)
                items += item(true) + filling();
            categories +=
                u"<%1 id=\"%2\"%3>%4</%1>%5"_s.arg(pick({ "category", "category", "category", "category", "Category" }),
                    pick({ "General", "Sound", "Panovia", "none" }), conditions(), items, filling());
        }
        return file(u"<%1%2>%3%4</%1>"_s.arg(
            pick({ "preferences", "preferences", "x:y" }), oneIn(8) ? conditions() : QString(), filling(), categories));
    }

    QByteArray userFile()
    {
        QString items = oneIn(2)
            ? pick({ "<string id='PREFERENCE_SET' value='team'/>", "<x><string id='PREFERENCE_SET' value='team'/></x>",
                "<string id='PREFERENCE_SET' value='none'/>", "<string id='PREFERENCE_SET'/>" })
            : QString();
        for (int i = below(12); i > 0; --i)
            items += item(false) + filling();
        return file(u"<preferences>%1%2</preferences>"_s.arg(filling(), items));
    }

private:
    QString text()
    {
        return pick({ "1", "0", "7", "-3", "2.5", "1e3", "true", "Y", "N", "", "x", " 12 ", "Ctrl+S", "Times", "300",
            "\xC3\xA9\xE2\x80\xA8", "a&#10;b", "&lt;&amp;&gt;", "&e;", "&#xD;", "&#32;", "\t1", "1\n",
            "\xF0\x9F\x98\x80" });
    }

    QString attribute(QString const &name)
    {
        QString const quote = oneIn(3) ? u"'"_s : u"\""_s;
        return pick({ " ", " ", " ", "\n ", "\t" }) + name + pick({ "=", "=", "=", " = " }) + quote + text() + quote;
    }

    QString conditions()
    {
        QString all;
        if (oneIn(6))
            all += u" platform='%1'"_s.arg(pick({ "linux", "windows", "not windows", "not linux", "beos", "" }));
        if (oneIn(6))
            all += u" mode='%1'"_s.arg(pick({ "full", "scan", "not scan", "not full", "" }));
        if (oneIn(6))
            all += u" feature='%1'"_s.arg(pick({ "rig", "sound", "not rig", "not sound", "not ", "" }));
        return all;
    }

    // What may stand between elements.
    QString filling()
    {
        return pick({ "\n  ", "\r\n", "\r", "", " ", "<!-- c -->", "<?pi data?>", "&#32;", "\xC2\xA0", "text",
            "<![CDATA[x]]>", "&e;", "\n" });
    }

    QString item(bool isDefinition)
    {
        QString const tag = pick({ "bool", "int", "double", "color", "string", "font", "shortcut", "enum", "n:int" });
        QString all = u" id=\"%1\""_s.arg(pick({ "A", "B", "C", "D", "E", "F", "G", "MORPH", "", "&e;" }));
        for (char const *name : { "value", "value", "red", "green", "alpha", "min", "max", "cdata", "percentage",
                 "shortDesc", "longDesc", "n:value" }) {
            if (oneIn(3) && !all.contains(u"%1="_s.arg(QLatin1String(name))))
                all += attribute(QLatin1String(name));
        }
        if (isDefinition)
            all += conditions();
        if (oneIn(8))
            all += u" facilityOverride='%1'"_s.arg(pick({ "true", "TRUE", "yes", "false" }));
        if (oneIn(2))
            return u"<%1%2/>"_s.arg(tag, all);
        QString content;
        for (int i = below(3); i > 0; --i)
            content += oneIn(2) ? pick({ "<![CDATA[a\nb]]>", "<![CDATA[]]>", "<![CDATA[ ]]>", "<x/>", "<x><y/></x>" })
                                : filling();
        return u"<%1%2>%3</%1>"_s.arg(tag, all, content);
    }

    QByteArray file(QString const &root)
    {
        QString text = root;
        if (oneIn(40))
            text.replace(u"&e;"_s, u"&none;"_s);
        if (text.contains(u"&e;"_s) || oneIn(6))
            text.prepend(u"<!DOCTYPE p [<!ENTITY e '%1'>%2]>"_s.arg(pick({ "E", "12", "<int id=\"E\" value=\"9\"/>" }),
                oneIn(2) ? u"<!ATTLIST int value CDATA '5' extra CDATA 'x'>"_s : QString()));
        if (oneIn(30)) // damaged: a few characters go, or come twice
            text.replace(below(int(text.size())), below(4), text.mid(below(int(text.size())), below(4)));
        if (oneIn(20)) {
            QStringEncoder encoder(QStringConverter::Utf16, QStringConverter::Flag::WriteBom);
            return encoder.encode(text);
        }
        QString const head = pick({ "", "", "<?xml version='1.0'?>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" });
        QByteArray const bytes = (head + text).toUtf8();
        if (oneIn(20))
            return "<?xml version='1.0' encoding='iso-8859-1'?>" + text.toLatin1();
        return oneIn(10) ? "\xEF\xBB\xBF" + bytes : bytes;
    }

    std::mt19937 m_random;
};

// A host's class, which looks at all that it is shown: what surrounds the element and what it contains.
class HostInt : public PR_IntItem {
public:
    HostInt(Category category, QString const &key, QDomElement const &element)
        : PR_IntItem(category, key, element)
        , seen(textOf(element.ownerDocument().documentElement().tagName(), element))
    {
    }
    PR_PrefItem *clone() override { return new HostInt(*this); }
    bool loadXml(QDomElement const &element) override
    {
        seen += textOf({}, element);
        return PR_IntItem::loadXml(element);
    }

    QString seen;

private:
    static QString textOf(QString const &root, QDomElement const &element)
    {
        QDomElement const outer = element.parentNode().toElement();
        QString text = u"%1/%2#%3/%4 "_s.arg(root, outer.tagName(), outer.attribute(u"id"_s), element.tagName());
        QDomNamedNodeMap const attributes = element.attributes();
        QStringList names;
        for (int i = 0; i < attributes.size(); ++i)
            names.append(attributes.item(i).nodeName() + u'=' + attributes.item(i).nodeValue());
        names.sort();
        text += names.join(u' ');
        for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling())
            text += u" %1:%2=%3"_s.arg(node.nodeType()).arg(node.nodeName(), node.nodeValue());
        return text;
    }
};

QString describe(PR_PrefItem const &item)
{
    QString text = u"%1 %2 %3 [%4] [%5] %6 %7 [%8] [%9]"_s.arg(item.getTag())
                       .arg(item.getType())
                       .arg(item.getCategory())
                       .arg(item.valueAsString(), item.defaultValueAsString())
                       .arg(item.getOrigin())
                       .arg(item.hasFacilityOverride(false))
                       .arg(item.getShortDescription(), item.getLongDescription());
    if (auto const *number = dynamic_cast<PR_IntItem const *>(&item))
        text += u" %1-%2"_s.arg(number->minValue()).arg(number->maxValue());
    if (auto const *number = dynamic_cast<HostInt const *>(&item))
        text += number->seen;
    if (auto const *number = dynamic_cast<PR_DoubleItem const *>(&item))
        text += number->percentage() ? u" %"_s : QString();
    return text;
}

class LoadComparisonTest : public StoreTest { };
} // namespace

// BRIVANT_COMPARED_LOADS tells how many.
TEST_F(LoadComparisonTest, EqualsALoadByDocuments)
{
    int const count = qEnvironmentVariableIsSet("BRIVANT_COMPARED_LOADS")
        ? qEnvironmentVariableIntValue("BRIVANT_COMPARED_LOADS")
        : 1000;
    host.featureKeywords = QStringList{ u"rig"_s };
    auto const libraryFactory = PR_PrefItemFactoryManager::getInstance()->factory(u"int"_s);
    UT_SharedPtr<PR_AbstractPrefItemFactory> const hostFactory(new PR_ConcretePrefItemFactory<HostInt>(u"int"_s));
    int loads = 0;
    for (int round = 0; round < count && !HasFailure(); ++round) {
        Writer writer(unsigned(20261 + round));
        QByteArray const main = writer.definitions(), set = writer.definitions(), override = writer.definitions();
        QByteArray const user = writer.userFile();
        writeFile(u"install/resources/prefs.xml"_s, main);
        writeFile(u"install/resources/preferenceSets/norvelle/team.xml"_s, set);
        writeFile(u"install/resources/prefs_override.xml"_s, override);
        writeFile(u"user-pref.xml"_s, user);
        // A host with rules of its own, which happen to be the library's.
        host.trimConditions = nullptr;
        if (writer.oneIn(2))
            host.trimConditions = [](QDomElement &root, QStringList const &keywords, bool verbose) {
                return AC_XML::trimConditions(root, keywords, verbose);
            };
        if (writer.oneIn(2))
            hostFactory->registerClass();
        else
            libraryFactory->registerClass();
        DocumentLoad const expected(main, set, override, user);
        TestStore const store(path(u"user.pref"_s));
        (void)takeReports();
        QStringList shown, wanted;
        for (PR_PrefItem const *item : store)
            shown.append(item->getKey() + u": "_s + describe(*item));
        for (auto const &[key, item] : expected.items)
            wanted.append(key + u": "_s + describe(*item));
        loads += wanted.isEmpty() ? 0 : 1;
        EXPECT_EQ(shown.join(u'\n').toStdString(), wanted.join(u'\n').toStdString())
            << "round " << round << "\n--- main\n"
            << main.toStdString() << "\n--- set\n"
            << set.toStdString() << "\n--- override\n"
            << override.toStdString() << "\n--- user\n"
            << user.toStdString();
    }
    libraryFactory->registerClass();
    EXPECT_GT(loads, count / 2) << "most files are to be well-formed";
}
