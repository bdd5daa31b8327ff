#include "CategoryText.h"

using namespace Qt::StringLiterals;

QStringList CategoryText::all()
{
    QStringList texts;
    for (int i = PR_PrefItem::Internal; i <= PR_PrefItem::Render; ++i) {
        QString const text = PR_PrefItem::getCategoryString(PR_PrefItem::Category(i));
        if (!texts.contains(text))
            texts.append(text);
    }
    return texts + QStringList{ u"Panovia"_s }; // understood, but never shown under its own name
}

std::optional<PR_PrefItem::Category> CategoryText::categoryOf(QString const &text)
{
    // Internal is also the answer for a text that names none.
    PR_PrefItem::Category const category = PR_PrefItem::getCategory(text);
    bool const isNamed = category != PR_PrefItem::Internal || text == PR_PrefItem::getCategoryString(category);
    return isNamed ? std::optional(category) : std::nullopt;
}
