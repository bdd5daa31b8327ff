#ifndef ITEMFILTER_H
#define ITEMFILTER_H

#include "PR_PrefItem.h"

#include <QStringList>

#include <optional>

class QCommandLineParser;

/*! The categories under the texts that definition files and users give them. */
namespace CategoryText {
/*! All texts, each once. */
QStringList all();
/*! The category of a text; none for a text that names none. */
std::optional<PR_PrefItem::Category> categoryOf(QString const &text);
} // namespace CategoryText

/*! Which preferences the options "category", "changed" and "locked" leave. */
class ItemFilter {
public:
    /*! Throws a Failure when there is no such category. */
    explicit ItemFilter(QCommandLineParser const &options);

    bool admits(PR_PrefItem const &item) const;

private:
    std::optional<PR_PrefItem::Category> m_category;
    bool m_changedOnly;
    bool m_lockedOnly;
};

#endif
