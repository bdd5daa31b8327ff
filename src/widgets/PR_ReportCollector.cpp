#include "PR_ReportCollector.h"

#include <MSG_Scope.h>

#include <QLoggingCategory>

#include <utility>

namespace {
Q_LOGGING_CATEGORY(lcPreference, "brivant.preference")

PR_ReportCollector *last = nullptr;
} // namespace

PR_ReportCollector::PR_ReportCollector(QObject *parent)
    : QObject(parent)
    , m_receiver(std::move(HostPlatform::current().report))
    , m_earlier(std::exchange(last, this))
{
    HostPlatform::current().report = [this](HostReport const &report) { add(report); };
}

PR_ReportCollector::~PR_ReportCollector()
{
    HostPlatform::current().report = std::move(m_receiver);
    last = m_earlier;
}

PR_ReportCollector *PR_ReportCollector::current()
{
    return last;
}

void PR_ReportCollector::clear()
{
    m_reports.clear();
    m_damageCount = 0;
    Q_EMIT changed();
}

void PR_ReportCollector::add(HostReport const &report)
{
    if (report.action != MSG_Scope::Log) {
        bool const isDamage = report.source.startsWith(QLatin1String("Preference file %1 is empty or corrupted."));
        m_reports.insert(isDamage ? m_damageCount++ : m_reports.size(), report);
    }
    if (m_receiver)
        m_receiver(report);
    else
        qCWarning(lcPreference, "%s", qUtf8Printable(report.text));
    if (report.action != MSG_Scope::Log)
        Q_EMIT changed();
}
