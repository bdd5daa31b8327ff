#include "ItemTest.h"
#include "PR_PrefUtil.h"

using namespace Qt::StringLiterals;

using ItemElementTest = HostTest;

TEST_F(ItemElementTest, ValueOfAnElement)
{
    struct {
        char const *xml;
        bool hasId;
        QString value;
    } const table[] = { { "<x id='K' value='x'/>", true, u"x"_s }, { "<x id='K'/>", true, {} },
        { "<x value='x'/>", false, u"x"_s },
        { "<x id='K' value='x' cdata='no'><![CDATA[a\n<b>]]><![CDATA[c]]></x>", true, u"a\n<b>"_s },
        { "<x id='K' value='x'><![CDATA[y]]></x>", true, u"x"_s },
        { "<x id='K' value='x' cdata='true'><!-- c --><![CDATA[y]]></x>", true, u"x"_s },
        { "<x id='K' value='x' cdata='true'>y</x>", true, u"x"_s } };
    for (auto const &row : table) {
        QString id = u"before"_s, value = u"before"_s;
        EXPECT_EQ(PR_PrefUtil::attributes(xmlElement(row.xml), &id, &value), row.hasId) << row.xml;
        EXPECT_EQ(id, row.hasId ? u"K"_s : QString()) << row.xml;
        EXPECT_EQ(value, row.value) << row.xml;
    }
}

TEST_F(ItemElementTest, AnElementIsAddedAsItIs)
{
    QDomDocument document;
    document.appendChild(document.createElement(kPref));
    QString const odd = u"a]]>\r\n"_s + QChar(1);
    for (bool const cdata : { false, true }) {
        PR_PrefUtil::addElement(&document, u"größe"_s, odd, odd, cdata);
        QDomElement const element = document.documentElement().lastChildElement();
        EXPECT_EQ(describe(element),
            cdata ? u"größe ["_s + odd + u"] cdata=true id="_s + odd : u"größe id="_s + odd + u" value="_s + odd);
    }
}

TEST_F(ItemElementTest, CategoryTexts)
{
    QString const texts = u"Internal,All,General,Drawing Mode,Sceneplanning,Node View,Exposure Sheet,Color Management,"
                          "Highlighting,Element Manager,Function Editor,Library,Playback View,Timeline,Sound,Tree View,"
                          "Render View,,,Scanning,Render,Panovia"_s;
    auto const textOf = [](int number) { return PR_PrefItem::getCategoryString(PR_PrefItem::Category(number)); };
    int number = 0;
    for (QString const &text : texts.split(u',')) {
        EXPECT_EQ(PR_PrefItem::getCategory(text), text.isEmpty() ? 0 : number) << text;
        EXPECT_EQ(textOf(number), text.isEmpty() || number == 21 ? u"Internal"_s : text);
        ++number;
    }
    for (int const unknown : { 22, -1, 1 << 30 })
        EXPECT_EQ(textOf(unknown), u"Internal"_s) << unknown;
    for (QString const &text : { u"node view"_s, u" Node View"_s, u"Node View "_s })
        EXPECT_EQ(PR_PrefItem::getCategory(text), PR_PrefItem::Internal) << text;
}
