#include "MSG_Text.h"

MSG_Text::MSG_Text(QString const &source, QString const &translation)
    : m_source(source)
    , m_text(translation)
{
}

MSG_Text &MSG_Text::arg(QString const &value, int fieldWidth)
{
    m_text = m_text.arg(value, fieldWidth);
    return *this;
}
