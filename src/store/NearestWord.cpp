#include "NearestWord_p.h"

#include <array>
#include <utility>
#include <vector>

namespace {
constexpr qsizetype longestWord = 128;

// The number of changes from one word to another, or a number above the limit.
int changesBetween(QString const &from, QString const &to, int limit)
{
    qsizetype const width = to.size() + 1;
    std::array<std::vector<int>, 3> rows; // of the table of all beginnings; the last one is the present one
    for (std::vector<int> &row : rows)
        row.assign(size_t(width), limit + 1);
    for (qsizetype j = 0; j < width; ++j)
        rows[2][size_t(j)] = int(j);
    for (qsizetype i = 1; i <= from.size(); ++i) {
        std::swap(rows[0], rows[1]);
        std::swap(rows[1], rows[2]);
        std::vector<int> &row = rows[2];
        row[0] = int(i);
        int least = row[0];
        for (size_t j = 1; j < size_t(width); ++j) {
            QChar const a = from[i - 1];
            QChar const b = to[qsizetype(j) - 1];
            row[j] = qMin(qMin(rows[1][j], row[j - 1]) + 1, rows[1][j - 1] + (a == b ? 0 : 1));
            if (i > 1 && j > 1 && a == to[qsizetype(j) - 2] && from[i - 2] == b)
                row[j] = qMin(row[j], rows[0][j - 2] + 1);
            least = qMin(least, row[j]);
        }
        if (least > limit)
            return least;
    }
    return rows[2].back();
}
} // namespace

NearestWord::NearestWord(QStringList words)
    : m_words(std::move(words))
{
}

QString NearestWord::to(QString const &word) const
{
    if (word.isEmpty() || word.size() > longestWord || m_searchesLeft == 0)
        return {};
    --m_searchesLeft;
    QString const wanted = word.toLower();
    QString nearest;
    int limit = qBound(1, int(word.size()) / 3, 3);
    for (QString const &candidate : m_words) {
        if (qAbs(candidate.size() - word.size()) > limit)
            continue;
        int const changes = changesBetween(wanted, candidate.toLower(), limit);
        if (changes > limit)
            continue;
        nearest = candidate;
        if (changes == 0)
            break;
        limit = changes - 1;
    }
    return nearest;
}
