#include "PR_UnknownKeyItem_p.h"

#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_IntItem.h"
#include "PR_RgbaItem.h"

#include <limits>

std::unique_ptr<PR_PrefItem> PR_UnknownKeyItem::create(QString const &type, QString const &key)
{
    auto const category = PR_PrefItem::Internal;
    if (type == QLatin1String("color"))
        return std::make_unique<PR_RgbaItem>(category, key, 0xFFFF0000U);
    if (type == QLatin1String("int"))
        return std::make_unique<PR_IntItem>(
            category, key, 0, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    if (type == QLatin1String("double"))
        return std::make_unique<PR_DoubleItem>(category, key, 0.0);
    if (type == QLatin1String("bool"))
        return std::make_unique<PR_BoolItem>(category, key, false);
    return nullptr;
}
