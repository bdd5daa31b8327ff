#include "TULex.h"

#include "PL_InputFile_p.h"

namespace {
bool isLineEnd(QChar c)
{
    return c == u'\n' || c == u'\r';
}
} // namespace

bool TULex::openFile(QString const &path)
{
    *this = TULex();
    PL_InputFile const file = PL_InputFile::read(path);
    if (!file.error.isEmpty())
        return false;
    m_text = QString::fromUtf8(file.bytes);
    get(false);
    return true;
}

bool TULex::get(bool)
{
    while (m_position < m_text.size() && m_text.at(m_position).isSpace())
        ++m_position;
    qsizetype const start = m_position;
    m_token.clear();
    m_hasToken = m_position < m_text.size();
    if (!m_hasToken)
        return false;

    if (m_text.at(m_position) == u'"') {
        readQuoted();
    } else {
        while (m_position < m_text.size() && !m_text.at(m_position).isSpace())
            ++m_position;
        m_token = m_text.mid(start, m_position - start);
    }
    return true;
}

void TULex::readQuoted()
{
    ++m_position;
    while (m_position < m_text.size() && !isLineEnd(m_text.at(m_position))) {
        QChar c = m_text.at(m_position++);
        if (c == u'"')
            return;
        if (c == u'\\' && m_position < m_text.size()) {
            QChar const escaped = m_text.at(m_position);
            if (escaped == u'"' || escaped == u'\\' || escaped == u'n') {
                c = escaped == u'n' ? QChar(u'\n') : escaped;
                ++m_position;
            }
        }
        m_token += c;
    }
}

void TULex::skipToNextLine()
{
    if (!m_hasToken)
        return;
    while (m_position < m_text.size() && !isLineEnd(m_text.at(m_position)))
        ++m_position;
    get(false);
}

bool TULex::get_bool(bool &value)
{
    auto const isOneOf = [this](auto... words) { return (... || (m_token.compare(words, Qt::CaseInsensitive) == 0)); };
    bool const yes = isOneOf(QLatin1String("y"), QLatin1String("yes"), QLatin1String("true"));
    if (!yes && !isOneOf(QLatin1String("n"), QLatin1String("no"), QLatin1String("false")))
        return false;
    value = yes;
    get(false);
    return true;
}

bool TULex::get_int(int &value)
{
    bool ok = false;
    int const number = m_token.toInt(&ok, 10);
    if (ok) {
        value = number;
        get(false);
    }
    return ok;
}

bool TULex::get_double(double &value)
{
    bool ok = false;
    double const number = m_token.toDouble(&ok);
    if (ok) {
        value = number;
        get(false);
    }
    return ok;
}
