#ifndef ITEMFILTER_H
#define ITEMFILTER_H

#include "PR_PrefItem.h"

#include <optional>

class QCommandLineParser;

/*! Which preferences the options "category" and "changed" leave. */
class ItemFilter {
public:
    /*! Throws a Failure when there is no such category. */
    explicit ItemFilter(QCommandLineParser const &options);

    bool admits(PR_PrefItem const &item) const;

private:
    std::optional<PR_PrefItem::Category> m_category;
    bool m_changedOnly;
};

#endif
