#ifndef PR_ITEMSET_P_H
#define PR_ITEMSET_P_H

#include "PR_ItemTypes_p.h"
#include "PR_PrefCmp.h"

#include <QtAlgorithms>

#include <map>
#include <memory>
#include <set>
#include <vector>

/*! The items of a store, owned: one per key, found by key through a hash table.

    The table is open: a slot holds the item's address, its class and a part of the hash, so that a read touches one
    slot, the item and its key, and the walk to a free slot touches no item. The order by key is made when it is first
    asked for: a store of many keys spends more on it than on all else that it does with an item, and most processes
    never look at all items in order.

    Items of other classes than the library's may do anything in their operations, so that they are called in the order
    of their keys, and may add and remove items of the set meanwhile, themselves too. */
class PR_ItemSet {
public:
    /*! An item with its class, found out once: a run-time class test costs as much as the lookup. */
    class Entry {
    public:
        Entry() = default;
        explicit Entry(PR_PrefItem *item);

        explicit operator bool() const { return m_item; }
        PR_PrefItem *item() const { return m_item; }
        PR_PrefItem *operator->() const { return m_item; }

        /*! The item as a \a T, one of the library's item classes; null when it is none. */
        template <class T> T *as() const
        {
            return (m_class & PR_ItemTypes::maskOf<T>()) != 0 ? static_cast<T *>(m_item) : nullptr;
        }
        /*! What the library does for items of exactly this class; null for an item of another class, which may do
           things its own way. */
        PR_ItemTypes::Row const *exactRow() const
        {
            return isExact() ? &PR_ItemTypes::row(int(qCountTrailingZeroBits(m_class))) : nullptr;
        }
        bool isExact() const { return (m_class & Exact) != 0; }

    private:
        friend class PR_ItemSet;

        static constexpr quint16 Exact = 0x8000; // just that class, and none derived from it
        static_assert(PR_ItemTypes::Count < 15);

        PR_PrefItem *m_item = nullptr;
        quint32 m_position = 0; // in m_members
        quint16 m_tag = 0; // of the key's hash
        quint16 m_class = 0; // the bit of its row in the table of item types; Exact
    };

    using Items = std::set<PR_PrefItem *, PR_PrefCmp>;
    using Others = std::map<QString, PR_PrefItem *>;

    PR_ItemSet();
    ~PR_ItemSet();

    Entry find(QString const &key) const { return m_slots[slotOf(key, hashOf(key))]; }
    size_t count() const { return m_members.size(); }
    /*! The items by key. */
    Items const &ordered() const;
    /*! Whether an item is of another class than the library's. */
    bool hasOthers() const { return !m_others.empty(); }

    /*! Calls \a function with each item by key. It may add and remove items: the walk goes on behind the last key. */
    template <class Function> void visitByKey(Function const &function) const
    {
        auto next = ordered().begin();
        while (next != m_order.end()) {
            PR_PrefItem *const item = *next;
            QString const key = item->getKey();
            quint64 const before = m_stamp;
            function(item);
            next = m_stamp == before ? std::next(next) : behind(key);
        }
    }
    /*! Calls \a function with each item, for a function that calls no virtual operation. The items come in the order of
        memory, which makes a walk several times as fast as one by key. */
    template <class Function> void visitInMemoryOrder(Function const &function) const
    {
        for (Member const &member : m_members)
            function(member.item);
    }
    /*! Calls \a function, which must not add or remove items itself, with each item: by key when others than the
        library's can tell the order. */
    template <class Function> void visit(Function const &function) const
    {
        if (hasOthers())
            visitByKey(function);
        else
            visitInMemoryOrder(function);
    }
    /*! Offers something to the items in the order of their keys, as if to each; whether one took it. An item of the
        library's takes what bears its key and no more, so that only the others need to be asked. \a key gives the key
        that it bears now, \a offer whether the item of an entry takes it. */
    template <class Key, class Offer> bool offer(Key const &key, Offer const &offer) const
    {
        QString last; // the key of the item that was asked last
        for (bool isFirst = true;; isFirst = false) {
            QString wanted = key();
            auto const other = isFirst ? m_others.begin() : m_others.upper_bound(last);
            Entry entry = isFirst || last < wanted ? find(wanted) : Entry();
            if (other != m_others.end() && (!entry || other->first < wanted)) {
                entry = Entry(other->second);
                wanted = other->first;
            }
            if (!entry)
                return false;
            last = wanted;
            if (offer(entry))
                return true;
        }
    }
    /*! Changes whenever an item comes or goes; no two states of any two sets have the same one. */
    quint64 stamp() const { return m_stamp; }

    /*! Makes room for so many items. */
    void reserve(size_t count);
    /*! Adds an item; one that has its key already is deleted at the end. */
    void insert(std::unique_ptr<PR_PrefItem> item);
    /*! Deletes the item of a key, if there is one. */
    void erase(QString const &key);
    /*! Deletes the items whose key begins with a text. */
    void erasePrefix(QString const &prefix);
    void clear();

private:
    Q_DISABLE_COPY_MOVE(PR_ItemSet)

    static quint64 newStamp();

    struct Member {
        PR_PrefItem *item;
        size_t hash; // of the key with which it came
    };

    static size_t hashOf(QString const &key) { return qHash(key, s_seed); }
    static quint16 tagOf(size_t hash) { return quint16(hash >> (8 * sizeof(hash) - 16)); }

    /*! The slot of a key; that of no item, to which the key would go, when there is none. */
    size_t slotOf(QString const &key, size_t hash) const
    {
        size_t slot = hash & m_mask;
        while (m_slots[slot] && !(m_slots[slot].m_tag == tagOf(hash) && m_slots[slot]->getKey() == key))
            slot = (slot + 1) & m_mask;
        return slot;
    }
    size_t slotOf(Member const &member) const;
    Items::const_iterator behind(QString const &key) const;
    void reserveSlots(size_t count);
    void resize(size_t slots);
    std::unique_ptr<PR_PrefItem> takeAt(size_t slot);
    void removeOther(PR_PrefItem const *item);

    static size_t const s_seed;

    std::vector<Entry> m_slots; // a power of two, half of them free at least: a walk is short
    size_t m_mask = 0; // of the number of slots
    std::vector<Member> m_members;
    Others m_others; // those of other classes than the library's
    mutable Items m_order; // of all items, once it is made
    mutable bool m_isOrdered = false;
    quint64 m_stamp = newStamp();
};

#endif
