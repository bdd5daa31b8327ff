#include "PR_ItemSet_p.h"

#include <atomic>

template <class... Items> PR_ItemSet::Entry::Kind PR_ItemSet::Entry::firstKind(PR_PrefItem *item)
{
    Kind kind = Kind::Other;
    (void)(... || (dynamic_cast<Items *>(item) ? (kind = kindOf(static_cast<Items *>(nullptr)), true) : false));
    return kind;
}

PR_ItemSet::Entry::Entry(PR_PrefItem *item)
    : m_item(item)
    // A font is an enumeration too: the derived class first.
    , m_kind(firstKind<PR_BoolItem, PR_IntItem, PR_StringItem, PR_RgbaItem, PR_DoubleItem, PR_KeyItem, PR_FontItem,
          PR_EnumItem>(item))
{
}

PR_ItemSet::~PR_ItemSet()
{
    clear();
}

quint64 PR_ItemSet::newStamp()
{
    // Stores of different threads draw from it.
    static std::atomic<quint64> last{ 0 };
    return ++last;
}

PR_ItemSet::Entry PR_ItemSet::insert(std::unique_ptr<PR_PrefItem> item)
{
    erase(item->getKey());
    m_stamp = newStamp();
    Entry const entry(item.get());
    m_index.insert(item->getKey(), entry);
    m_items.insert(item.release());
    return entry;
}

PR_ItemSet::Items::const_iterator PR_ItemSet::erase(Items::const_iterator position)
{
    m_stamp = newStamp();
    std::unique_ptr<PR_PrefItem> const item(*position);
    m_index.remove(item->getKey());
    return m_items.erase(position);
}

void PR_ItemSet::erase(QString const &key)
{
    if (Entry const entry = find(key))
        erase(m_items.find(entry.item()));
}

void PR_ItemSet::clear()
{
    m_stamp = newStamp();
    Items items;
    items.swap(m_items);
    m_index.clear();
    qDeleteAll(items);
}
