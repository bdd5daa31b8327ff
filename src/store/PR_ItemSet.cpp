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
        visitAll([&items](PR_PrefItem *item) { items.push_back(item); });
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

PR_ItemSet::Entry PR_ItemSet::insert(std::unique_ptr<PR_PrefItem> item)
{
    reserveSlots(m_members.size() + 1);
    size_t const hash = hashOf(item->getKey());
    size_t slot = slotOf(item->getKey(), hash);
    if (m_slots[slot]) {
        destroyAt(slot);
        slot = slotOf(item->getKey(), hash);
    }
    m_stamp = newStamp();
    Entry &entry = m_slots[slot];
    entry = Entry(item.get());
    entry.m_position = quint32(m_members.size());
    entry.m_tag = tagOf(hash);
    if (m_isOrdered)
        m_order.insert(item.get());
    m_members.push_back({ item.release(), hash });
    return entry;
}

// Deletes the item of a slot; the last item takes its position.
void PR_ItemSet::destroyAt(size_t slot)
{
    m_stamp = newStamp();
    size_t const position = m_slots[slot].m_position;
    std::unique_ptr<PR_PrefItem> const item(m_slots[slot].m_item);
    if (m_isOrdered) {
        auto const place = m_order.find(item.get());
        m_isOrdered = place != m_order.end() && *place == item.get(); // not so after a change of keys
        m_isOrdered ? void(m_order.erase(place)) : m_order.clear();
    }
    m_slots[slotOf(m_members.back())].m_position = quint32(position);
    m_members[position] = m_members.back();
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
}

void PR_ItemSet::erase(QString const &key)
{
    size_t const slot = slotOf(key, hashOf(key));
    if (m_slots[slot])
        destroyAt(slot);
}

void PR_ItemSet::erasePrefix(QString const &prefix)
{
    QString const text = prefix; // may be the key of an item that goes
    for (size_t i = m_members.size(); i > 0; --i) {
        if (PR_PrefCmp().startsWith(m_members[i - 1].item, text))
            destroyAt(slotOf(m_members[i - 1]));
    }
}

void PR_ItemSet::clear()
{
    m_stamp = newStamp();
    m_isOrdered = false;
    m_order.clear();
    std::fill(m_slots.begin(), m_slots.end(), Entry());
    std::vector<Member> const gone = std::exchange(m_members, {});
    for (auto member = gone.rbegin(); member != gone.rend(); ++member)
        delete member->item;
}
