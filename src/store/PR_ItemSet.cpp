#include "PR_ItemSet_p.h"

#include <algorithm>
#include <atomic>
#include <typeinfo>
#include <utility>

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

PR_ItemSet::Items const &PR_ItemSet::ordered() const
{
    if (!m_isOrdered) {
        std::vector<PR_PrefItem *> items = m_items;
        std::sort(items.begin(), items.end(), PR_PrefCmp());
        m_order = Items(items.begin(), items.end());
        m_isOrdered = true;
    }
    return m_order;
}

void PR_ItemSet::reserve(qsizetype count)
{
    m_index.reserve(count);
    m_items.reserve(size_t(count));
}

PR_ItemSet::Entry PR_ItemSet::insert(std::unique_ptr<PR_PrefItem> item)
{
    erase(item->getKey());
    m_stamp = newStamp();
    Entry const entry(item.get());
    m_index.insert(item->getKey(), { entry, m_items.size() });
    if (m_isOrdered)
        m_order.insert(item.get());
    m_items.push_back(item.release());
    return entry;
}

// Deletes an item that has left the index; the last item takes its position.
void PR_ItemSet::destroy(Place const &place)
{
    m_stamp = newStamp();
    std::unique_ptr<PR_PrefItem> const item(place.entry.item());
    if (m_isOrdered)
        m_order.erase(item.get());
    PR_PrefItem *const last = m_items.back();
    m_items.pop_back();
    if (last != item.get()) {
        m_items[place.position] = last;
        auto const moved = m_index.find(last->getKey());
        if (moved != m_index.end()) // assigning one whole item to another changes its key
            moved->position = place.position;
    }
}

void PR_ItemSet::erase(QString const &key)
{
    // The key may be that of the item.
    Place const place = m_index.take(key);
    if (place.entry)
        destroy(place);
}

void PR_ItemSet::erasePrefix(QString const &prefix)
{
    QString const text = prefix; // may be the key of an item that goes
    for (size_t i = m_items.size(); i > 0; --i) {
        if (PR_PrefCmp().startsWith(m_items[i - 1], text))
            erase(m_items[i - 1]->getKey());
    }
}

void PR_ItemSet::clear()
{
    m_stamp = newStamp();
    m_isOrdered = false;
    m_order.clear();
    m_index.clear();
    for (PR_PrefItem *item : std::exchange(m_items, {}))
        delete item;
}
