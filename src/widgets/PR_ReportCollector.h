#ifndef PR_REPORTCOLLECTOR_H
#define PR_REPORTCOLLECTOR_H

#include "HostPlatform.h"
#include "brivantpreferencewidgets_export.h"

#include <QList>
#include <QObject>

/*! Keeps what loads and saves report, for a PR_PreferenceDialog to show.

    A host makes one before it makes its store, so that a file that is found damaged by the first load is told in a
    window that opens later. As long as it lives it stands in the place of HostPlatform::report and passes each report
    on. */
class BRIVANT_PREFERENCEWIDGETS_EXPORT PR_ReportCollector : public QObject {
    Q_OBJECT

public:
    explicit PR_ReportCollector(QObject *parent = nullptr); /*!< Keeps what comes from now on. */
    ~PR_ReportCollector() override; /*!< The earlier receiver has its place again. */

    /*! The one that was made last; null when there is none. */
    [[nodiscard]] static PR_ReportCollector *current();

    /*! Those to show: a damaged file first, else in the order in which they came; none that is for a log alone. */
    [[nodiscard]] QList<HostReport> const &reports() const { return m_reports; }
    void clear(); /*!< Forgets them, once the user has read them. */

Q_SIGNALS:
    void changed(); /*!< A report has come, or all were forgotten. */

private:
    Q_DISABLE_COPY_MOVE(PR_ReportCollector)

    void add(HostReport const &report);

    QList<HostReport> m_reports;
    qsizetype m_damageCount = 0;
    std::function<void(HostReport const &)> m_receiver;
    PR_ReportCollector *m_earlier;
};

#endif
