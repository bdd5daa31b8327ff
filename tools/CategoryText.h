#ifndef CATEGORYTEXT_H
#define CATEGORYTEXT_H

#include "PR_PrefItem.h"

#include <QStringList>

#include <optional>

/*! The categories under the texts that definition files and users give them. */
namespace CategoryText {
/*! All texts, each once. */
QStringList all();
/*! The category of a text; none for a text that names none. */
std::optional<PR_PrefItem::Category> categoryOf(QString const &text);
} // namespace CategoryText

#endif
