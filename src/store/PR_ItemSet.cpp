#include "PR_ItemSet_p.h"

#include <algorithm>
#include <atomic>
#include <typeinfo>
#include <utility>

PR_ItemSet::Entry::Entry(PR_PrefItem *item)
    : m_item(item)
{
    // Nearly all items are of just one of the classes, which is told faster than that they are derived from it.
    bool const isExact = PR_ItemTypes::any([this](auto const &row, int number) {
        bool const isIt = typeid(*m_item) == typeid(typename std::decay_t<decltype(row)>::Item);
        m_class = isIt ? quint16(1U << number | Exact) : quint16(0);
        return isIt;
    });
    if (isExact)
        return;
    PR_ItemTypes::any([this](auto const &row, int number) {
        bool const isIt = dynamic_cast<typename std::decay_t<decltype(row)>::Item *>(m_item) != nullptr;
        m_class = isIt ? quint16(1U << number) : quint16(0);
        return isIt;
    });
}

size_t const PR_ItemSet::s_seed = QHashSeed::globalSeed();

PR_ItemSet::PR_ItemSet()
{
    resize(16);
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
        std::vector<PR_PrefItem *> items;
        items.reserve(m_members.size());
        visitInMemoryOrder([&items](PR_PrefItem *item) { items.push_back(item); });
        std::sort(items.begin(), items.end(), PR_PrefCmp());
        m_order = Items(items.begin(), items.end());
        m_isOrdered = true;
    }
    return m_order;
}

void PR_ItemSet::reserve(size_t count)
{
    m_members.reserve(count);
    reserveSlots(count);
}

void PR_ItemSet::reserveSlots(size_t count)
{
    size_t slots = m_slots.size();
    while (slots / 2 < count)
        slots *= 2;
    if (slots != m_slots.size())
        resize(slots);
}

// The slot of an item that is there, whatever its key is by now: assigning one whole item to another changes it.
size_t PR_ItemSet::slotOf(Member const &member) const
{
    size_t slot = member.hash & m_mask;
    while (m_slots[slot].m_item != member.item)
        slot = (slot + 1) & m_mask;
    return slot;
}

void PR_ItemSet::resize(size_t slots)
{
    std::vector<Entry> const old = std::exchange(m_slots, std::vector<Entry>(slots));
    m_mask = slots - 1;
    for (Entry const &entry : old) {
        if (!entry)
            continue;
        size_t slot = m_members[entry.m_position].hash & m_mask;
        while (m_slots[slot])
            slot = (slot + 1) & m_mask;
        m_slots[slot] = entry;
    }
}

// The place in the order behind a key, whether or not there is an item of it.
PR_ItemSet::Items::const_iterator PR_ItemSet::behind(QString const &key) const
{
    PR_StringItem probe(PR_PrefItem::Internal, key, QString());
    return ordered().upper_bound(&probe);
}

void PR_ItemSet::insert(std::unique_ptr<PR_PrefItem> item)
{
    QString const key = item->getKey();
    size_t const hash = hashOf(key);
    Entry entry(item.get());
    entry.m_tag = tagOf(hash);

    // What can fail comes first.
    reserveSlots(m_members.size() + 1);
    if (m_members.size() == m_members.capacity())
        m_members.reserve(2 * m_members.size() + 16);
    Others others;
    if (!entry.isExact())
        others.emplace(key, item.get());
    Items order;
    if (m_isOrdered)
        order.insert(item.get());

    size_t slot = slotOf(key, hash);
    std::unique_ptr<PR_PrefItem> const replaced = m_slots[slot] ? takeAt(slot) : nullptr;
    slot = slotOf(key, hash);
    m_stamp = newStamp();
    entry.m_position = quint32(m_members.size());
    m_slots[slot] = entry;
    m_members.push_back({ item.release(), hash });
    m_others.merge(others);
    if (m_isOrdered)
        m_order.merge(order);
}

// Takes the item of a slot out of the set; the last item takes its position.
std::unique_ptr<PR_PrefItem> PR_ItemSet::takeAt(size_t slot)
{
    m_stamp = newStamp();
    Entry const taken = m_slots[slot];
    if (m_isOrdered) {
        auto const place = m_order.find(taken.item());
        m_isOrdered = place != m_order.end() && *place == taken.item(); // not so after a change of keys
        m_isOrdered ? void(m_order.erase(place)) : m_order.clear();
    }
    if (!taken.isExact())
        removeOther(taken.item());
    m_slots[slotOf(m_members.back())].m_position = taken.m_position;
    m_members[taken.m_position] = m_members.back();
    m_members.pop_back();

    // Items behind it that were pushed on by it move up, so that no walk ends before them.
    for (size_t next = (slot + 1) & m_mask; m_slots[next]; next = (next + 1) & m_mask) {
        size_t const home = m_members[m_slots[next].m_position].hash & m_mask;
        if (((next - home) & m_mask) >= ((next - slot) & m_mask)) {
            m_slots[slot] = m_slots[next];
            slot = next;
        }
    }
    m_slots[slot] = Entry();
    return std::unique_ptr<PR_PrefItem>(taken.item());
}

void PR_ItemSet::removeOther(PR_PrefItem const *item)
{
    auto found = m_others.find(item->getKey());
    if (found == m_others.end() || found->second != item) // not so after a change of keys
        found =
            std::find_if(m_others.begin(), m_others.end(), [item](auto const &other) { return other.second == item; });
    if (found != m_others.end())
        m_others.erase(found);
}

void PR_ItemSet::erase(QString const &key)
{
    size_t const slot = slotOf(key, hashOf(key));
    if (m_slots[slot])
        takeAt(slot);
}

void PR_ItemSet::erasePrefix(QString const &prefix)
{
    QString const text = prefix; // may be the key of an item that goes
    if (hasOthers()) {
        return visitByKey([&](PR_PrefItem *item) {
            if (PR_PrefCmp().startsWith(item, text))
                erase(item->getKey());
        });
    }
    for (size_t i = m_members.size(); i > 0; --i) {
        if (PR_PrefCmp().startsWith(m_members[i - 1].item, text))
            takeAt(slotOf(m_members[i - 1]));
    }
}

void PR_ItemSet::clear()
{
    do {
        m_stamp = newStamp();
        m_isOrdered = false;
        m_order.clear();
        m_others.clear();
        std::fill(m_slots.begin(), m_slots.end(), Entry());
        std::vector<Member> const gone = std::exchange(m_members, {});
        for (auto member = gone.rbegin(); member != gone.rend(); ++member)
            delete member->item;
    } while (!m_members.empty()); // a destructor may have added one
}
