#include "PR_ItemSet_p.h"

#include <atomic>
#include <typeinfo>

template <class... Items> void PR_ItemSet::Entry::findKind()
{
    auto const is = [this](auto *typed, bool fits) {
        if (fits)
            m_kind = kindOf(typed);
        return fits;
    };
    // Nearly all items are of just one of the classes, which is told faster than that they are derived from it.
    m_isOwn = (... || is(static_cast<Items *>(nullptr), typeid(*m_item) == typeid(Items)));
    if (!m_isOwn)
        (void)(... || is(static_cast<Items *>(nullptr), dynamic_cast<Items *>(m_item) != nullptr));
}

PR_ItemSet::Entry::Entry(PR_PrefItem *item)
    : m_item(item)
{
    // A font is an enumeration too: the derived class first.
    findKind<PR_BoolItem, PR_IntItem, PR_StringItem, PR_RgbaItem, PR_DoubleItem, PR_KeyItem, PR_FontItem,
        PR_EnumItem>();
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
