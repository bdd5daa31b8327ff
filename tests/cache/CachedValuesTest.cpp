// Holds the table of cached values and the shipped definition files together.

#include "TestSupport.h"

#include "PR_BoolItem.h"
#include "PR_CachedPreferences.h"
#include "PR_DoubleItem.h"
#include "PR_IntItem.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <type_traits>

using namespace Qt::StringLiterals;

namespace {
struct Row {
    char const *name;
    char const *key;
    char const *keyOfGetter;
    // What is wrong with the item that the definitions give the key; empty when nothing is.
    std::string (*fault)(PR_PrefItem *item);
};

// The item class that serves a read of a type.
template <class Value> struct ItemFor;
template <> struct ItemFor<bool> : std::common_type<PR_BoolItem> {
};
template <> struct ItemFor<int> : std::common_type<PR_IntItem> {
};
template <> struct ItemFor<unsigned int> : std::common_type<PR_RgbaItem> {
};
template <> struct ItemFor<double> : std::common_type<PR_DoubleItem> {
};
template <> struct ItemFor<QString> : std::common_type<PR_StringItem> {
};

template <class Value> std::string classFault(PR_PrefItem *item)
{
    using Item = typename ItemFor<Value>::type;
    return dynamic_cast<Item *>(item) ? "" : "its class does not serve the read";
}

template <class Value> std::string fault(PR_PrefItem *item, Value const &fallback)
{
    using Item = typename ItemFor<Value>::type;
    std::string const wrongClass = classFault<Value>(item);
    if (!wrongClass.empty())
        return wrongClass;
    return static_cast<Item *>(item)->defaultValue() == fallback ? "" : "its default is not the row's";
}

Row const rows[] = {
#define CACHED_REF(Type, Name, KEY, Read) { #Name, KEY, PR_CachedPreferences::get##Name##Key(), &classFault<Type> },
#define CACHED_OR(Type, Name, KEY, Read, Default)                                                                      \
    { #Name, KEY, PR_CachedPreferences::get##Name##Key(), [](PR_PrefItem *item) {                                      \
         auto const fallback = Default;                                                                                \
         using Value = decltype(std::declval<PR_Preference>().Read(QString(), fallback));                              \
         return fault<Value>(item, fallback);                                                                          \
     } },
#include "PR_CachedValues.def"
};
static_assert(std::size(rows) == 267, "a cached value was added or lost: tell the hosts, and count it here");

class CachedValuesTest : public HostTest, public testing::WithParamInterface<bool> { };
INSTANTIATE_TEST_SUITE_P(Flavours, CachedValuesTest, testing::Bool(),
    [](auto const &flavour) { return flavour.param ? "Panovia" : "Norvelle"; });
} // namespace

TEST_P(CachedValuesTest, AreDefinedWithTheClassAndTheDefaultOfTheirRow)
{
    host.installFolder = QFileInfo(QStringLiteral(BRIVANT_RESOURCES)).path();
    host.hasPanoviaPreferenceUI = GetParam();
    host.hasMorphing = true;
    TestStore const store(path(u"user.pref"_s));
    reports.clear();
    for (Row const &row : rows) {
        PR_PrefItem *const item = store.find(QString::fromLatin1(row.key));
        EXPECT_EQ(item ? row.fault(item) : "it is not defined", "") << row.key;
        EXPECT_FALSE(item && item->hasFacilityOverride(false)) << row.key;
    }
}

TEST(CachedValueTable, IsTheOneThatHostsWereBuiltAgainst)
{
    QCryptographicHash digest(QCryptographicHash::Md5);
    for (Row const &row : rows) {
        digest.addData(QByteArray(QByteArray(row.name) + ' ' + row.key + '\n'));
        EXPECT_STREQ(row.key, row.keyOfGetter);
    }
    // Accessors and keys are for ever. A new row changes the digest, and so does one that got the key of another.
    EXPECT_EQ(digest.result().toHex(), "c9ff52ec55ce9682de2a474d786e703c");
}
