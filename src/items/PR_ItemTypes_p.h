#ifndef PR_ITEMTYPES_P_H
#define PR_ITEMTYPES_P_H

#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_KeyItem.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"

#include "PR_Element_p.h"

#include <tuple>
#include <type_traits>
#include <utility>

/*! A row of the table of item types: what is known of a class of the library and not said by the class itself. */
template <class T> struct PR_ItemRow {
    using Item = T;

    char const *tag; /*!< Element name in definitions and users' files; null when it differs by item. */
    bool hasFactory; /*!< Whether definitions make it through the registry of factories. */
    /*! Makes the item for an element of a user's file whose key has no definition; null: such a one is kept as a text.
     */
    PR_PrefItem *(*createUnknown)(QString const &key);
};

/*! The table. Whatever handles items by their type follows from it: the class of an item in a store, factories, items
   for unknown keys, the fast ways of loading and saving. A derived class comes before its base; a new type is one row.
 */
inline constexpr std::tuple PR_ItemTable{
    PR_ItemRow<PR_BoolItem>{ "bool", true,
        [](QString const &key) -> PR_PrefItem * { return new PR_BoolItem(PR_PrefItem::Internal, key, false); } },
    PR_ItemRow<PR_IntItem>{ "int", true,
        [](QString const &key) -> PR_PrefItem * { return new PR_IntItem(PR_PrefItem::Internal, key, 0); } },
    PR_ItemRow<PR_DoubleItem>{ "double", true,
        [](QString const &key) -> PR_PrefItem * { return new PR_DoubleItem(PR_PrefItem::Internal, key, 0.0); } },
    PR_ItemRow<PR_RgbaItem>{ "color", true,
        [](QString const &key) -> PR_PrefItem * { return new PR_RgbaItem(PR_PrefItem::Internal, key, 0xFFFF0000U); } },
    PR_ItemRow<PR_StringItem>{ "string", true, nullptr },
    PR_ItemRow<PR_FontItem>{ "font", true, nullptr },
    PR_ItemRow<PR_KeyItem>{ "shortcut", false, nullptr },
    PR_ItemRow<PR_EnumItem>{ nullptr, false, nullptr },
};

/*! The classes of the table as bits and as functions. */
struct PR_ItemTypes {
    static constexpr int Count = std::tuple_size_v<std::remove_const_t<decltype(PR_ItemTable)>>;

    /*! Calls a function with each row and its number until it gives true; whether it did. */
    template <class Function> static constexpr bool any(Function const &function)
    {
        return std::apply(
            [&function](auto const &...rows) {
                int index = 0;
                return (... || function(rows, index++));
            },
            PR_ItemTable);
    }

    /*! The bit of a class, and those of the classes derived from it: all that are one. */
    template <class Item> static constexpr unsigned int maskOf()
    {
        unsigned int mask = 0;
        any([&mask](auto const &row, int index) {
            mask |= std::is_base_of_v<Item, typename std::decay_t<decltype(row)>::Item> ? 1U << index : 0U;
            return false;
        });
        return mask;
    }

    /*! The number of the first row whose class has values of a type; Count when none has. */
    template <class Value> static constexpr int rowOf()
    {
        int found = Count;
        any([&found](auto const &row, int number) {
            using Item = typename std::decay_t<decltype(row)>::Item;
            bool const isIt = std::is_same_v<std::decay_t<decltype(std::declval<Item const &>().value())>, Value>;
            found = isIt ? number : found;
            return isIt;
        });
        return found;
    }
    /*! The class of that row. */
    template <class Value>
    using ItemOf =
        typename std::tuple_element_t<size_t(rowOf<Value>()), std::remove_const_t<decltype(PR_ItemTable)>>::Item;

    /*! A row for use by its number, with what the class does without a document. */
    struct Row {
        char const *tag;
        bool hasFactory;
        PR_PrefItem *(*createUnknown)(QString const &key);
        /*! Makes an item of a definition; null where the class has none. */
        PR_PrefItem *(*create)(PR_PrefItem::Category category, QString const &key, PR_Element const &definition);
        /*! As loadXml() and saveXml() of the item. */
        bool (*load)(PR_PrefItem *item, PR_Element const &element);
        void (*write)(PR_PrefItem const *item, PR_XmlTree &tree, PR_Element *parent);
        bool (*haveSameValue)(PR_PrefItem const *a, PR_PrefItem const *b);
    };
    static Row const &row(int number);
    /*! The number of the row of a tag; Count when no class has it. */
    static int find(QStringView tag);

private:
    template <class Item> static constexpr Row makeRow(PR_ItemRow<Item> const &row);
};

#endif
