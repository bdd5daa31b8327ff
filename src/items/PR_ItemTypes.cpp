#include "PR_ItemTypes_p.h"

#include <array>
#include <new>

template <class Item> constexpr PR_ItemTypes::Row PR_ItemTypes::makeRow(PR_ItemRow<Item> const &row)
{
    Row made{ row.tag, row.hasFactory, row.createUnknown, nullptr,
        [](PR_PrefItem *item, PR_Element const &element) { return static_cast<Item *>(item)->loadElement(element); },
        [](PR_PrefItem const *item, PR_XmlTree &tree, PR_Element *parent) {
            static_cast<Item const *>(item)->write(tree, parent);
        },
        [](PR_PrefItem const *a, PR_PrefItem const *b) {
            return static_cast<Item const *>(a)->value() == static_cast<Item const *>(b)->value();
        } };
    if constexpr (!std::is_same_v<Item, PR_EnumItem>) {
        made.create = [](PR_PrefItem::Category category, QString const &key,
                          PR_Element const &definition) -> PR_PrefItem * {
            return new (std::nothrow) Item(category, key, definition);
        };
    }
    return made;
}

PR_ItemTypes::Row const &PR_ItemTypes::row(int number)
{
    static constexpr std::array rows =
        std::apply([](auto const &...row) { return std::array{ makeRow(row)... }; }, PR_ItemTable);
    return rows[size_t(number)];
}

int PR_ItemTypes::find(QStringView tag)
{
    int found = Count;
    any([&](auto const &row, int number) {
        bool const isIt = row.tag && tag == QLatin1String(row.tag);
        found = isIt ? number : found;
        return isIt;
    });
    return found;
}
