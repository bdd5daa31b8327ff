#include "MSG_Scope.h"

#include "HostPlatform.h"

#include <QLoggingCategory>

namespace {
Q_LOGGING_CATEGORY(lcPreference, "brivant.preference")
}

MSG_Scope::MSG_Scope(QString const &source, QString const &translation, Action action)
    : m_text(source, translation)
    , m_action(action)
    , m_errorType(ErrorCode::None)
{
}

MSG_Scope::MSG_Scope(QString const &context, QString const &text, Action action, ErrorCode::Type errorType)
    : m_text(QString(), text)
    , m_context(context)
    , m_action(action)
    , m_errorType(errorType)
{
}

MSG_Scope::~MSG_Scope()
{
    HostReport const report{ m_context, m_text.getSource(), m_text.getText(), m_action, m_errorType };
    // A copy: the host may replace its hook from inside the call.
    if (auto const hook = HostPlatform::current().report)
        hook(report);
    else
        qCWarning(lcPreference, "%s", qUtf8Printable(report.text));
}

MSG_Scope &MSG_Scope::arg(QString const &value, int fieldWidth)
{
    m_text.arg(value, fieldWidth);
    return *this;
}
