#ifndef PR_CACHEREFRESH_P_H
#define PR_CACHEREFRESH_P_H

#include "PR_ItemTypes_p.h"
#include "PR_Preference.h"

#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

/*! Where the cached values come from, found out once for a set of items.

    Most rows copy from the address of an item's value, of a fallback or of a default. A row whose item must be
   converted (a text to a number, say) is read anew by key at each refresh. Addresses are good as long as the set of
   items is. */
class PR_CacheRefresh {
public:
    explicit PR_CacheRefresh(PR_Preference const &store)
        : m_store(store)
    {
    }

    /*! Adds a row with a reference read. */
    template <class Value>
    void add(Value &target, char const *key, Value const &(PR_Preference::*read)(QString const &) const)
    {
        addCopy(target, &(m_store.*read)(QString::fromLatin1(key)));
    }

    /*! Adds a row with a defaulted read; \a fallback, its default, must outlive this object. */
    template <class Target, class Value, class Argument>
    void add(Target &target, char const *key, Value (PR_Preference::*read)(QString const &, Argument) const,
        Value const &fallback)
    {
        PR_PrefItem *const item = m_store.find(QString::fromLatin1(key));
        if (!item)
            addCopy(target, &fallback);
        else if (auto const *typed = dynamic_cast<PR_ItemTypes::ItemOf<Value> *>(item); typed && showsItsValue(typed))
            addCopy(target, &typed->value());
        else
            std::get<Rereads<Target, Value, Argument>>(m_rereads).push_back({ &target, key, read, &fallback });
    }

    /*! \name Bringing all targets up to date with the store */
    /*!\{*/
    void copyValues() const
    {
        std::apply([](auto const &...copies) { (..., copyAll(copies)); }, m_copies);
    }
    bool rereadsValues() const
    {
        return std::apply([](auto const &...rereads) { return (... || !rereads.empty()); }, m_rereads);
    }
    /*! Ends early when \a isWanted, a function, no longer holds. Its rows must live as long. */
    template <class Condition> void rereadValues(Condition const &isWanted) const
    {
        std::apply([&](auto const &...rereads) { (void)(... && rereadAll(rereads, isWanted)); }, m_rereads);
    }
    /*!\}*/

private:
    template <class Target, class Value> struct Copy {
        Target *target;
        Value const *source;
    };
    template <class Target, class Value> using Copies = std::vector<Copy<Target, Value>>;

    template <class Target, class Value, class Argument> struct Reread {
        Target *target;
        char const *key;
        Value (PR_Preference::*read)(QString const &, Argument) const;
        Value const *fallback;
    };
    template <class Target, class Value, class Argument> using Rereads = std::vector<Reread<Target, Value, Argument>>;

    static bool showsItsValue(PR_PrefItem const *) { return true; }
    // A text is read through valueAsString(), which a derived class may change.
    static bool showsItsValue(PR_StringItem const *item) { return typeid(*item) == typeid(PR_StringItem); }

    template <class Target, class Value> void addCopy(Target &target, Value const *source)
    {
        std::get<Copies<Target, Value>>(m_copies).push_back({ &target, source });
    }

    template <class Target, class Value> static void copyAll(Copies<Target, Value> const &copies)
    {
        for (auto const &copy : copies)
            assign(*copy.target, *copy.source);
    }

    template <class Target, class Value> static void assign(Target &target, Value value)
    {
        target = static_cast<Target>(value);
    }
    static void assign(QString &target, QString const &value)
    {
        if (!target.isSharedWith(value))
            target = value;
    }

    template <class Target, class Value, class Argument, class Condition>
    bool rereadAll(Rereads<Target, Value, Argument> const &rereads, Condition const &isWanted) const
    {
        for (auto const &row : rereads) {
            Value const value = (m_store.*row.read)(QString::fromLatin1(row.key), *row.fallback);
            if (!isWanted())
                return false;
            *row.target = static_cast<Target>(value);
        }
        return true;
    }

    PR_Preference const &m_store;
    std::tuple<Copies<unsigned int, unsigned int>, Copies<bool, bool>, Copies<int, int>, Copies<double, double>,
        Copies<QString, QString>, Copies<double, int>, Copies<double, bool>>
        m_copies;
    std::tuple<Rereads<unsigned int, unsigned int, unsigned int const &>, Rereads<bool, bool, bool>,
        Rereads<int, int, int>, Rereads<double, double, double>, Rereads<QString, QString, QString const &>,
        Rereads<double, int, int>, Rereads<double, bool, bool>>
        m_rereads;
};

#endif
