#ifndef REPORTSCOPE_H
#define REPORTSCOPE_H

#include "HostPlatform.h"

#include <functional>
#include <utility>

/*! As long as it lives, what the library reports goes elsewhere: nowhere, unless a receiver is given. */
class ReportScope {
public:
    using Receiver = std::function<void(HostReport const &)>;

    explicit ReportScope(Receiver receiver = [](HostReport const &) {})
        : m_usual(std::exchange(HostPlatform::current().report, std::move(receiver)))
    {
    }
    ~ReportScope() { HostPlatform::current().report.swap(m_usual); }

private:
    Q_DISABLE_COPY_MOVE(ReportScope)

    Receiver m_usual;
};

#endif
