#include "AC_XML.h"
#include "FM_FontManager.h"
#include "MSG_Scope.h"
#include "PL_FileSpec.h"
#include "TestSupport.h"
#include "UT_SharedPtr.h"
#include "oswUtil.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

using ServicesTest = HostTest;

TEST_F(ServicesTest, MessagesAreReportedFilledInWhenTheyEnd)
{
    {
        MSG_Scope scope(u"from %1 to %2"_s, u"von %1 nach %2"_s, MSG_Scope::Error);
        scope.arg(u"A"_s).arg(u"B"_s, 3);
        EXPECT_TRUE(reports.empty());
    }
    MSG_Scope(u"Scope"_s, u"done %1"_s, MSG_Scope::Log, ErrorCode::Type(7)).arg(u"c"_s);

    QStringList texts;
    for (HostReport const &report : reports)
        texts << report.context << report.source << report.text
              << QString::number(report.action * 10 + report.errorType);
    EXPECT_EQ(texts.join(u'|'), u"|from %1 to %2|von A nach   B|20|Scope||done c|57"_s);
    reports.clear();
}

TEST_F(ServicesTest, ElementsWhoseConditionDoesNotHoldAreRemoved)
{
    struct {
        char const *xml;
        char const *left; // null: nothing is removed
    } const table[] = { { "<r><a/><b feature=\"two words\"/><b feature=\"not gone\"/></r>", nullptr },
        { "<r><a feature=\"gone\"><c/></a><a feature=\"gone\"/>text<b/></r>", "<r>text<b/></r>" },
        { "<r><a><b><c feature=\"not here\"/></b></a><d feature=\"gone\"/><e/></r>", "<r><a><b/></a><e/></r>" },
        { "<r><a feature=\"here\"><b feature=\"gone\"/></a></r>", "<r><a feature=\"here\"/></r>" },
        { "<r><a feature=\"Here\"/><a feature=\" here\"/><a feature=\"\"/><a feature=\"nothere\"/></r>", "<r/>" },
        { "<r feature=\"gone\"><a/>text</r>", "<r feature=\"gone\"/>" }, { "<r feature=\"gone\"/>", nullptr } };
    for (auto const &row : table) {
        QDomDocument document;
        ASSERT_TRUE(document.setContent(QByteArray(row.xml)));
        QDomElement root = document.documentElement();
        EXPECT_EQ(AC_XML::trimConditions(root, { u"here"_s, u"two words"_s }, false), row.left != nullptr);
        EXPECT_EQ(document.toString(-1).trimmed(), QString::fromUtf8(row.left ? row.left : row.xml));
    }
}

TEST_F(ServicesTest, AHostThatSaysNothingGetsWorkingDefaults)
{
    host = HostPlatform();
    EXPECT_TRUE(QFileInfo(oswUtil::ZeltDir(false) + u"/resources/prefs.xml").isFile());
    EXPECT_TRUE(FM_FontManager::instance().getAvailableFonts().empty()); // there is no QGuiApplication
    for (int const number : { 3, 7, 9 }) {
        auto const folder = [number] {
            PL_FileSpec special;
            special.IFileSpec(PL_FileSpec::SpecialFolderType(number));
            return special.GetFilePath().ToQString();
        };
        host.specialFolders = {};
        EXPECT_TRUE(QFileInfo(folder()).isAbsolute()) << number;
        host.specialFolders = { { number, path(u"own"_s) } };
        EXPECT_EQ(folder(), path(u"own"_s));
        host.specialFolders = { { number, QString() } };
        EXPECT_EQ(folder(), QString());
    }
}

TEST_F(ServicesTest, TheLastReferenceDeletes)
{
    struct Counted : UT_ShareBase {
        explicit Counted(int &deleted)
            : deleted(deleted)
        {
        }
        ~Counted() override { ++deleted; }
        int &deleted;
    };
    int deleted = 0;
    UT_SharedPtr<Counted> first(new Counted(deleted));
    {
        UT_SharedPtr<Counted> second(first);
        UT_SharedPtr<Counted> third(std::move(second));
        third = *&third;
        EXPECT_EQ(first->refCount(), 2);
        EXPECT_TRUE(third == first);
        UT_SharedPtr<UT_ShareBase> const base(third);
        EXPECT_EQ(first->refCount(), 3);
        EXPECT_TRUE(base == third);
        EXPECT_EQ(UT_ShareBase(*first).refCount(), 0);
        UT_ShareBase other;
        other = *first;
        EXPECT_EQ(other.refCount(), 0);
    }
    EXPECT_EQ(deleted, 0);
    first = UT_SharedPtr<Counted>(new Counted(deleted));
    EXPECT_EQ(deleted, 1);
    auto const unshared = std::make_unique<Counted>(deleted);
    EXPECT_TRUE(first != unshared.get() && unshared.get() != first && first == first.get());
    EXPECT_EQ(deleted, 1) << "a comparison shares nothing";
    first = {};
    EXPECT_EQ(deleted, 2);
    EXPECT_TRUE(!first && first == nullptr);
}
