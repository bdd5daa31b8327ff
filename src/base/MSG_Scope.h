#ifndef MSG_SCOPE_H
#define MSG_SCOPE_H

#include "ErrorCode.h"
#include "MSG_Text.h"
#include "brivantbase_export.h"

/*! A message that is reported to the host when the object is destroyed. */
class BRIVANT_BASE_EXPORT MSG_Scope {
public:
    /*! How the host shows the message. */
    enum Action : int {
        Notice = 0, /*!< Something was put right on the user's behalf. */
        Error = 2, /*!< An operation failed. */
        Refusal = 4, /*!< A change was refused. */
        Log = 5 /*!< Worth recording, nothing to do. */
    };

    /*! A message from an English \a source text and its \a translation. */
    MSG_Scope(QString const &source, QString const &translation, Action action);
    /*! A finished \a text from the scope named \a context. */
    MSG_Scope(QString const &context, QString const &text, Action action, ErrorCode::Type errorType);
    ~MSG_Scope();

    /*! Fills the next marker, as MSG_Text::arg does. */
    MSG_Scope &arg(QString const &value, int fieldWidth = 0);

private:
    Q_DISABLE_COPY_MOVE(MSG_Scope)

    MSG_Text m_text;
    QString m_context;
    Action m_action;
    ErrorCode::Type m_errorType;
};

#endif
